// The counting output stream.
#include <quorel/filesupport/CountingByteStream.h>

namespace quorel {
namespace filesupport {

OCountingByteStream::OCountingByteStream() = default;

OCountingByteStream::~OCountingByteStream() = default;

void OCountingByteStream::Put(unsigned char) {
    ++mPosition;
    if (mPosition > mCount) {
        mCount = mPosition;
    }
}

void OCountingByteStream::CurPos(std::uint64_t inPosition) { mPosition = inPosition; }

std::uint64_t OCountingByteStream::CurPos() const { return mPosition; }

std::uint64_t OCountingByteStream::Count() const { return mCount; }

}  // namespace filesupport
}  // namespace quorel
