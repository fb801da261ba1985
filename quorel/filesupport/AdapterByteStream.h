// Byte streams over an object that the caller owns: a std::string, a
// std::deque<unsigned char> or a standard stream.  The object must outlive the
// stream.
//
// One template per direction holds the reference; the library supplies the
// operations for exactly those types and names each instantiation below
// (StringByteStream.h, DequeByteStream.h and StdByteStream.h bring them in
// under their own names).  Every member is defined in the library, none
// inline, so that the instantiations it exports are the ones a host uses.
#ifndef QUOREL_FILESUPPORT_ADAPTERBYTESTREAM_H
#define QUOREL_FILESUPPORT_ADAPTERBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <deque>
#include <istream>
#include <ostream>
#include <string>

namespace quorel {
namespace filesupport {

/// Reads bytes out of a Source.
template <class Source>
class QRL_EXPORT IAdapterByteStream : public IByteStream {
public:
    explicit IAdapterByteStream(Source& ioSource);

    unsigned char Get() override;
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;
    std::uint64_t Length() const override;

private:
    Source& mSource;
    std::uint64_t mPosition = 0;  // unused by a standard stream, which keeps its own
};

/// Writes bytes into a Target.
template <class Target>
class QRL_EXPORT OAdapterByteStream : public OByteStream {
public:
    explicit OAdapterByteStream(Target& ioTarget);

    void Put(unsigned char inByte) override;
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;

private:
    Target& mTarget;
};

extern template class IAdapterByteStream<std::string>;
extern template class OAdapterByteStream<std::string>;
extern template class IAdapterByteStream<std::deque<unsigned char>>;
extern template class OAdapterByteStream<std::deque<unsigned char>>;
extern template class IAdapterByteStream<std::istream>;
extern template class OAdapterByteStream<std::ostream>;

/// Reads a string's bytes from its beginning.  Get raises eof_error at the
/// string's end; a position past the end makes the next Get fail; Length is
/// the string's size.  The string should not change while it is read.
using IStringByteStream = IAdapterByteStream<std::string>;

/// Appends to a string, keeping what it already holds.  It cannot seek:
/// CurPos() is the string's size and CurPos(position) does nothing.
using OStringByteStream = OAdapterByteStream<std::string>;

/// Reads a deque from its beginning, as IStringByteStream reads a string.
using IDequeByteStream = IAdapterByteStream<std::deque<unsigned char>>;

/// Appends to a deque, as OStringByteStream appends to a string.
using ODequeByteStream = OAdapterByteStream<std::deque<unsigned char>>;

/// Reads a std::istream through get, tellg and seekg (to absolute positions).
/// The standard stream's own state and exception mask apply: nothing is raised
/// but eof_error, from Get, when get finds the stream's end, so that a stream
/// copy from a standard stream (whose length may be unknown) ends there.
/// Length is the position of the stream's end, found by seeking there and
/// back; a stream that cannot seek (a pipe, a terminal) gives 0: not known.
using IStdByteStream = IAdapterByteStream<std::istream>;

/// Writes a std::ostream through put, tellp and seekp (to absolute positions),
/// under the standard stream's own state and exception mask.
using OStdByteStream = OAdapterByteStream<std::ostream>;

}  // namespace filesupport
}  // namespace quorel

#endif
