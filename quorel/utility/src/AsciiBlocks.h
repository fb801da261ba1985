// Block operations on runs of ASCII text, used by the conversions' fast paths.
// With SSE2 (every x86-64 processor) they work on 16 units at a time; other
// processors use a portable 8-unit form.
#ifndef QUOREL_UTILITY_SRC_ASCIIBLOCKS_H
#define QUOREL_UTILITY_SRC_ASCIIBLOCKS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define QUOREL_HAVE_SSE2 1
#endif

namespace quorel {
namespace utility {
namespace ascii {

#if QUOREL_HAVE_SSE2
constexpr std::size_t kBlock = 16;

/// Widens kBlock bytes to units if all are ASCII; false (nothing written) if not.
inline bool WidenBlock(unsigned char const* inBytes, unsigned short* outUnits) noexcept {
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inBytes));
    if (_mm_movemask_epi8(bytes) != 0) {
        return false;
    }
    __m128i const zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits), _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits + 8), _mm_unpackhi_epi8(bytes, zero));
    return true;
}

/// Narrows kBlock units to bytes if all are below 0x80; false (nothing written) if not.
inline bool NarrowBlock(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + 8));
    __m128i const mask = _mm_set1_epi16(static_cast<short>(0xFF80));
    if (_mm_movemask_epi8(_mm_and_si128(_mm_or_si128(low, high), mask)) != 0) {
        return false;
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outBytes), _mm_packus_epi16(low, high));
    return true;
}

/// Scans up to inLimit units for the first nul.  Returns its index (or inLimit)
/// and sets ioAllAscii to false if a unit before that point is 0x80 or above.
inline std::size_t ScanToNul(unsigned short const* inUnits, std::size_t inLimit, bool& ioAllAscii) noexcept {
    __m128i const zero = _mm_setzero_si128();
    __m128i const mask = _mm_set1_epi16(static_cast<short>(0xFF80));
    __m128i high = zero;
    std::size_t i = 0;
    for (; i + 8 <= inLimit; i += 8) {
        __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)) != 0) {
            break;
        }
        high = _mm_or_si128(high, _mm_and_si128(units, mask));
    }
    if (_mm_movemask_epi8(high) != 0) {
        ioAllAscii = false;
    }
    for (; i < inLimit && inUnits[i] != 0; ++i) {
        if (inUnits[i] >= 0x80) {
            ioAllAscii = false;
        }
    }
    return i;
}
#else
constexpr std::size_t kBlock = 8;

inline bool WidenBlock(unsigned char const* inBytes, unsigned short* outUnits) noexcept {
    std::uint64_t word;
    std::memcpy(&word, inBytes, sizeof word);
    if ((word & 0x8080808080808080ULL) != 0) {
        return false;
    }
    for (std::size_t i = 0; i < kBlock; ++i) {
        outUnits[i] = inBytes[i];
    }
    return true;
}

inline bool NarrowBlock(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    unsigned short any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        any |= inUnits[i];
    }
    if (any >= 0x80) {
        return false;
    }
    for (std::size_t i = 0; i < kBlock; ++i) {
        outBytes[i] = static_cast<unsigned char>(inUnits[i]);
    }
    return true;
}

inline std::size_t ScanToNul(unsigned short const* inUnits, std::size_t inLimit, bool& ioAllAscii) noexcept {
    unsigned short any = 0;
    std::size_t i = 0;
    for (; i < inLimit && inUnits[i] != 0; ++i) {
        any |= inUnits[i];
    }
    if (any >= 0x80) {
        ioAllAscii = false;
    }
    return i;
}
#endif

}  // namespace ascii
}  // namespace utility
}  // namespace quorel

#endif
