// Byte streams over standard streams.
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/StdByteStream.h>

namespace quorel {
namespace filesupport {

IStdByteStream::IStdByteStream(std::istream& ioStream) : mStream(ioStream) {}

IStdByteStream::~IStdByteStream() = default;

unsigned char IStdByteStream::Get() {
    std::istream::int_type const value = mStream.get();
    if (std::istream::traits_type::eq_int_type(value, std::istream::traits_type::eof())) {
        throw eof_error();
    }
    return static_cast<unsigned char>(value);
}

void IStdByteStream::CurPos(std::uint64_t inPosition) {
    mStream.seekg(static_cast<std::streamoff>(inPosition), std::ios_base::beg);
}

std::uint64_t IStdByteStream::CurPos() const {
    return static_cast<std::uint64_t>(static_cast<std::streamoff>(mStream.tellg()));
}

std::uint64_t IStdByteStream::Length() const {
    std::streampos const saved = mStream.tellg();
    if (saved == std::streampos(-1)) {
        return 0;
    }
    std::ios_base::iostate const state = mStream.rdstate();
    mStream.seekg(0, std::ios_base::end);
    std::streampos const end = mStream.tellg();
    mStream.clear(state);  // a stream that refused to seek is left as it was
    mStream.seekg(saved);
    return end == std::streampos(-1) ? 0 : static_cast<std::uint64_t>(static_cast<std::streamoff>(end));
}

OStdByteStream::OStdByteStream(std::ostream& ioStream) : mStream(ioStream) {}

OStdByteStream::~OStdByteStream() = default;

void OStdByteStream::Put(unsigned char inByte) { mStream.put(static_cast<char>(inByte)); }

void OStdByteStream::CurPos(std::uint64_t inPosition) {
    mStream.seekp(static_cast<std::streamoff>(inPosition), std::ios_base::beg);
}

std::uint64_t OStdByteStream::CurPos() const {
    return static_cast<std::uint64_t>(static_cast<std::streamoff>(mStream.tellp()));
}

}  // namespace filesupport
}  // namespace quorel
