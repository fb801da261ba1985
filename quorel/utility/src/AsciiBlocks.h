// Block operations on text, used by the fast paths of the conversions and of
// case mapping.  Text is mostly ASCII, and ASCII is where a block at a time
// pays most: with SSE2 (every x86-64 processor) these work on 16 bytes or 8
// units at a time; other processors use portable scalar forms with the same
// contracts.
//
// The "prefix" operations always write a whole block and report how much of it
// is valid: the caller advances by that much and later writes overwrite the
// rest.  That keeps them free of branches on the data, which matters for text
// that switches between ASCII and other scripts every few characters.
#ifndef QUOREL_UTILITY_SRC_ASCIIBLOCKS_H
#define QUOREL_UTILITY_SRC_ASCIIBLOCKS_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define QUOREL_HAVE_SSE2 1
#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
// SSSE3's byte shuffle, in functions of their own chosen at run time: nearly
// every x86-64 processor has it, but the baseline does not promise it.
#include <tmmintrin.h>
#define QUOREL_HAVE_SSSE3_FUNCTIONS 1
#endif
#endif

namespace quorel {
namespace utility {
namespace ascii {

/// Bytes (UTF-8) or units (UTF-16) that the block operations handle at once.
constexpr std::size_t kBlock = 16;
/// Units that MapCaseBlock handles at once.
constexpr std::size_t kCaseBlock = 8;
/// Half a block, the unit of the encoders of mixed text.
constexpr std::size_t kHalfBlock = kBlock / 2;

/// A mask with a bit for each unit of a block (bit 0 for the first unit).
constexpr unsigned int kAllUnits = (1u << kBlock) - 1;
/// A mask with the bits of the first half of a block.
constexpr unsigned int kFirstHalf = (1u << kHalfBlock) - 1;

/// A simple case mapping of the units below U+0100 for MapLatin1Block: the
/// units in either range but mSkip move by mDelta, the units in mRefused are
/// refused (they go through the case table), all others stay.
struct Latin1CaseRule {
    unsigned short mFirst[2];
    unsigned short mLast[2];
    unsigned short mSkip;
    unsigned short mRefused[3];
    short mDelta;
};

// Index of the lowest set bit of a non-zero mask.
inline unsigned int LowestBit(unsigned int inMask) noexcept {
#if defined(__GNUC__)
    return static_cast<unsigned int>(__builtin_ctz(inMask));
#else
    unsigned int index = 0;
    while ((inMask & 1u) == 0) {
        inMask >>= 1;
        ++index;
    }
    return index;
#endif
}

// The scalar steps that the block forms finish with and the portable forms
// consist of.

// ScanUTF16 from unit inIndex on: adds to ioExtra and ioHighSurrogates.
inline std::size_t ScanUTF16From(unsigned short const* inUnits, std::size_t inIndex, std::size_t inLimit,
                                 std::size_t& ioExtra, bool& ioHighSurrogates) noexcept {
    for (; inIndex < inLimit && inUnits[inIndex] != 0; ++inIndex) {
        unsigned int const unit = inUnits[inIndex];
        ioExtra += static_cast<std::size_t>(unit >= 0x80) + static_cast<std::size_t>(unit >= 0x800);
        ioHighSurrogates = ioHighSurrogates || (unit & 0xFC00) == 0xD800;
    }
    return inIndex;
}

// CountSurrogatePairs from unit inIndex on, plus inPairs.
inline std::size_t CountSurrogatePairsFrom(unsigned short const* inUnits, std::size_t inIndex, std::size_t inCount,
                                           std::size_t inPairs) noexcept {
    for (; inIndex + 1 < inCount; ++inIndex) {
        inPairs += (inUnits[inIndex] & 0xFC00) == 0xD800 && (inUnits[inIndex + 1] & 0xFC00) == 0xDC00;
    }
    return inPairs;
}

// CountUTF16Units from byte inIndex on: adds to ioContinuations and
// ioFourByteLeads and returns the bitwise or of the bytes.
inline unsigned int CountUTF16UnitsFrom(unsigned char const* inBytes, std::size_t inIndex, std::size_t inCount,
                                        std::size_t& ioContinuations, std::size_t& ioFourByteLeads) noexcept {
    unsigned int any = 0;
    for (; inIndex < inCount; ++inIndex) {
        any |= inBytes[inIndex];
        ioContinuations += (inBytes[inIndex] & 0xC0) == 0x80;
        ioFourByteLeads += inBytes[inIndex] >= 0xF0;
    }
    return any;
}

#if QUOREL_HAVE_SSE2

// Calls inStore(std::integral_constant<int, Lane>()) for each of the eight
// 16-bit lanes in turn, unrolled, so that the lane is a constant to the
// intrinsics that extract it.
template <class Store, int... Lanes>
inline void ForEachLane(Store const& inStore, std::integer_sequence<int, Lanes...>) noexcept {
    (inStore(std::integral_constant<int, Lanes>()), ...);
}

// Scatters eight pieces of output whose lengths are the 16-bit lanes of
// inLengths: lane k is stored at the sum of the lengths before it, by
// inStore(std::integral_constant<int, k>(), offsets).  The offsets come from
// a prefix sum, so that the stores do not wait on one another.  Returns the
// sum of all lengths.
template <class Store>
inline std::size_t ScatterLanes(__m128i inLengths, Store const& inStore) noexcept {
    __m128i ends = _mm_add_epi16(inLengths, _mm_slli_si128(inLengths, 2));
    ends = _mm_add_epi16(ends, _mm_slli_si128(ends, 4));
    ends = _mm_add_epi16(ends, _mm_slli_si128(ends, 8));
    __m128i const offsets = _mm_sub_epi16(ends, inLengths);
    ForEachLane([&](auto inLane) { inStore(inLane, offsets); }, std::make_integer_sequence<int, 8>());
    return static_cast<std::size_t>(_mm_extract_epi16(ends, 7));
}

// The sum of eight unsigned 16-bit lanes.
inline std::size_t SumLanes16(__m128i inLanes) noexcept {
    __m128i const zero = _mm_setzero_si128();
    __m128i const words = _mm_add_epi32(_mm_unpacklo_epi16(inLanes, zero), _mm_unpackhi_epi16(inLanes, zero));
    __m128i const pairsSum = _mm_add_epi32(words, _mm_srli_si128(words, 8));
    __m128i const total = _mm_add_epi32(pairsSum, _mm_srli_si128(pairsSum, 4));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(total));
}

/// Widens kBlock bytes into kBlock units (all of them are written) and returns
/// how many leading bytes are ASCII: kBlock if all are.
inline std::size_t WidenPrefix(unsigned char const* inBytes, unsigned short* outUnits) noexcept {
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inBytes));
    __m128i const zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits), _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits + 8), _mm_unpackhi_epi8(bytes, zero));
    unsigned int const high = static_cast<unsigned int>(_mm_movemask_epi8(bytes));
    return high == 0 ? kBlock : LowestBit(high);
}

