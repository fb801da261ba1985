// Byte streams over a deque and over a string: the same logic for both.
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/DequeByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

namespace quorel {
namespace filesupport {

namespace {

// The byte at ioPosition, which then moves on; eof_error at the end.
template <class Container>
unsigned char NextByte(Container const& inData, std::uint64_t& ioPosition) {
    if (ioPosition >= inData.size()) {
        throw eof_error();
    }
    return static_cast<unsigned char>(inData[static_cast<std::size_t>(ioPosition++)]);
}

}  // namespace

IDequeByteStream::IDequeByteStream(std::deque<unsigned char>& inData) : mData(inData) {}
IDequeByteStream::~IDequeByteStream() = default;
unsigned char IDequeByteStream::Get() { return NextByte(mData, mPosition); }
void IDequeByteStream::CurPos(std::uint64_t inPosition) { mPosition = inPosition; }
std::uint64_t IDequeByteStream::CurPos() const { return mPosition; }
std::uint64_t IDequeByteStream::Length() const { return mData.size(); }

ODequeByteStream::ODequeByteStream(std::deque<unsigned char>& ioData) : mData(ioData) {}
ODequeByteStream::~ODequeByteStream() = default;
void ODequeByteStream::Put(unsigned char inByte) { mData.push_back(inByte); }
void ODequeByteStream::CurPos(std::uint64_t) {}
std::uint64_t ODequeByteStream::CurPos() const { return mData.size(); }

IStringByteStream::IStringByteStream(std::string& inData) : mData(inData) {}
IStringByteStream::~IStringByteStream() = default;
unsigned char IStringByteStream::Get() { return NextByte(mData, mPosition); }
void IStringByteStream::CurPos(std::uint64_t inPosition) { mPosition = inPosition; }
std::uint64_t IStringByteStream::CurPos() const { return mPosition; }
std::uint64_t IStringByteStream::Length() const { return mData.size(); }

OStringByteStream::OStringByteStream(std::string& ioData) : mData(ioData) {}
OStringByteStream::~OStringByteStream() = default;
void OStringByteStream::Put(unsigned char inByte) { mData.push_back(static_cast<char>(inByte)); }
void OStringByteStream::CurPos(std::uint64_t) {}
std::uint64_t OStringByteStream::CurPos() const { return mData.size(); }

}  // namespace filesupport
}  // namespace quorel
