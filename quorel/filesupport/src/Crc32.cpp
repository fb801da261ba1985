// CRC-32 over blocks: carry-less multiplication (PCLMULQDQ) on x86-64
// processors that have it, slicing by eight tables elsewhere.
#include "Crc32.h"

#include <cstring>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define QUOREL_CRC32_CLMUL 1
#include <immintrin.h>
#endif

namespace quorel {
namespace filesupport {

namespace {

// Each exponent e of the generator sets bit 31 - e of the reflected form.
constexpr int kExponents[] = {0, 1, 2, 4, 5, 7, 8, 10, 11, 12, 16, 22, 23, 26};

constexpr std::uint32_t ReflectedPolynomial() {
    std::uint32_t polynomial = 0;
    for (int exponent : kExponents) {
        polynomial |= 1u << (31 - exponent);
    }
    return polynomial;
}

constexpr std::uint32_t kPolynomial = ReflectedPolynomial();

// Entry i: i put through eight steps of shift right, XOR with the polynomial
// when the bit shifted out was 1.
void FillByteTable(std::uint32_t* outTable) {
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1u) != 0 ? (value >> 1) ^ kPolynomial : value >> 1;
        }
        outTable[i] = value;
    }
}

// Table k gives the effect of a byte followed by k zero bytes.
struct SlicingTables {
    std::uint32_t mTable[8][256];

    SlicingTables() {
        FillByteTable(mTable[0]);
        for (int k = 1; k < 8; ++k) {
            for (int i = 0; i < 256; ++i) {
                std::uint32_t const previous = mTable[k - 1][i];
                mTable[k][i] = (previous >> 8) ^ mTable[0][previous & 0xFFu];
            }
        }
    }
};

SlicingTables const& Tables() {
    static SlicingTables const tables;
    return tables;
}

std::uint32_t LoadLittle32(unsigned char const* inData) {
    return std::uint32_t(inData[0]) | std::uint32_t(inData[1]) << 8 | std::uint32_t(inData[2]) << 16 |
           std::uint32_t(inData[3]) << 24;
}

std::uint32_t UpdateBytewise(std::uint32_t inRegister, unsigned char const* inData, std::size_t inCount) {
    std::uint32_t const* table = Tables().mTable[0];
    for (std::size_t i = 0; i < inCount; ++i) {
        inRegister = (inRegister >> 8) ^ table[(inRegister ^ inData[i]) & 0xFFu];
    }
    return inRegister;
}

std::uint32_t UpdateSlicing(std::uint32_t inRegister, unsigned char const* inData, std::size_t inCount) {
    auto const& t = Tables().mTable;
    while (inCount >= 8) {
        std::uint32_t const low = inRegister ^ LoadLittle32(inData);
        std::uint32_t const high = LoadLittle32(inData + 4);
        inRegister = t[7][low & 0xFF] ^ t[6][(low >> 8) & 0xFF] ^ t[5][(low >> 16) & 0xFF] ^ t[4][low >> 24] ^
                     t[3][high & 0xFF] ^ t[2][(high >> 8) & 0xFF] ^ t[1][(high >> 16) & 0xFF] ^ t[0][high >> 24];
        inData += 8;
        inCount -= 8;
    }
    return UpdateBytewise(inRegister, inData, inCount);
}

#if QUOREL_CRC32_CLMUL

#define QUOREL_CRC_TARGET __attribute__((target("pclmul,sse2")))

QUOREL_CRC_TARGET inline __m128i FoldInto(__m128i inAccumulator, __m128i inConstants, __m128i inNext) {
    __m128i const low = _mm_clmulepi64_si128(inAccumulator, inConstants, 0x00);
    __m128i const high = _mm_clmulepi64_si128(inAccumulator, inConstants, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), inNext);
}

QUOREL_CRC_TARGET inline __m128i Load(unsigned char const* inData) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(inData));
}

// Folds 64 bytes at a time into four 128-bit lanes, the lanes into one, then
// reduces to 32 bits.  The constants are, bit-reflected, x^(4*128+32) and
// x^(4*128-32) mod P (four lanes ahead), x^(128+32) and x^(128-32) mod P (one
// lane ahead), x^64 mod P, and for the Barrett step P itself (with its x^32
// term) and floor(x^64 / P).  inCount is at least 64 and a multiple of 16.
QUOREL_CRC_TARGET std::uint32_t UpdateFolding(std::uint32_t inRegister, unsigned char const* inData,
                                              std::size_t inCount) {
    __m128i const k1k2 = _mm_set_epi64x(0x1c6e41596LL, 0x154442bd4LL);
    __m128i const k3k4 = _mm_set_epi64x(0x0ccaa009eLL, 0x1751997d0LL);
    __m128i const k5 = _mm_set_epi64x(0, 0x163cd6124LL);
    __m128i const poly = _mm_set_epi64x(0x1F7011641LL, 0x1DB710641LL);
    __m128i const mask32 = _mm_set_epi32(0, 0, 0, -1);

    __m128i x1 = _mm_xor_si128(Load(inData), _mm_cvtsi32_si128(static_cast<int>(inRegister)));
    __m128i x2 = Load(inData + 16);
    __m128i x3 = Load(inData + 32);
    __m128i x4 = Load(inData + 48);
    inData += 64;
    inCount -= 64;
    for (; inCount >= 64; inData += 64, inCount -= 64) {
        x1 = FoldInto(x1, k1k2, Load(inData));
        x2 = FoldInto(x2, k1k2, Load(inData + 16));
        x3 = FoldInto(x3, k1k2, Load(inData + 32));
        x4 = FoldInto(x4, k1k2, Load(inData + 48));
    }
    x1 = FoldInto(x1, k3k4, x2);
    x1 = FoldInto(x1, k3k4, x3);
    x1 = FoldInto(x1, k3k4, x4);
    for (; inCount >= 16; inData += 16, inCount -= 16) {
        x1 = FoldInto(x1, k3k4, Load(inData));
    }
    // 128 bits to 64, with 32 zero bits appended.
    x1 = _mm_xor_si128(_mm_srli_si128(x1, 8), _mm_clmulepi64_si128(k3k4, x1, 0x01));
    // 64 bits to 32 + 32.
    __m128i const upper = _mm_srli_si128(x1, 4);
    x1 = _mm_xor_si128(_mm_clmulepi64_si128(_mm_and_si128(x1, mask32), k5, 0x00), upper);
    // Barrett reduction to the 32-bit remainder.
    __m128i const folded = x1;
    x1 = _mm_and_si128(_mm_clmulepi64_si128(_mm_and_si128(x1, mask32), poly, 0x10), mask32);
    x1 = _mm_xor_si128(_mm_clmulepi64_si128(x1, poly, 0x00), folded);
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(x1, 4)));
}

bool HasCarrylessMultiply() {
    static bool const available = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse2");
    return available;
}

#endif

}  // namespace

std::uint32_t UpdateCrc32(std::uint32_t inRegister, unsigned char const* inData, std::size_t inCount) noexcept {
#if QUOREL_CRC32_CLMUL
    if (inCount >= 64 && HasCarrylessMultiply()) {
        std::size_t const folded = inCount & ~std::size_t(15);
        inRegister = UpdateFolding(inRegister, inData, folded);
        inData += folded;
        inCount -= folded;
    }
#endif
    return UpdateSlicing(inRegister, inData, inCount);
}

Crc32State::Crc32State() noexcept { FillByteTable(mTable); }

}  // namespace filesupport
}  // namespace quorel
