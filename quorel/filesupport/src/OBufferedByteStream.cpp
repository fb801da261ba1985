// Buffered output: a rewritable window in front of a seekable target.
#include <quorel/filesupport/BufferedByteStream.h>

#include <algorithm>
#include <cstring>

namespace quorel {
namespace filesupport {

OBufferedByteStream::OBufferedByteStream(OByteStream& ioTarget, std::uint32_t inBufferSize,
                                         std::uint32_t inBlockSize)
    : mTarget(ioTarget),
      mBuffer(new unsigned char[std::max<std::uint32_t>(inBufferSize, 1)]),
      mBufferSize(std::max<std::uint32_t>(inBufferSize, 1)),
      mBlockSize(inBlockSize) {}

OBufferedByteStream::~OBufferedByteStream() {
    try {
        Flush();
    } catch (...) {
        // A destructor must not throw; the pending bytes are lost.
    }
}

void OBufferedByteStream::Put(unsigned char inByte) {
    if (Pending() && mPosition - mWindowStart + 1 > mBufferSize) {
        Flush();
    }
    Store(&inByte, 1);
}

void OBufferedByteStream::WriteBlock(unsigned char const* inSource, std::uint32_t inCount) {
    if (Pending() && mPosition - mWindowStart + inCount > mBufferSize) {
        Flush();
    }
    if (inCount <= mBufferSize) {
        Store(inSource, inCount);
        return;
    }
    mTarget.CurPos(mPosition);
    mTarget.WriteBlock(inSource, inCount);
    mPosition += inCount;
}

void OBufferedByteStream::CurPos(std::uint64_t inPosition) {
    if (Pending() && (inPosition < mWindowStart || inPosition > mWindowStart + mWindowLength)) {
        Flush();
    }
    mPosition = inPosition;
}

std::uint64_t OBufferedByteStream::CurPos() const { return mPosition; }

void OBufferedByteStream::Flush() {
    if (!Pending()) {
        return;
    }
    mTarget.CurPos(mWindowStart);
    mTarget.WriteBlock(mBuffer.get(), mWindowLength);
    mWindowLength = 0;
}

// Copies inCount bytes into the window at the position; the caller has made
// sure that they fit.
void OBufferedByteStream::Store(unsigned char const* inSource, std::uint32_t inCount) {
    if (!Pending()) {
        mWindowStart = mPosition;
    }
    std::uint32_t const offset = static_cast<std::uint32_t>(mPosition - mWindowStart);
    if (inCount != 0) {
        std::memcpy(mBuffer.get() + offset, inSource, inCount);
    }
    mPosition += inCount;
    mWindowLength = std::max(mWindowLength, offset + inCount);
}

}  // namespace filesupport
}  // namespace quorel