/// Narrows kBlock units, all below 0x80, into kBlock bytes.
inline void NarrowBlock(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outBytes), _mm_packus_epi16(low, high));
}

/// The bitwise or of kBlock units: below 0x80 exactly when all are ASCII,
/// below 0x800 exactly when all are.  A quick first look at a block.
inline unsigned int OrOfUnits(unsigned short const* inUnits) noexcept {
    __m128i any = _mm_or_si128(_mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits)),
                               _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + 8)));
    any = _mm_or_si128(any, _mm_srli_si128(any, 8));
    any = _mm_or_si128(any, _mm_srli_si128(any, 4));
    any = _mm_or_si128(any, _mm_srli_si128(any, 2));
    return static_cast<unsigned int>(_mm_cvtsi128_si32(any)) & 0xFFFF;
}

/// The surrogates among kBlock units: bit k for unit k.
inline unsigned int SurrogateBits(unsigned short const* inUnits) noexcept {
    __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + 8));
    __m128i const surrogateBits = _mm_set1_epi16(static_cast<short>(0xF800));
    __m128i const surrogate = _mm_set1_epi16(static_cast<short>(0xD800));
    __m128i const lowSurrogates = _mm_cmpeq_epi16(_mm_and_si128(low, surrogateBits), surrogate);
    __m128i const highSurrogates = _mm_cmpeq_epi16(_mm_and_si128(high, surrogateBits), surrogate);
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(lowSurrogates, highSurrogates)));
}

// The units of one half of a block of ASCII and two-byte sequences: eight
// bytes and the byte behind each, widened to 16-bit lanes, and their lead
// flags.  A lead lane holds its sequence's unit, an ASCII lane its byte; a
// continuation lane holds its byte and is dropped by the caller.
inline __m128i TwoByteHalfUnits(__m128i inBytes, __m128i inNext, __m128i inLeads) noexcept {
    __m128i const pair = _mm_or_si128(_mm_slli_epi16(_mm_and_si128(inBytes, _mm_set1_epi16(0x1F)), 6),
                                      _mm_and_si128(inNext, _mm_set1_epi16(0x3F)));
    return _mm_or_si128(_mm_and_si128(inLeads, pair), _mm_andnot_si128(inLeads, inBytes));
}

// Stores one half's units without the continuation lanes (inTrails: all ones
// there), each at the offset of the units before it, so that the stores don't
// wait on one another; a continuation lane's store is overwritten by the next
// lane's (or lies behind the result).  Returns the number of units.
inline std::size_t ScatterTwoByteHalf(__m128i inUnits, __m128i inTrails, unsigned short* outUnits) noexcept {
    __m128i const kept = _mm_add_epi16(_mm_set1_epi16(1), inTrails);  // 0 for continuations
    return ScatterLanes(kept, [&](auto inLane, __m128i inOffsets) {
        constexpr int kLane = decltype(inLane)::value;
        outUnits[_mm_extract_epi16(inOffsets, kLane)] = static_cast<unsigned short>(_mm_extract_epi16(inUnits, kLane));
    });
}

/// A block of ASCII and complete two-byte sequences, loaded and checked: the
/// units of its two halves as 16-bit lanes, which lanes are continuations,
/// and whether a lead waits in the last place.
struct TwoByteBlock {
    __m128i lowUnits, highUnits;    // a continuation lane holds its byte
    __m128i lowTrails, highTrails;  // all ones in continuation lanes
    unsigned int trailBits;         // bit k: byte k is a continuation
    std::size_t leftLead;           // 1 when the last byte is a lead
};

