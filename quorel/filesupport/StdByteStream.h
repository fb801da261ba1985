// Byte streams over standard streams that the caller owns.
//
// The standard stream's own state and exception mask apply: these classes do
// not look at the state and raise nothing of their own, except that the input
// side reports the end of its stream as eof_error.
#ifndef QUOREL_FILESUPPORT_STDBYTESTREAM_H
#define QUOREL_FILESUPPORT_STDBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <istream>
#include <ostream>

namespace quorel {
namespace filesupport {

/// Reads a std::istream through get, tellg and seekg.
class QRL_EXPORT IStdByteStream : public IByteStream {
public:
    explicit IStdByteStream(std::istream& ioStream);
    ~IStdByteStream() override;

    /// The next byte of the standard stream.  When get finds the stream's end
    /// this raises eof_error, so a stream copy from a standard stream (whose
    /// length may be unknown) ends there.
    unsigned char Get() override;
    /// seekg to the absolute position.
    void CurPos(std::uint64_t inPosition) override;
    /// tellg.
    std::uint64_t CurPos() const override;
    /// The position of the stream's end, found by seeking there and back.  A
    /// stream that cannot seek (a pipe, a terminal) gives 0: not known.
    std::uint64_t Length() const override;

private:
    std::istream& mStream;
};

/// Writes a std::ostream through put, tellp and seekp.
class QRL_EXPORT OStdByteStream : public OByteStream {
public:
    explicit OStdByteStream(std::ostream& ioStream);
    ~OStdByteStream() override;

    void Put(unsigned char inByte) override;
    /// seekp to the absolute position.
    void CurPos(std::uint64_t inPosition) override;
    /// tellp.
    std::uint64_t CurPos() const override;

private:
    std::ostream& mStream;
};

}  // namespace filesupport
}  // namespace quorel

#endif
