// Byte streams over strings, deques and standard streams: the operations of
// each adapted type, and the one instantiation of each template per type.
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/DequeByteStream.h>
#include <quorel/filesupport/StdByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

namespace quorel {
namespace filesupport {

namespace {

// ---- Containers: a position of the stream's own; output only appends ----

template <class Container>
unsigned char NextByte(Container const& inData, std::uint64_t& ioPosition) {
    if (ioPosition >= inData.size()) {
        throw eof_error();
    }
    return static_cast<unsigned char>(inData[static_cast<std::size_t>(ioPosition++)]);
}

template <class Container>
void Seek(Container&, std::uint64_t& outPosition, std::uint64_t inPosition) { outPosition = inPosition; }

template <class Container>
std::uint64_t Tell(Container const&, std::uint64_t inPosition) { return inPosition; }

template <class Container>
std::uint64_t LengthOf(Container const& inData) { return inData.size(); }

template <class Container>
void Append(Container& ioData, unsigned char inByte) {
    ioData.push_back(static_cast<typename Container::value_type>(inByte));
}

template <class Container>
void SeekOut(Container&, std::uint64_t) {}

template <class Container>
std::uint64_t TellOut(Container const& inData) { return inData.size(); }

// ---- Standard streams: their own position, through get/put and seeks ----

unsigned char NextByte(std::istream& ioStream, std::uint64_t&) {
    std::istream::int_type const value = ioStream.get();
    if (std::istream::traits_type::eq_int_type(value, std::istream::traits_type::eof())) {
        throw eof_error();
    }
    return static_cast<unsigned char>(value);
}

void Seek(std::istream& ioStream, std::uint64_t&, std::uint64_t inPosition) {
    ioStream.seekg(static_cast<std::streamoff>(inPosition), std::ios_base::beg);
}

std::uint64_t Tell(std::istream& ioStream, std::uint64_t) {
    return static_cast<std::uint64_t>(static_cast<std::streamoff>(ioStream.tellg()));
}

std::uint64_t LengthOf(std::istream& ioStream) {
    std::streampos const saved = ioStream.tellg();
    if (saved == std::streampos(-1)) {
        return 0;
    }
    std::ios_base::iostate const state = ioStream.rdstate();
    ioStream.seekg(0, std::ios_base::end);
    std::streampos const end = ioStream.tellg();
    ioStream.clear(state);  // a stream that refused to seek is left as it was
    ioStream.seekg(saved);
    return end == std::streampos(-1) ? 0 : static_cast<std::uint64_t>(static_cast<std::streamoff>(end));
}

void Append(std::ostream& ioStream, unsigned char inByte) { ioStream.put(static_cast<char>(inByte)); }

void SeekOut(std::ostream& ioStream, std::uint64_t inPosition) {
    ioStream.seekp(static_cast<std::streamoff>(inPosition), std::ios_base::beg);
}

std::uint64_t TellOut(std::ostream& ioStream) {
    return static_cast<std::uint64_t>(static_cast<std::streamoff>(ioStream.tellp()));
}

}  // namespace

template <class Source>
IAdapterByteStream<Source>::IAdapterByteStream(Source& ioSource) : mSource(ioSource) {}

template <class Source>
unsigned char IAdapterByteStream<Source>::Get() { return NextByte(mSource, mPosition); }

template <class Source>
void IAdapterByteStream<Source>::CurPos(std::uint64_t inPosition) { Seek(mSource, mPosition, inPosition); }

template <class Source>
std::uint64_t IAdapterByteStream<Source>::CurPos() const { return Tell(mSource, mPosition); }

template <class Source>
std::uint64_t IAdapterByteStream<Source>::Length() const { return LengthOf(mSource); }

template <class Target>
OAdapterByteStream<Target>::OAdapterByteStream(Target& ioTarget) : mTarget(ioTarget) {}

template <class Target>
void OAdapterByteStream<Target>::Put(unsigned char inByte) { Append(mTarget, inByte); }

template <class Target>
void OAdapterByteStream<Target>::CurPos(std::uint64_t inPosition) { SeekOut(mTarget, inPosition); }

template <class Target>
std::uint64_t OAdapterByteStream<Target>::CurPos() const { return TellOut(mTarget); }

template class IAdapterByteStream<std::string>;
template class OAdapterByteStream<std::string>;
template class IAdapterByteStream<std::deque<unsigned char>>;
template class OAdapterByteStream<std::deque<unsigned char>>;
template class IAdapterByteStream<std::istream>;
template class OAdapterByteStream<std::ostream>;

}  // namespace filesupport
}  // namespace quorel