/// Loads the kBlock bytes at inBytes (kBlock + 1 readable) into outBlock if
/// they are ASCII and complete two-byte sequences (C2-DF and a continuation
/// byte) only; a lead byte in the last place is left for the next block.
/// False for any other block.  Inlined into the SSE2 and SSSE3 decoders alike.
__attribute__((always_inline)) inline bool LoadOneOrTwoByteBlock(unsigned char const* inBytes,
                                                                 TwoByteBlock& outBlock) noexcept {
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inBytes));
    // As signed bytes, continuations 80-BF are -128 to -65 and leads C2-DF
    // are -62 to -33; ASCII is positive.
    __m128i const leads = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(-63)), _mm_cmplt_epi8(bytes, _mm_set1_epi8(-32)));
    __m128i const trails = _mm_cmplt_epi8(bytes, _mm_set1_epi8(-64));
    unsigned int const high = static_cast<unsigned int>(_mm_movemask_epi8(bytes));
    unsigned int const leadBits = static_cast<unsigned int>(_mm_movemask_epi8(leads));
    unsigned int const trailBits = static_cast<unsigned int>(_mm_movemask_epi8(trails));
    // Every non-ASCII byte is a lead or a continuation, and the continuations
    // are exactly the bytes behind the leads.
    if (high != (leadBits | trailBits) || trailBits != ((leadBits << 1) & kAllUnits)) {
        return false;
    }
    __m128i const next = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inBytes + 1));
    __m128i const zero = _mm_setzero_si128();
    outBlock.lowUnits =
        TwoByteHalfUnits(_mm_unpacklo_epi8(bytes, zero), _mm_unpacklo_epi8(next, zero), _mm_unpacklo_epi8(leads, leads));
    outBlock.highUnits =
        TwoByteHalfUnits(_mm_unpackhi_epi8(bytes, zero), _mm_unpackhi_epi8(next, zero), _mm_unpackhi_epi8(leads, leads));
    outBlock.lowTrails = _mm_unpacklo_epi8(trails, trails);
    outBlock.highTrails = _mm_unpackhi_epi8(trails, trails);
    outBlock.trailBits = trailBits;
    outBlock.leftLead = leadBits >> (kBlock - 1);
    return true;
}

/// Decodes the kBlock bytes at inBytes (kBlock + 1 readable) if they are ASCII
/// and complete two-byte sequences only (see LoadOneOrTwoByteBlock).  Writes
/// up to kBlock + 1 units at outUnits.  Returns the bytes used and sets
/// outCount to the units made, or returns 0 (nothing meaningful written) for
/// any other block.  This is the common block of Latin, Greek or Cyrillic text.
inline std::size_t DecodeOneOrTwoByteBlock(unsigned char const* inBytes, unsigned short* outUnits,
                                           std::size_t& outCount) noexcept {
    TwoByteBlock block;
    if (!LoadOneOrTwoByteBlock(inBytes, block)) {
        return 0;
    }
    std::size_t const firstHalf = ScatterTwoByteHalf(block.lowUnits, block.lowTrails, outUnits);
    outCount = firstHalf + ScatterTwoByteHalf(block.highUnits, block.highTrails, outUnits + firstHalf) - block.leftLead;
    return kBlock - block.leftLead;
}

/// Decodes the 15 bytes at inBytes (kBlock readable) if they are five complete
/// three-byte sequences (E0-EF and two continuation bytes, not overlong), the
/// common block of CJK text.  Writes five units at outUnits and returns true;
/// false (nothing meaningful written) for any other block.
inline bool DecodeThreeByteBlock(unsigned char const* inBytes, unsigned short* outUnits) noexcept {
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inBytes));
    __m128i const mask = _mm_setr_epi8(-16, -64, -64, -16, -64, -64, -16, -64, -64, -16, -64, -64, -16, -64, -64, 0);
    __m128i const pattern =
        _mm_setr_epi8(-32, -128, -128, -32, -128, -128, -32, -128, -128, -32, -128, -128, -32, -128, -128, 0);
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(bytes, mask), pattern)) != 0xFFFF) {
        return false;
    }
    unsigned int smallest = 0xFFFF;
    for (std::size_t k = 0; k < 5; ++k) {
        unsigned char const* const sequence = inBytes + 3 * k;
        unsigned int const unit = ((sequence[0] & 0x0Fu) << 12) | ((sequence[1] & 0x3Fu) << 6) | (sequence[2] & 0x3Fu);
        outUnits[k] = static_cast<unsigned short>(unit);
        smallest = unit < smallest ? unit : smallest;
    }
    return smallest >= 0x800;  // E0 80-9F would be overlong
}

