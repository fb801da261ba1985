// Byte streams over caller-owned memory.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>

namespace quorel {
namespace filesupport {

IBufferByteStream::IBufferByteStream(unsigned char const* inData, std::uint64_t inSize)
    : mData(inData), mSize(inSize) {}

IBufferByteStream::~IBufferByteStream() = default;

unsigned char IBufferByteStream::Get() {
    if (mPosition >= mSize) {
        throw eof_error();
    }
    return mData[mPosition++];
}

void IBufferByteStream::CurPos(std::uint64_t inPosition) { mPosition = inPosition; }

std::uint64_t IBufferByteStream::CurPos() const { return mPosition; }

std::uint64_t IBufferByteStream::Length() const { return mSize; }

OBufferByteStream::OBufferByteStream(unsigned char* outData, std::uint64_t inSize) : mData(outData), mSize(inSize) {}

OBufferByteStream::~OBufferByteStream() = default;

void OBufferByteStream::Put(unsigned char inByte) {
    if (mPosition >= mSize) {
        throw eof_error();
    }
    mData[mPosition] = inByte;
    Reach(mPosition + 1);
}

void OBufferByteStream::CurPos(std::uint64_t inPosition) { Reach(inPosition); }

std::uint64_t OBufferByteStream::CurPos() const { return mPosition; }

std::uint64_t OBufferByteStream::Length() const { return mSize; }

std::uint64_t OBufferByteStream::Count() const { return mCount; }

void OBufferByteStream::Reach(std::uint64_t inPosition) {
    mPosition = inPosition;
    if (inPosition > mCount) {
        mCount = inPosition;
    }
}

}  // namespace filesupport
}  // namespace quorel
