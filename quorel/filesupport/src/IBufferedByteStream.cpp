// Buffered input: a block-aligned window over a seekable source.
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>

#include <algorithm>
#include <cstring>

namespace quorel {
namespace filesupport {

IBufferedByteStream::IBufferedByteStream(IByteStream& ioSource, std::uint32_t inBufferSize,
                                         std::uint32_t inBlockSize)
    : mSource(ioSource),
      mBufferSize(inBufferSize),
      mBlockSize(inBlockSize),
      mSourceLength(ioSource.Length()) {
    // Sizes outside the documented range would let a window miss its request;
    // they are widened to the smallest valid pair instead.
    mBlockSize = std::min<std::uint32_t>(std::max<std::uint32_t>(mBlockSize, 1), 0x40000000u);
    if (mBufferSize / 2 < mBlockSize) {
        mBufferSize = 2 * mBlockSize;
    }
    mBuffer.reset(new unsigned char[mBufferSize]);
}

IBufferedByteStream::~IBufferedByteStream() = default;

unsigned char IBufferedByteStream::Get() {
    if (mPosition >= mSourceLength) {
        throw eof_error();
    }
    FillWindow(mPosition, 1);
    return mBuffer[mPosition++ - mWindowStart];
}

void IBufferedByteStream::ReadBlock(unsigned char* outDest, std::uint32_t inCount) {
    if (inCount == 0) {
        return;
    }
    if (mPosition > mSourceLength || inCount > mSourceLength - mPosition) {
        throw eof_error();
    }
    if (inCount <= mBufferSize - mBlockSize) {
        FillWindow(mPosition, inCount);
        std::memcpy(outDest, mBuffer.get() + (mPosition - mWindowStart), inCount);
    } else {
        ReadFromSource(mPosition, outDest, inCount);
    }
    mPosition += inCount;
}

void IBufferedByteStream::CurPos(std::uint64_t inPosition) {
    if (inPosition > mSourceLength) {
        throw eof_error();
    }
    mPosition = inPosition;
}

std::uint64_t IBufferedByteStream::CurPos() const { return mPosition; }

std::uint64_t IBufferedByteStream::Length() const { return mSource.Length(); }

void IBufferedByteStream::FillWindow(std::uint64_t inPosition, std::uint32_t inCount) {
    std::uint64_t const oldStart = mWindowStart;
    std::uint64_t const oldEnd = mWindowStart + mWindowLength;
    if (oldStart <= inPosition && inPosition + inCount <= oldEnd) {
        return;
    }
    std::uint64_t start = inPosition - inPosition % mBlockSize;
    std::uint64_t const room = mBufferSize - mBlockSize - (inPosition - start);  // positive: see the constructor
    if (room > inCount && start > mBlockSize) {
        start -= mBlockSize;  // one block behind the request, for short backward seeks
    }
    std::uint32_t const length =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(mBufferSize, mSourceLength - start));

    // The old window is not valid while the buffer is being rearranged: a
    // failing source read must not leave a window that claims stale bytes.
    mWindowLength = 0;
    unsigned char* const buffer = mBuffer.get();
    if (oldStart <= start && start < oldEnd) {
        std::uint32_t const keep = static_cast<std::uint32_t>(std::min<std::uint64_t>(oldEnd - start, length));
        std::memmove(buffer, buffer + (start - oldStart), keep);
        ReadFromSource(start + keep, buffer + keep, length - keep);
    } else if (start < oldStart && start + length >= oldStart && start + length <= oldEnd) {
        std::uint32_t const gap = static_cast<std::uint32_t>(oldStart - start);
        std::memmove(buffer + gap, buffer, length - gap);
        ReadFromSource(start, buffer, gap);
    } else {
        ReadFromSource(start, buffer, length);
    }
    mWindowStart = start;
    mWindowLength = length;
}

void IBufferedByteStream::ReadFromSource(std::uint64_t inPosition, unsigned char* outDest, std::uint32_t inCount) {
    if (inCount == 0) {
        return;
    }
    mSource.CurPos(inPosition);
    mSource.ReadBlock(outDest, inCount);
}

}  // namespace filesupport
}  // namespace quorel