/// Scans up to inLimit units for the first nul and returns its index (or
/// inLimit).  Sets outExtra to the UTF-8 bytes that the units before it need
/// beyond one each, as if every unit stood alone (one more from U+0080, one
/// more from U+0800), and outHighSurrogates to whether there is a high
/// surrogate among them, which may start a pair of four bytes, not six.
inline std::size_t ScanUTF16(unsigned short const* inUnits, std::size_t inLimit, std::size_t& outExtra,
                             bool& outHighSurrogates) noexcept {
    __m128i const zero = _mm_setzero_si128();
    __m128i const limit80 = _mm_set1_epi16(0x7F);
    __m128i const limit800 = _mm_set1_epi16(0x7FF);
    __m128i const surrogateBits = _mm_set1_epi16(static_cast<short>(0xFC00));
    __m128i const highSurrogate = _mm_set1_epi16(static_cast<short>(0xD800));
    std::size_t shortUnits = 0;  // units below the limits: each one byte less than three
    __m128i highLanes = zero;
    std::size_t i = 0;
    bool nul = false;
    while (!nul && i + 8 <= inLimit) {
        // Per-lane 16-bit counters take at most two a step: flush them in time.
        __m128i shortLanes = zero;
        std::size_t const stop = inLimit - i > 16384 * 8 ? i + 16384 * 8 : inLimit;
        for (; i + 8 <= stop; i += 8) {
            __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + i));
            if (_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)) != 0) {
                nul = true;
                break;
            }
            shortLanes = _mm_sub_epi16(shortLanes, _mm_cmpeq_epi16(_mm_subs_epu16(units, limit80), zero));
            shortLanes = _mm_sub_epi16(shortLanes, _mm_cmpeq_epi16(_mm_subs_epu16(units, limit800), zero));
            highLanes = _mm_or_si128(highLanes, _mm_cmpeq_epi16(_mm_and_si128(units, surrogateBits), highSurrogate));
        }
        shortUnits += SumLanes16(shortLanes);
    }
    outExtra = 2 * i - shortUnits;
    outHighSurrogates = _mm_movemask_epi8(highLanes) != 0;
    return ScanUTF16From(inUnits, i, inLimit, outExtra, outHighSurrogates);
}

/// Counts the surrogate pairs among inCount units: the high surrogates that
/// a low one directly follows.  (Pairs cannot overlap, as a pair starts with a
/// high and ends with a low surrogate.)
inline std::size_t CountSurrogatePairs(unsigned short const* inUnits, std::size_t inCount) noexcept {
    __m128i const zero = _mm_setzero_si128();
    __m128i const surrogateBits = _mm_set1_epi16(static_cast<short>(0xFC00));
    __m128i const high = _mm_set1_epi16(static_cast<short>(0xD800));
    __m128i const low = _mm_set1_epi16(static_cast<short>(0xDC00));
    std::size_t pairs = 0;
    std::size_t i = 0;
    // Each step also reads the unit behind its eight.
    while (i + 9 <= inCount) {
        __m128i pairLanes = zero;  // 16-bit counters: flushed before they overflow
        std::size_t const stop = inCount - i > 32767 * 8 + 1 ? i + 32767 * 8 + 1 : inCount;
        for (; i + 9 <= stop; i += 8) {
            __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + i));
            __m128i const next = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits + i + 1));
            __m128i const pair = _mm_and_si128(_mm_cmpeq_epi16(_mm_and_si128(units, surrogateBits), high),
                                               _mm_cmpeq_epi16(_mm_and_si128(next, surrogateBits), low));
            pairLanes = _mm_sub_epi16(pairLanes, pair);
        }
        pairs += SumLanes16(pairLanes);
    }
    return CountSurrogatePairsFrom(inUnits, i, inCount, pairs);
}

/// Counts the bytes that are not continuation bytes (0x80 to 0xBF) plus the
/// bytes 0xF0 and above: the number of UTF-16 units that valid UTF-8 gives,
/// and a bound on what any prefix of it gives.  Sets ioAllAscii to false if a
/// byte is 0x80 or above.
inline std::size_t CountUTF16Units(unsigned char const* inBytes, std::size_t inCount, bool& ioAllAscii) noexcept {
    // Per-lane byte counters, summed before they can overflow (255 blocks).
    __m128i const zero = _mm_setzero_si128();
    __m128i const continuationLimit = _mm_set1_epi8(-64);  // 0xC0 as a signed byte
    __m128i const fourByteFloor = _mm_set1_epi8(-17);      // 0xEF as a signed byte
    __m128i anyLanes = zero;
    std::size_t continuations = 0;
    std::size_t fourByteLeads = 0;
    std::size_t i = 0;
    while (i + kBlock <= inCount) {
        __m128i continuationLanes = zero;
        __m128i fourByteLanes = zero;
        std::size_t const stop = inCount - i > 255 * kBlock ? i + 255 * kBlock : inCount;
        for (; i + kBlock <= stop; i += kBlock) {
            __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inBytes + i));
            anyLanes = _mm_or_si128(anyLanes, bytes);
            // Compare masks are -1 per matching lane: subtracting them counts.
            continuationLanes =
                _mm_sub_epi8(continuationLanes, _mm_cmplt_epi8(bytes, continuationLimit));
            fourByteLanes = _mm_sub_epi8(
                fourByteLanes, _mm_and_si128(_mm_cmpgt_epi8(bytes, fourByteFloor), _mm_cmplt_epi8(bytes, zero)));
        }
        __m128i const sums = _mm_sad_epu8(continuationLanes, zero);
        __m128i const fours = _mm_sad_epu8(fourByteLanes, zero);
        continuations += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                         static_cast<std::size_t>(_mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
        fourByteLeads += static_cast<std::size_t>(_mm_cvtsi128_si32(fours)) +
                         static_cast<std::size_t>(_mm_cvtsi128_si32(_mm_srli_si128(fours, 8)));
    }
    unsigned int const any = CountUTF16UnitsFrom(inBytes, i, inCount, continuations, fourByteLeads);
    if (_mm_movemask_epi8(anyLanes) != 0 || any >= 0x80) {
        ioAllAscii = false;
    }
    return inCount - continuations + fourByteLeads;
}

