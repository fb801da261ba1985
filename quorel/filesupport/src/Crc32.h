// CRC-32 of IEEE 802.3 in its reflected form (polynomial 0xEDB88320), the
// checksum of zlib, PNG and Ethernet.  Internal to the byte streams.
#ifndef QUOREL_FILESUPPORT_SRC_CRC32_H
#define QUOREL_FILESUPPORT_SRC_CRC32_H

#include <cstddef>
#include <cstdint>

namespace quorel {
namespace filesupport {

/// Advances a CRC register (not inverted) over a block of bytes, by the fastest
/// method the processor offers.  Equal to UpdateCrc32Byte applied byte by byte.
std::uint32_t UpdateCrc32(std::uint32_t inRegister, unsigned char const* inData, std::size_t inCount) noexcept;

/// The running checksum of one stream: a register and the byte table.
class Crc32State {
public:
    Crc32State() noexcept;

    void Update(unsigned char inByte) noexcept {
        mRegister = (mRegister >> 8) ^ mTable[(mRegister ^ inByte) & 0xFFu];
    }
    void Update(unsigned char const* inData, std::size_t inCount) noexcept {
        mRegister = UpdateCrc32(mRegister, inData, inCount);
    }
    /// The checksum of everything so far; the register is left as it is.
    std::uint32_t Value() const noexcept { return ~mRegister; }

private:
    std::uint32_t mRegister = 0xFFFFFFFFu;
    std::uint32_t mTable[256];
};

}  // namespace filesupport
}  // namespace quorel

#endif
