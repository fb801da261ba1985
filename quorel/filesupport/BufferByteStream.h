// Byte streams over a fixed block of memory that the caller owns.
#ifndef QUOREL_FILESUPPORT_BUFFERBYTESTREAM_H
#define QUOREL_FILESUPPORT_BUFFERBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace filesupport {

/// Reads inSize bytes at inData, which must outlive the stream.
class QRL_EXPORT IBufferByteStream : public IByteStream {
public:
    IBufferByteStream(unsigned char const* inData, std::uint64_t inSize);
    ~IBufferByteStream() override;

    /// The next byte; eof_error once the position is at or past the size.
    unsigned char Get() override;
    /// Sets the position without a check: a later Get past the end fails.
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;
    /// The size given to the constructor.
    std::uint64_t Length() const override;

private:
    unsigned char const* mData;
    std::uint64_t mPosition = 0;
    std::uint64_t mSize;
};

/// Writes into inSize bytes at outData, which must outlive the stream, and
/// remembers the highest position reached.
class QRL_EXPORT OBufferByteStream : public OByteStream {
public:
    OBufferByteStream(unsigned char* outData, std::uint64_t inSize);
    ~OBufferByteStream() override;

    /// Stores a byte; eof_error once the position is at or past the size.
    void Put(unsigned char inByte) override;
    /// Sets the position without a check.  Seeking forward counts towards Count.
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;
    /// The size given to the constructor.
    virtual std::uint64_t Length() const;

    /// The highest position reached by a Put or a seek.
    std::uint64_t Count() const;

private:
    void Reach(std::uint64_t inPosition);

    unsigned char* mData;
    std::uint64_t mPosition = 0;
    std::uint64_t mSize;
    std::uint64_t mCount = 0;
};

}  // namespace filesupport
}  // namespace quorel

#endif