// The UTF-8 sequences of eight units below U+0800, each in its 16-bit lane:
// the lead byte low and the continuation byte (if any) high.  Sets outTwo to
// all ones in the lanes of two-byte sequences.
inline __m128i SequencesBelow800(unsigned short const* inUnits, __m128i& outTwo) noexcept {
    __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const two = _mm_cmpgt_epi16(units, _mm_set1_epi16(0x7F));
    __m128i const lead = _mm_or_si128(_mm_and_si128(two, _mm_or_si128(_mm_srli_epi16(units, 6), _mm_set1_epi16(0xC0))),
                                      _mm_andnot_si128(two, units));
    __m128i const trail = _mm_or_si128(_mm_and_si128(units, _mm_set1_epi16(0x3F)), _mm_set1_epi16(0x80));
    outTwo = two;
    return _mm_or_si128(lead, _mm_slli_epi16(trail, 8));
}

// The UTF-8 sequences of eight units that are no surrogates, byte by byte in
// 16-bit lanes, and which units are ASCII and which below U+0800 (all ones in
// their lanes).
struct BmpSequences {
    __m128i mAscii;
    __m128i mBelow800;
    __m128i mFirstTwo;  // the first byte low, the second (if any) high
    __m128i mLast;      // the last byte of the sequences of two and three bytes
    __m128i mThird;     // the third byte, 0 for the shorter sequences
};

inline BmpSequences SequencesOfBmpUnits(unsigned short const* inUnits) noexcept {
    __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const zero = _mm_setzero_si128();
    __m128i const ascii = _mm_cmpeq_epi16(_mm_subs_epu16(units, _mm_set1_epi16(0x7F)), zero);
    __m128i const below800 = _mm_cmpeq_epi16(_mm_subs_epu16(units, _mm_set1_epi16(0x7FF)), zero);
    __m128i const two = _mm_andnot_si128(ascii, below800);
    __m128i const six = _mm_srli_epi16(units, 6);
    __m128i const lead2 = _mm_or_si128(six, _mm_set1_epi16(0xC0));
    __m128i const lead3 = _mm_or_si128(_mm_srli_epi16(units, 12), _mm_set1_epi16(0xE0));
    __m128i const middle3 = _mm_or_si128(_mm_and_si128(six, _mm_set1_epi16(0x3F)), _mm_set1_epi16(0x80));
    __m128i const last = _mm_or_si128(_mm_and_si128(units, _mm_set1_epi16(0x3F)), _mm_set1_epi16(0x80));
    __m128i const first = _mm_or_si128(_mm_or_si128(_mm_and_si128(ascii, units), _mm_and_si128(two, lead2)),
                                       _mm_andnot_si128(below800, lead3));
    __m128i const second = _mm_or_si128(_mm_and_si128(two, last), _mm_andnot_si128(below800, middle3));
    __m128i const third = _mm_andnot_si128(below800, last);
    return {ascii, below800, _mm_or_si128(first, _mm_slli_epi16(second, 8)), last, third};
}

/// Encodes kHalfBlock units below U+0800 as UTF-8 at outBytes and returns the
/// number of bytes (one or two a unit).  May write up to kBlock bytes.
///
/// The sequences of all units are formed side by side, each as a 16-bit lead
/// and continuation byte (the lead alone for ASCII), and a prefix sum of their
/// lengths gives each its offset, so that the stores do not wait on one another.
inline std::size_t EncodeBelow800(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    __m128i two;
    __m128i const sequences = SequencesBelow800(inUnits, two);
    return ScatterLanes(_mm_sub_epi16(_mm_set1_epi16(1), two), [&](auto inLane, __m128i inOffsets) {
        constexpr int kLane = decltype(inLane)::value;
        std::uint16_t const sequence = static_cast<std::uint16_t>(_mm_extract_epi16(sequences, kLane));
        std::memcpy(outBytes + _mm_extract_epi16(inOffsets, kLane), &sequence, sizeof sequence);
    });
}

/// Encodes kHalfBlock units that are no surrogates as UTF-8 at outBytes and
/// returns the number of bytes (one to three a unit).  May write up to
/// 3 * kHalfBlock + 1 bytes.  The way of EncodeBelow800, for text that mixes
/// all three lengths: each unit stores its first two bytes and its third,
/// which the next unit overwrites when the sequence is shorter.
inline std::size_t EncodeBmpHalf(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    BmpSequences const sequences = SequencesOfBmpUnits(inUnits);
    // Lengths: 3, less one for below U+0800, less one more for ASCII.
    __m128i const lengths =
        _mm_add_epi16(_mm_add_epi16(_mm_set1_epi16(3), sequences.mAscii), sequences.mBelow800);
    return ScatterLanes(lengths, [&](auto inLane, __m128i inOffsets) {
        constexpr int kLane = decltype(inLane)::value;
        unsigned char* const out = outBytes + _mm_extract_epi16(inOffsets, kLane);
        std::uint16_t const firstTwo = static_cast<std::uint16_t>(_mm_extract_epi16(sequences.mFirstTwo, kLane));
        std::memcpy(out, &firstTwo, sizeof firstTwo);
        out[2] = static_cast<unsigned char>(_mm_extract_epi16(sequences.mLast, kLane));
    });
}

