// Run-length coding in the PackBits packet format.
//
// A packet is a header byte n (read as signed 8-bit) and its data:
//   0 to 127     a literal packet: the next n + 1 bytes are copied;
//   -1 to -127   a repeat packet: the next byte stands for 1 - n copies;
//   -128 (0x80)  no data: the decoder skips it.
// The coder never writes 0x80.  There is no terminator, count or checksum: the
// coded data ends where its stream ends.  Neither direction can seek.
#ifndef QUOREL_FILESUPPORT_RLEBYTESTREAM_H
#define QUOREL_FILESUPPORT_RLEBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace filesupport {

/// Decodes PackBits packets read from a source stream.  The source's
/// eof_error at the end of the coded data passes through; Length stays 0
/// (unknown), so a stream copy from this stream runs to that end.
class QRL_EXPORT IRLEByteStream : public IByteStream {
public:
    explicit IRLEByteStream(IByteStream& ioSource);
    ~IRLEByteStream() override;

    /// The next decoded byte.
    unsigned char Get() override;
    /// Raises byte_stream_exception: a coded stream cannot seek.
    void CurPos(std::uint64_t inPosition) override;
    /// Raises byte_stream_exception.
    std::uint64_t CurPos() const override;

private:
    void ReadHeader();

    IByteStream& mSource;
    int mLiteralsLeft = 0;
    int mRepeatsLeft = 0;
    unsigned char mRepeatValue = 0;
};

/// Codes the bytes put into it as PackBits packets on a target stream.  Three
/// equal bytes in a row end a literal packet and start a repeat; two at the
/// start of a packet also make a repeat.  A full packet (128 bytes) goes out at
/// once; the last, partial packet only on Flush.  The destructor does not
/// flush: a caller that stops without Flush loses the pending packet.
class QRL_EXPORT ORLEByteStream : public OByteStream {
public:
    explicit ORLEByteStream(OByteStream& ioTarget);
    ~ORLEByteStream() override;

    void Put(unsigned char inByte) override;
    /// Raises byte_stream_exception: a coded stream cannot seek.
    void CurPos(std::uint64_t inPosition) override;
    /// Raises byte_stream_exception.
    std::uint64_t CurPos() const override;

    /// Writes the pending packet, if any.  Writing may go on afterwards, in a
    /// new packet.  It does not flush the target.
    virtual void Flush();

protected:
    /// Writes the pending bytes as one packet and empties the packet buffer.
    virtual void WritePacket();

private:
    static constexpr int kMaxPacket = 128;

    void PutLiteral(unsigned char inByte);

    OByteStream& mTarget;
    bool mRepeating = true;
    int mCount = 0;
    unsigned char mBuffer[kMaxPacket];
};

}  // namespace filesupport
}  // namespace quorel

#endif
