// The CRC-32 tap.
#include <quorel/filesupport/CRCByteStream.h>

#include "Crc32.h"

namespace quorel {
namespace filesupport {

OCRCByteStream::OCRCByteStream(OByteStream& ioTarget) : mState(new Crc32State()), mTarget(ioTarget) {}

OCRCByteStream::~OCRCByteStream() = default;

void OCRCByteStream::Put(unsigned char inByte) {
    mState->Update(inByte);
    mTarget.Put(inByte);
}

void OCRCByteStream::WriteBlock(unsigned char const* inSource, std::uint32_t inCount) {
    mState->Update(inSource, inCount);
    mTarget.WriteBlock(inSource, inCount);
}

void OCRCByteStream::CurPos(std::uint64_t inPosition) { mTarget.CurPos(inPosition); }

std::uint64_t OCRCByteStream::CurPos() const { return mTarget.CurPos(); }

std::uint32_t OCRCByteStream::Value() const { return mState->Value(); }

}  // namespace filesupport
}  // namespace quorel