// All ones in the 16-bit lanes from inFirst to inLast (small positive values).
inline __m128i InRange(__m128i inUnits, unsigned short inFirst, unsigned short inLast) noexcept {
    return _mm_andnot_si128(_mm_cmplt_epi16(inUnits, _mm_set1_epi16(static_cast<short>(inFirst))),
                            _mm_cmplt_epi16(inUnits, _mm_set1_epi16(static_cast<short>(inLast + 1))));
}

/// Maps kCaseBlock units if all are ASCII, adding inDelta to the units from
/// inFirst to inLast; false (nothing written) if a unit is 0x80 or above.
inline bool MapCaseBlock(unsigned short const* inUnits, unsigned short* outUnits, unsigned short inFirst,
                         unsigned short inLast, short inDelta) noexcept {
    __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const zero = _mm_setzero_si128();
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_subs_epu16(units, _mm_set1_epi16(0x7F)), zero)) != 0xFFFF) {
        return false;
    }
    // Below 0x80 the signed comparisons are exact.
    __m128i const mapped = _mm_add_epi16(units, _mm_and_si128(InRange(units, inFirst, inLast), _mm_set1_epi16(inDelta)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits), mapped);
    return true;
}

/// Maps kCaseBlock units if all are below U+0100 and none is one of
/// inRule.mRefused, adding inRule.mDelta to the units in one of its two ranges
/// but for inRule.mSkip; false (nothing written) otherwise.
inline bool MapLatin1Block(unsigned short const* inUnits, unsigned short* outUnits,
                           Latin1CaseRule const& inRule) noexcept {
    __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    __m128i const zero = _mm_setzero_si128();
    __m128i refused = _mm_cmpgt_epi16(units, _mm_set1_epi16(0xFF));  // signed: also catches 0x8000 and above
    refused = _mm_or_si128(refused, _mm_cmplt_epi16(units, zero));
    for (unsigned short refusedUnit : inRule.mRefused) {
        refused = _mm_or_si128(refused, _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(refusedUnit))));
    }
    if (_mm_movemask_epi8(refused) != 0) {
        return false;
    }
    // Below 0x100 the signed comparisons are exact.
    __m128i const inFirst = InRange(units, inRule.mFirst[0], inRule.mLast[0]);
    __m128i const inSecond = InRange(units, inRule.mFirst[1], inRule.mLast[1]);
    __m128i const skip = _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(inRule.mSkip)));
    __m128i const shifted = _mm_andnot_si128(skip, _mm_or_si128(inFirst, inSecond));
    __m128i const mapped = _mm_add_epi16(units, _mm_and_si128(shifted, _mm_set1_epi16(inRule.mDelta)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits), mapped);
    return true;
}

/// Copies kCaseBlock units if all lie from inFirst to inLast; false (nothing
/// written) if not.
inline bool CopyBlockInRange(unsigned short const* inUnits, unsigned short* outUnits, unsigned short inFirst,
                             unsigned short inLast) noexcept {
    __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(inUnits));
    // Shifted by inFirst (with wrap-around), the range starts at 0, and the
    // saturating subtraction leaves 0 exactly for the units within it.
    __m128i const shifted = _mm_sub_epi16(units, _mm_set1_epi16(static_cast<short>(inFirst)));
    __m128i const beyond = _mm_subs_epu16(shifted, _mm_set1_epi16(static_cast<short>(inLast - inFirst)));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) != 0xFFFF) {
        return false;
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits), units);
    return true;
}

#if QUOREL_HAVE_SSSE3_FUNCTIONS
/// Byte shuffles that compact the bytes in use out of a vector, one for each
/// of 256 indices, and the length of each result.
struct CompactionTable {
    alignas(16) unsigned char mShuffle[256][16];
    unsigned char mLength[256];
};

// A table of shuffles over inLanes lanes of inLaneBytes bytes each: for each
// of the 256 indices, the one that keeps the first inKept(index, lane) bytes
// of every lane, side by side, and zeroes the rest.
template <class Kept>
constexpr CompactionTable MakeCompactionTable(unsigned int inLanes, unsigned int inLaneBytes, Kept inKept) {
    CompactionTable table{};
    for (unsigned int index = 0; index < 256; ++index) {
        unsigned int length = 0;
        for (unsigned int lane = 0; lane < inLanes; ++lane) {
            for (unsigned int byte = 0; byte < inKept(index, lane); ++byte) {
                table.mShuffle[index][length++] = static_cast<unsigned char>(inLaneBytes * lane + byte);
            }
        }
        table.mLength[index] = static_cast<unsigned char>(length);
        for (unsigned int rest = length; rest < 16; ++rest) {
            table.mShuffle[index][rest] = 0x80;  // a zero byte
        }
    }
    return table;
}

/// For each set of two-byte units among eight (bit k for unit k), the byte
/// shuffle that keeps the lead byte of every unit and the second byte of the
/// two-byte ones, and the length of the result.
inline constexpr CompactionTable kCompactionTable = MakeCompactionTable(
    8, 2, [](unsigned int inTwoBytes, unsigned int inUnit) { return 1 + ((inTwoBytes >> inUnit) & 1u); });

/// For each set of kept units among eight (bit k for unit k), the byte
/// shuffle that moves them side by side, and the length in bytes.
inline constexpr CompactionTable kUnitTable = MakeCompactionTable(
    8, 2, [](unsigned int inKept, unsigned int inUnit) { return 2 * ((inKept >> inUnit) & 1u); });

