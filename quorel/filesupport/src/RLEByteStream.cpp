// PackBits coding and decoding.
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/RLEByteStream.h>

namespace quorel {
namespace filesupport {

namespace {

constexpr unsigned char kNoOpHeader = 0x80;

}  // namespace

IRLEByteStream::IRLEByteStream(IByteStream& ioSource) : mSource(ioSource) {}

IRLEByteStream::~IRLEByteStream() = default;

unsigned char IRLEByteStream::Get() {
    if (mLiteralsLeft == 0 && mRepeatsLeft == 0) {
        ReadHeader();
    }
    if (mLiteralsLeft > 0) {
        --mLiteralsLeft;
        return mSource.Get();
    }
    --mRepeatsLeft;
    return mRepeatValue;
}

void IRLEByteStream::ReadHeader() {
    unsigned char header;
    do {
        header = mSource.Get();
    } while (header == kNoOpHeader);
    int const n = static_cast<signed char>(header);
    if (n >= 0) {
        mLiteralsLeft = n + 1;
    } else {
        mRepeatValue = mSource.Get();  // before the count, so a failed read leaves no phantom run
        mRepeatsLeft = 1 - n;
    }
}

void IRLEByteStream::CurPos(std::uint64_t) { throw byte_stream_exception(); }

std::uint64_t IRLEByteStream::CurPos() const { throw byte_stream_exception(); }

ORLEByteStream::ORLEByteStream(OByteStream& ioTarget) : mTarget(ioTarget) {}

ORLEByteStream::~ORLEByteStream() = default;

void ORLEByteStream::Put(unsigned char inByte) {
    if (mCount == 0) {
        mBuffer[0] = inByte;
        mCount = 1;
        mRepeating = true;
        return;
    }
    if (mRepeating) {
        if (inByte == mBuffer[0]) {
            ++mCount;
        } else if (mCount == 1) {
            mRepeating = false;
            PutLiteral(inByte);
        } else {
            WritePacket();
            mBuffer[0] = inByte;
            mRepeating = true;
            mCount = 1;
        }
    } else {
        PutLiteral(inByte);
    }
    if (mCount == kMaxPacket) {
        WritePacket();
    }
}

// One more byte of a literal packet.  A third equal byte in a row ends the
// literal before the pair and starts a run of three.
void ORLEByteStream::PutLiteral(unsigned char inByte) {
    if (mCount > 2 && inByte == mBuffer[mCount - 1] && inByte == mBuffer[mCount - 2]) {
        mCount -= 2;
        WritePacket();
        mBuffer[0] = inByte;
        mCount = 3;
        mRepeating = true;
    } else {
        mBuffer[mCount++] = inByte;
    }
}

void ORLEByteStream::CurPos(std::uint64_t) { throw byte_stream_exception(); }

std::uint64_t ORLEByteStream::CurPos() const { throw byte_stream_exception(); }

void ORLEByteStream::Flush() {
    if (mCount > 0) {
        WritePacket();
    }
}

void ORLEByteStream::WritePacket() {
    unsigned char header = static_cast<unsigned char>(mCount - 1);
    std::uint32_t dataBytes = static_cast<std::uint32_t>(mCount);
    if (mRepeating && header != 0) {
        header = static_cast<unsigned char>(-static_cast<signed char>(header));
        dataBytes = 1;
    }
    mTarget.Put(header);
    mTarget.WriteBlock(mBuffer, dataBytes);
    mCount = 0;
}

}  // namespace filesupport
}  // namespace quorel
