// A pass-through output stream that computes the CRC-32 of what it writes.
#ifndef QUOREL_FILESUPPORT_CRCBYTESTREAM_H
#define QUOREL_FILESUPPORT_CRCBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <memory>

namespace quorel {
namespace filesupport {

class Crc32State;

/// Computes the CRC-32 of IEEE 802.3 (reflected, polynomial 0xEDB88320, the
/// checksum of zlib and PNG) over every byte that passes through, and hands the
/// bytes on to a target stream unchanged.  The check value of "123456789" is
/// 0xCBF43926; with nothing written the value is 0.
class QRL_EXPORT OCRCByteStream : public OByteStream {
public:
    explicit OCRCByteStream(OByteStream& ioTarget);
    ~OCRCByteStream() override;

    /// Adds the byte to the checksum, then puts it to the target.
    void Put(unsigned char inByte) override;
    /// Adds the block to the checksum, then writes it to the target in one call.
    void WriteBlock(unsigned char const* inSource, std::uint32_t inCount) override;
    /// Seeks the target; the checksum is not affected.
    void CurPos(std::uint64_t inPosition) override;
    /// The target's position.
    std::uint64_t CurPos() const override;

    /// The checksum of all bytes so far.  Writing may go on afterwards; there
    /// is no reset.
    std::uint32_t Value() const;

private:
    std::unique_ptr<Crc32State> mState;
    OByteStream& mTarget;
};

}  // namespace filesupport
}  // namespace quorel

#endif