// Stores the units of one half without its continuation lanes (bit k of
// inTrailBits), compacted by one shuffle; writes eight units.  Returns the
// number of units.
__attribute__((target("ssse3"))) inline std::size_t CompactTwoByteHalfSsse3(__m128i inUnits, unsigned int inTrailBits,
                                                                           unsigned short* outUnits) noexcept {
    unsigned int const kept = ~inTrailBits & 0xFFu;
    __m128i const shuffle = _mm_load_si128(reinterpret_cast<__m128i const*>(kUnitTable.mShuffle[kept]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outUnits), _mm_shuffle_epi8(inUnits, shuffle));
    return kUnitTable.mLength[kept] / 2;
}

/// DecodeOneOrTwoByteBlock with SSSE3.  Only for processors that have SSSE3.
__attribute__((target("ssse3"))) inline std::size_t DecodeOneOrTwoByteBlockSsse3(unsigned char const* inBytes,
                                                                                 unsigned short* outUnits,
                                                                                 std::size_t& outCount) noexcept {
    TwoByteBlock block;
    if (!LoadOneOrTwoByteBlock(inBytes, block)) {
        return 0;
    }
    std::size_t const firstHalf = CompactTwoByteHalfSsse3(block.lowUnits, block.trailBits & 0xFFu, outUnits);
    outCount = firstHalf + CompactTwoByteHalfSsse3(block.highUnits, block.trailBits >> kHalfBlock, outUnits + firstHalf) -
               block.leftLead;
    return kBlock - block.leftLead;
}

// EncodeBelow800 with SSSE3: the same sequences, compacted by one shuffle
// instead of stored one by one.  Writes 16 bytes.
__attribute__((target("ssse3"))) inline std::size_t EncodeBelow800HalfSsse3(unsigned short const* inUnits,
                                                                            unsigned char* outBytes) noexcept {
    __m128i two;
    __m128i const sequences = SequencesBelow800(inUnits, two);
    unsigned int const twoBytes =
        static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(two, _mm_setzero_si128()))) & 0xFF;
    __m128i const shuffle = _mm_load_si128(reinterpret_cast<__m128i const*>(kCompactionTable.mShuffle[twoBytes]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outBytes), _mm_shuffle_epi8(sequences, shuffle));
    return kCompactionTable.mLength[twoBytes];
}

/// Encodes kBlock units below U+0800 as UTF-8 at outBytes with SSSE3 and
/// returns the number of bytes.  May write up to 2 * kBlock bytes.  Only for
/// processors that have SSSE3.
__attribute__((target("ssse3"))) inline std::size_t EncodeBelow800BlockSsse3(unsigned short const* inUnits,
                                                                             unsigned char* outBytes) noexcept {
    std::size_t const first = EncodeBelow800HalfSsse3(inUnits, outBytes);
    return first + EncodeBelow800HalfSsse3(inUnits + kHalfBlock, outBytes + first);
}

/// For each group of four units that are no surrogates, the shuffle that
/// keeps the bytes of their sequences out of four 32-bit lanes (first, second
/// and third byte of each), and the length of the result.  The index has a bit
/// for each unit that is not ASCII (bits 0-3) and one for each that takes
/// three bytes (bits 4-7).
inline constexpr CompactionTable kSequenceTable =
    MakeCompactionTable(4, 4, [](unsigned int inIndex, unsigned int inUnit) {
        return 1 + ((inIndex >> inUnit) & 1u) + ((inIndex >> (inUnit + 4)) & 1u);
    });

// Stores the sequences in the four 32-bit lanes of inSequences, compacted by
// the shuffle for inIndex (see kSequenceTable).  Writes 16 bytes; returns
// the length.
__attribute__((target("ssse3"))) inline std::size_t StoreSequencesSsse3(__m128i inSequences, unsigned int inIndex,
                                                                        unsigned char* outBytes) noexcept {
    __m128i const shuffle = _mm_load_si128(reinterpret_cast<__m128i const*>(kSequenceTable.mShuffle[inIndex]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(outBytes), _mm_shuffle_epi8(inSequences, shuffle));
    return kSequenceTable.mLength[inIndex];
}

// EncodeBmpHalf with SSSE3: the sequences of each unit side by side in a
// 32-bit lane, compacted by a shuffle per four units.  Writes up to 3 *
// kHalfBlock + 4 bytes.
__attribute__((target("ssse3"))) inline std::size_t EncodeBmpHalfSsse3(unsigned short const* inUnits,
                                                                       unsigned char* outBytes) noexcept {
    BmpSequences const sequences = SequencesOfBmpUnits(inUnits);
    __m128i const zero = _mm_setzero_si128();
    __m128i const third = sequences.mThird;
    __m128i const firstTwo = sequences.mFirstTwo;
    unsigned int const notAscii =
        ~static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(sequences.mAscii, zero))) & 0xFF;
    unsigned int const three =
        ~static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(sequences.mBelow800, zero))) & 0xFF;
    std::size_t const low = StoreSequencesSsse3(_mm_unpacklo_epi16(firstTwo, third),
                                                (notAscii & 0xF) | ((three & 0xF) << 4), outBytes);
    return low + StoreSequencesSsse3(_mm_unpackhi_epi16(firstTwo, third), (notAscii >> 4) | (three & 0xF0),
                                     outBytes + low);
}

