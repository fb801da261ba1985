// Byte streams over a std::string that the caller owns.
#ifndef QUOREL_FILESUPPORT_STRINGBYTESTREAM_H
#define QUOREL_FILESUPPORT_STRINGBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <string>

namespace quorel {
namespace filesupport {

/// Reads a string's bytes from its beginning.  The string must outlive the
/// stream and should not change while it is read.
class QRL_EXPORT IStringByteStream : public IByteStream {
public:
    explicit IStringByteStream(std::string& inData);
    ~IStringByteStream() override;

    /// The next byte; eof_error at the string's end.
    unsigned char Get() override;
    /// Moves to inPosition; a position past the end makes the next Get fail.
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;
    /// The string's size.
    std::uint64_t Length() const override;

private:
    std::string& mData;
    std::uint64_t mPosition = 0;
};

/// Appends to a string, keeping what it already holds.  It cannot seek:
/// CurPos() is the string's size and CurPos(position) does nothing.
class QRL_EXPORT OStringByteStream : public OByteStream {
public:
    explicit OStringByteStream(std::string& ioData);
    ~OStringByteStream() override;

    void Put(unsigned char inByte) override;
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;

private:
    std::string& mData;
};

}  // namespace filesupport
}  // namespace quorel

#endif
