// Byte streams over a std::deque<unsigned char> that the caller owns.
#ifndef QUOREL_FILESUPPORT_DEQUEBYTESTREAM_H
#define QUOREL_FILESUPPORT_DEQUEBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <deque>

namespace quorel {
namespace filesupport {

/// Reads a deque from its beginning.  The deque must outlive the stream and
/// should not change while it is read.
class QRL_EXPORT IDequeByteStream : public IByteStream {
public:
    explicit IDequeByteStream(std::deque<unsigned char>& inData);
    ~IDequeByteStream() override;

    /// The next byte; eof_error at the deque's end.
    unsigned char Get() override;
    /// Moves to inPosition; a position past the end makes the next Get fail.
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;
    /// The deque's size.
    std::uint64_t Length() const override;

private:
    std::deque<unsigned char>& mData;
    std::uint64_t mPosition = 0;
};

/// Appends to a deque.  It cannot seek: CurPos() is the deque's size and
/// CurPos(position) does nothing.
class QRL_EXPORT ODequeByteStream : public OByteStream {
public:
    explicit ODequeByteStream(std::deque<unsigned char>& ioData);
    ~ODequeByteStream() override;

    void Put(unsigned char inByte) override;
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;

private:
    std::deque<unsigned char>& mData;
};

}  // namespace filesupport
}  // namespace quorel

#endif