/// Encodes kBlock units that are no surrogates as UTF-8 at outBytes with
/// SSSE3 and returns the number of bytes.  May write up to 3 * kBlock + 4
/// bytes.  Only for processors that have SSSE3.
__attribute__((target("ssse3"))) inline std::size_t EncodeBmpBlockSsse3(unsigned short const* inUnits,
                                                                        unsigned char* outBytes) noexcept {
    std::size_t const first = EncodeBmpHalfSsse3(inUnits, outBytes);
    return first + EncodeBmpHalfSsse3(inUnits + kHalfBlock, outBytes + first);
}

/// Whether the processor has SSSE3.
inline bool HaveSsse3() noexcept {
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3") != 0;
}
#endif

#else  // portable forms

inline std::size_t WidenPrefix(unsigned char const* inBytes, unsigned short* outUnits) noexcept {
    std::size_t prefix = kBlock;
    for (std::size_t i = 0; i < kBlock; ++i) {
        outUnits[i] = inBytes[i];
        if (inBytes[i] >= 0x80 && prefix == kBlock) {
            prefix = i;
        }
    }
    return prefix;
}

inline void NarrowBlock(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    for (std::size_t i = 0; i < kBlock; ++i) {
        outBytes[i] = static_cast<unsigned char>(inUnits[i]);
    }
}

inline unsigned int OrOfUnits(unsigned short const* inUnits) noexcept {
    unsigned int any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        any |= inUnits[i];
    }
    return any;
}

inline unsigned int SurrogateBits(unsigned short const* inUnits) noexcept {
    unsigned int bits = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        bits |= (inUnits[i] & 0xF800) == 0xD800 ? 1u << i : 0;
    }
    return bits;
}

// Without SSE2 the block decoders decline and the sequences go one by one.
inline std::size_t DecodeOneOrTwoByteBlock(unsigned char const*, unsigned short*, std::size_t&) noexcept {
    return 0;
}

inline bool DecodeThreeByteBlock(unsigned char const*, unsigned short*) noexcept { return false; }

inline std::size_t ScanUTF16(unsigned short const* inUnits, std::size_t inLimit, std::size_t& outExtra,
                             bool& outHighSurrogates) noexcept {
    outExtra = 0;
    outHighSurrogates = false;
    return ScanUTF16From(inUnits, 0, inLimit, outExtra, outHighSurrogates);
}

inline std::size_t CountSurrogatePairs(unsigned short const* inUnits, std::size_t inCount) noexcept {
    return CountSurrogatePairsFrom(inUnits, 0, inCount, 0);
}

inline std::size_t CountUTF16Units(unsigned char const* inBytes, std::size_t inCount, bool& ioAllAscii) noexcept {
    std::size_t continuations = 0;
    std::size_t fourByteLeads = 0;
    if (CountUTF16UnitsFrom(inBytes, 0, inCount, continuations, fourByteLeads) >= 0x80) {
        ioAllAscii = false;
    }
    return inCount - continuations + fourByteLeads;
}

inline bool MapCaseBlock(unsigned short const* inUnits, unsigned short* outUnits, unsigned short inFirst,
                         unsigned short inLast, short inDelta) noexcept {
    unsigned short any = 0;
    for (std::size_t i = 0; i < kCaseBlock; ++i) {
        any |= inUnits[i];
    }
    if (any >= 0x80) {
        return false;
    }
    for (std::size_t i = 0; i < kCaseBlock; ++i) {
        unsigned short const unit = inUnits[i];
        outUnits[i] = (unit >= inFirst && unit <= inLast) ? static_cast<unsigned short>(unit + inDelta) : unit;
    }
    return true;
}

inline std::size_t EncodeBmpHalf(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    unsigned char* out = outBytes;
    for (std::size_t i = 0; i < kHalfBlock; ++i) {
        unsigned int const unit = inUnits[i];
        if (unit < 0x80) {
            *out++ = static_cast<unsigned char>(unit);
        } else if (unit < 0x800) {
            *out++ = static_cast<unsigned char>(0xC0 | (unit >> 6));
            *out++ = static_cast<unsigned char>(0x80 | (unit & 0x3F));
        } else {
            *out++ = static_cast<unsigned char>(0xE0 | (unit >> 12));
            *out++ = static_cast<unsigned char>(0x80 | ((unit >> 6) & 0x3F));
            *out++ = static_cast<unsigned char>(0x80 | (unit & 0x3F));
        }
    }
    return static_cast<std::size_t>(out - outBytes);
}

// Units below U+0800 are no surrogates: the general encoder serves.
inline std::size_t EncodeBelow800(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    return EncodeBmpHalf(inUnits, outBytes);
}

inline bool MapLatin1Block(unsigned short const*, unsigned short*, Latin1CaseRule const&) noexcept { return false; }

inline bool CopyBlockInRange(unsigned short const* inUnits, unsigned short* outUnits, unsigned short inFirst,
                             unsigned short inLast) noexcept {
    for (std::size_t i = 0; i < kCaseBlock; ++i) {
        if (inUnits[i] < inFirst || inUnits[i] > inLast) {
            return false;
        }
    }
    for (std::size_t i = 0; i < kCaseBlock; ++i) {
        outUnits[i] = inUnits[i];
    }
    return true;
}

#endif

}  // namespace ascii
}  // namespace utility
}  // namespace quorel

#endif
