#include <quorel/utility/UnicodeConversion.h>

#include "AsciiBlocks.h"

#include <cstdint>
#include <cstring>

namespace quorel {
namespace utility {

namespace {

constexpr bool IsContinuation(unsigned int inByte) noexcept { return (inByte & 0xC0) == 0x80; }

// Decodes the sequence at ioIn, whose first byte is 0x80 or above, into ioOut
// and advances both.  Returns false, with nothing advanced, at an illegal or
// cut-off sequence.
//
// The table of legal first and second bytes comes down to three rules: the
// first byte gives the length (C2-DF two, E0-EF three, F0-F4 four), every other
// byte is a continuation byte, and the code point is neither overlong nor
// above U+10FFFF.  The narrower second-byte ranges after E0, F0 and F4 are
// exactly those last two tests; C0 and C1 could only start overlong forms.
// Encoded surrogates (ED A0-BF) are legal here and give that unit.
inline bool DecodeSequence(unsigned char const*& ioIn, unsigned char const* inEnd, unsigned short*& ioOut) noexcept {
    unsigned char const* const in = ioIn;
    unsigned int const lead = in[0];
    std::size_t const left = static_cast<std::size_t>(inEnd - in);
    if (lead < 0xE0) {
        if (lead < 0xC2 || left < 2 || !IsContinuation(in[1])) {
            return false;
        }
        *ioOut++ = static_cast<unsigned short>(((lead & 0x1F) << 6) | (in[1] & 0x3F));
        ioIn += 2;
        return true;
    }
    if (lead < 0xF0) {
        if (left < 3 || !IsContinuation(in[1]) || !IsContinuation(in[2])) {
            return false;
        }
        unsigned int const unit = ((lead & 0x0F) << 12) | ((in[1] & 0x3Fu) << 6) | (in[2] & 0x3Fu);
        if (unit < 0x800) {
            return false;
        }
        *ioOut++ = static_cast<unsigned short>(unit);
        ioIn += 3;
        return true;
    }
    if (lead > 0xF4 || left < 4 || !IsContinuation(in[1]) || !IsContinuation(in[2]) || !IsContinuation(in[3])) {
        return false;
    }
    std::uint32_t const codePoint = ((lead & 0x07u) << 18) | ((in[1] & 0x3Fu) << 12) | ((in[2] & 0x3Fu) << 6) |
                                    (in[3] & 0x3Fu);
    if (codePoint < 0x10000 || codePoint > 0x10FFFF) {
        return false;
    }
    std::uint32_t const offset = codePoint - 0x10000;
    ioOut[0] = static_cast<unsigned short>(0xD800 + (offset >> 10));
    ioOut[1] = static_cast<unsigned short>(0xDC00 + (offset & 0x3FF));
    ioOut += 2;
    ioIn += 4;
    return true;
}

// Decodes blocks of five three-byte sequences at ioIn for as long as there
// are such blocks and room for them (a block reads one more block's width);
// returns whether there was at least one.
inline bool DecodeThreeByteBlocks(unsigned char const*& ioIn, unsigned char const* inEnd, unsigned short*& ioOut,
                                  unsigned short const* inOutEnd) noexcept {
    unsigned char const* in = ioIn;
    unsigned short* out = ioOut;
    while (static_cast<std::size_t>(inEnd - in) > ascii::kBlock && inOutEnd - out >= 5 &&
           ascii::DecodeThreeByteBlock(in, out)) {
        in += 15;
        out += 5;
    }
    bool const any = in != ioIn;
    ioIn = in;
    ioOut = out;
    return any;
}

// The decoder of blocks of ASCII and two-byte sequences that suits the
// processor: with SSSE3 each half block is compacted by one shuffle.  Chosen
// at the first conversion.
using TwoByteBlockDecoder = std::size_t (*)(unsigned char const*, unsigned short*, std::size_t&) noexcept;

TwoByteBlockDecoder ChooseTwoByteBlockDecoder() noexcept {
#if QUOREL_HAVE_SSSE3_FUNCTIONS
    if (ascii::HaveSsse3()) {
        return ascii::DecodeOneOrTwoByteBlockSsse3;
    }
#endif
    return ascii::DecodeOneOrTwoByteBlock;
}

TwoByteBlockDecoder TwoByteBlocks() noexcept {
    static TwoByteBlockDecoder const sDecoder = ChooseTwoByteBlockDecoder();
    return sDecoder;
}

// Decodes inCount bytes into outUnits and returns the number of units written;
// stops at the first illegal or cut-off sequence.  outUnits has room for
// inCapacity units, which must be at least what the bytes decode to (their
// count, or ascii::CountUTF16Units).
//
// Blocks of one kind (ASCII; ASCII with two-byte sequences, as Latin, Greek or
// Cyrillic; three-byte sequences, as CJK) go a block at a time.  Other text
// goes by its ASCII prefix and then sequence by sequence up to the next ASCII
// byte; keeping each kind in its own loop keeps the branches predictable.
std::size_t DecodeUTF8(unsigned char const* inBytes, std::size_t inCount, unsigned short* outUnits,
                       std::size_t inCapacity) noexcept {
    unsigned char const* in = inBytes;
    unsigned char const* const end = inBytes + inCount;
    unsigned short* out = outUnits;
    unsigned short* const outEnd = outUnits + inCapacity;
    TwoByteBlockDecoder const decodeTwoByteBlock = TwoByteBlocks();
    while (in != end) {
        // The block decoders read one byte and write one unit beyond a block.
        if (static_cast<std::size_t>(end - in) > ascii::kBlock &&
            static_cast<std::size_t>(outEnd - out) > ascii::kBlock) {
            std::size_t const run = ascii::WidenPrefix(in, out);
            if (run == ascii::kBlock) {
                in += run;
                out += run;
                continue;
            }
            if (run == 0 && *in >= 0xE0) {
                if (DecodeThreeByteBlocks(in, end, out, outEnd)) {
                    continue;
                }
            } else {
                std::size_t units = 0;
                if (std::size_t const used = decodeTwoByteBlock(in, out, units)) {
                    in += used;
                    out += units;
                    continue;
                }
            }
            in += run;
            out += run;
        } else {
            while (in != end && *in < 0x80) {
                *out++ = *in++;
            }
            if (in == end) {
                break;
            }
        }
        do {
            if (!DecodeSequence(in, end, out)) {
                return static_cast<std::size_t>(out - outUnits);
            }
        } while (in != end && *in >= 0x80);
    }
    return static_cast<std::size_t>(out - outUnits);
}

constexpr bool IsHighSurrogate(unsigned int inUnit) noexcept { return inUnit >= 0xD800 && inUnit <= 0xDBFF; }
constexpr bool IsLowSurrogate(unsigned int inUnit) noexcept { return inUnit >= 0xDC00 && inUnit <= 0xDFFF; }
constexpr bool IsSurrogate(unsigned int inUnit) noexcept { return inUnit >= 0xD800 && inUnit <= 0xDFFF; }

// Whether the units at inIndex and behind it form a surrogate pair within inCount.
inline bool IsPairAt(unsigned short const* inUnits, std::size_t inIndex, std::size_t inCount) noexcept {
    return IsHighSurrogate(inUnits[inIndex]) && inIndex + 1 < inCount && IsLowSurrogate(inUnits[inIndex + 1]);
}

// Encodes the unit (or pair) at ioIndex into outBytes (room for 4), advances
// ioIndex past what it used and returns the number of bytes written.
inline std::size_t EncodeOne(unsigned short const* inUnits, std::size_t& ioIndex, std::size_t inCount,
                             unsigned char* outBytes) noexcept {
    unsigned int const unit = inUnits[ioIndex];
    if (unit < 0x80) {
        outBytes[0] = static_cast<unsigned char>(unit);
        ++ioIndex;
        return 1;
    }
    if (unit < 0x800) {
        outBytes[0] = static_cast<unsigned char>(0xC0 | (unit >> 6));
        outBytes[1] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
        ++ioIndex;
        return 2;
    }
    if (IsPairAt(inUnits, ioIndex, inCount)) {
        std::uint32_t const codePoint = 0x10000 + ((unit - 0xD800u) << 10) + (inUnits[ioIndex + 1] - 0xDC00u);
        outBytes[0] = static_cast<unsigned char>(0xF0 | (codePoint >> 18));
        outBytes[1] = static_cast<unsigned char>(0x80 | ((codePoint >> 12) & 0x3F));
        outBytes[2] = static_cast<unsigned char>(0x80 | ((codePoint >> 6) & 0x3F));
        outBytes[3] = static_cast<unsigned char>(0x80 | (codePoint & 0x3F));
        ioIndex += 2;
        return 4;
    }
    outBytes[0] = static_cast<unsigned char>(0xE0 | (unit >> 12));
    outBytes[1] = static_cast<unsigned char>(0x80 | ((unit >> 6) & 0x3F));
    outBytes[2] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
    ++ioIndex;
    return 3;
}

// Writes the three-byte sequence of inUnit (U+0800 to U+FFFF) at outBytes,
// and one byte of no meaning behind it where the byte order allows one store
// instead of three.
inline void StoreThreeBytes(std::uint32_t inUnit, unsigned char* outBytes) noexcept {
    std::uint32_t const lead = 0xE0 | (inUnit >> 12);
    std::uint32_t const middle = 0x80 | ((inUnit >> 6) & 0x3F);
    std::uint32_t const last = 0x80 | (inUnit & 0x3F);
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    std::uint32_t const word = lead | (middle << 8) | (last << 16);
    std::memcpy(outBytes, &word, sizeof word);
#else
    outBytes[0] = static_cast<unsigned char>(lead);
    outBytes[1] = static_cast<unsigned char>(middle);
    outBytes[2] = static_cast<unsigned char>(last);
#endif
}

// Encodes the units from ioIndex up to inStop (and the low half of a pair
// that starts before inStop) into ioOut, one by one.  Each length has its own
// short branch.
inline void EncodeEach(unsigned short const* inUnits, std::size_t& ioIndex, std::size_t inStop,
                       std::size_t inCount, unsigned char*& ioOut) noexcept {
    std::size_t i = ioIndex;
    unsigned char* out = ioOut;
    while (i < inStop) {
        std::uint32_t const unit = inUnits[i];
        if (unit < 0x80) {
            *out++ = static_cast<unsigned char>(unit);
            ++i;
        } else if (unit < 0x800) {
            out[0] = static_cast<unsigned char>(0xC0 | (unit >> 6));
            out[1] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
            out += 2;
            ++i;
        } else if (!IsSurrogate(unit)) {
            StoreThreeBytes(unit, out);
            out += 3;
            ++i;
        } else {
            out += EncodeOne(inUnits, i, inCount, out);
        }
    }
    ioIndex = i;
    ioOut = out;
}

// Encodes ascii::kBlock units below U+0800; may write up to 2 * ascii::kBlock
// bytes.  Returns the number of bytes.
std::size_t EncodeBelow800Block(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    std::size_t const first = ascii::EncodeBelow800(inUnits, outBytes);
    return first + ascii::EncodeBelow800(inUnits + ascii::kHalfBlock, outBytes + first);
}

// Encodes ascii::kBlock units that are no surrogates; may write up to
// 3 * ascii::kBlock + 4 bytes.  Returns the number of bytes.
std::size_t EncodeBmpBlock(unsigned short const* inUnits, unsigned char* outBytes) noexcept {
    std::size_t const first = ascii::EncodeBmpHalf(inUnits, outBytes);
    return first + ascii::EncodeBmpHalf(inUnits + ascii::kHalfBlock, outBytes + first);
}

// The block encoders that suit the processor: with SSSE3 the sequences are
// compacted by shuffles, which is several times faster.
struct BlockEncoders {
    using Encoder = std::size_t (*)(unsigned short const*, unsigned char*) noexcept;
    Encoder mBelow800Block;  // ascii::kBlock units below U+0800
    Encoder mBmpBlock;       // ascii::kBlock units without surrogates
    Encoder mBmpHalf;        // ascii::kHalfBlock units without surrogates
};

BlockEncoders ChooseBlockEncoders() noexcept {
#if QUOREL_HAVE_SSSE3_FUNCTIONS
    if (ascii::HaveSsse3()) {
        return {ascii::EncodeBelow800BlockSsse3, ascii::EncodeBmpBlockSsse3, ascii::EncodeBmpHalfSsse3};
    }
#endif
    return {EncodeBelow800Block, EncodeBmpBlock, ascii::EncodeBmpHalf};
}

// Chosen at the first conversion (a function-local static, so that
// conversions made while other static objects are constructed find it too).
BlockEncoders const& Encoders() noexcept {
    static BlockEncoders const sEncoders = ChooseBlockEncoders();
    return sEncoders;
}

// Encodes inCount nul-free units into outBytes, which ends at outEnd and has
// at least the room of their UTF-8 form.  Returns the end of the bytes.
//
// Blocks of one kind of unit (ASCII; below U+0800, as Latin, Greek or Cyrillic
// mixed with ASCII; three bytes, as CJK) and half blocks without surrogates go
// without a branch on the data; only half blocks with surrogates (emoji and
// the like) go unit by unit.
unsigned char* EncodeUnits(unsigned short const* inUnits, std::size_t inCount, unsigned char* outBytes,
                           unsigned char* outEnd) noexcept {
    // A block of units gives at most three bytes each, one more if it ends with
    // the high half of a pair, and the block encoders may write up to four
    // bytes beyond what they give.
    constexpr std::size_t kBlockRoom = 3 * ascii::kBlock + 4;
    BlockEncoders const& encoders = Encoders();
    unsigned char* out = outBytes;
    std::size_t i = 0;
    while (inCount - i >= ascii::kBlock && static_cast<std::size_t>(outEnd - out) >= kBlockRoom) {
        unsigned short const* const block = inUnits + i;
        unsigned int const any = ascii::OrOfUnits(block);
        if (any < 0x80) {
            ascii::NarrowBlock(block, out);
            i += ascii::kBlock;
            out += ascii::kBlock;
            continue;
        }
        if (any < 0x800) {
            out += encoders.mBelow800Block(block, out);
            i += ascii::kBlock;
            continue;
        }
        unsigned int const surrogates = ascii::SurrogateBits(block);
        if (surrogates == 0) {
            out += encoders.mBmpBlock(block, out);
            i += ascii::kBlock;
        } else if ((surrogates & ascii::kFirstHalf) == 0) {
            out += encoders.mBmpHalf(block, out);
            i += ascii::kHalfBlock;
        } else {
            EncodeEach(inUnits, i, i + ascii::kHalfBlock, inCount, out);
        }
    }
    // The last few units, with exact writes.
    while (i < inCount) {
        out += EncodeOne(inUnits, i, inCount, out);
    }
    return out;
}

// Text of up to this many units is encoded into a scratch array on the stack,
// with room for the longest form, and copied into a result of the right size.
// Longer text is encoded straight into a result of its measured size.
constexpr std::size_t kStackScratchUnits16 = 512;

// The common road of the pointer form and of strings of size 0 or 4 and more:
// everything up to the first nul, narrowed directly when it is all ASCII.
// inLimit units must be readable.
UTF8String EncodeToNul(unsigned short const* inUnits, std::size_t inLimit) {
    std::size_t extra = 0;
    bool highSurrogates = false;
    std::size_t const count = ascii::ScanUTF16(inUnits, inLimit, extra, highSurrogates);
    if (extra == 0) {
        // All ASCII.  Constructing from the range narrows each unit to its byte
        // in one pass, without filling the result first.
        return UTF8String(inUnits, inUnits + count);
    }
    if (count <= kStackScratchUnits16) {
        unsigned char scratch[3 * kStackScratchUnits16 + 4];
        unsigned char* const end = EncodeUnits(inUnits, count, scratch, scratch + 3 * count + 4);
        return UTF8String(scratch, end);
    }
    std::size_t const length = count + extra - (highSurrogates ? 2 * ascii::CountSurrogatePairs(inUnits, count) : 0);
    UTF8String result(length, 0);
    EncodeUnits(inUnits, count, &result[0], &result[0] + length);
    return result;
}

// Strings of one to three units: encoded over a result presized to their
// length, which it outgrows as needed; units from a nul onwards leave nul bytes.
UTF8String EncodeShort(UTF16String const& inText) {
    std::size_t const size = inText.size();
    UTF8String result(size, 0);
    std::size_t written = 0;
    std::size_t i = 0;
    while (i < size && inText[i] != 0) {
        unsigned char bytes[4];
        std::size_t const count = EncodeOne(inText.data(), i, size, bytes);
        if (written + count > result.size()) {
            result.resize(written + count);
        }
        std::memcpy(&result[written], bytes, count);
        written += count;
    }
    return result;
}

// Text up to this many bytes is decoded into a scratch array on the stack and
// copied into a result of the right size.  Longer text is measured first and
// decoded straight into its result.
constexpr std::size_t kStackScratchUnits = 1024;

}  // namespace

UTF16String AsciiToUTF16(char const* inText) {
    if (inText == nullptr) {
        return UTF16String();
    }
    return UTF8to16(UTF8String(AsciiToUTF8(inText)));
}

UTF16String UTF8to16(UTF8String const& inText) {
    std::size_t const size = inText.size();
    unsigned char const* const bytes = inText.data();
    if (size <= kStackScratchUnits) {
        unsigned short scratch[kStackScratchUnits];
        return UTF16String(scratch, DecodeUTF8(bytes, size, scratch, size));
    }
    bool allAscii = true;
    std::size_t const units = ascii::CountUTF16Units(bytes, size, allAscii);
    if (allAscii) {
        // Constructing from the range widens each byte in one pass, without
        // filling the result first.
        return UTF16String(bytes, bytes + size);
    }
    UTF16String result(units, 0);
    result.resize(DecodeUTF8(bytes, size, &result[0], units));
    return result;
}

UTF8String UTF16to8(UTF16String const& inText) {
    std::size_t const size = inText.size();
    if (size >= 1 && size <= 3) {
        return EncodeShort(inText);
    }
    return EncodeToNul(inText.data(), size);
}

UTF8String UTF16to8(unsigned short const* inText) {
    if (inText == nullptr) {
        return UTF8String();
    }
    // Measure first: the block scan must not read past the terminating nul.
    return EncodeToNul(inText, CodeUnitTraits<unsigned short>::length(inText));
}

UnicodeSurrogateT UnicodeSurrogate(unsigned short inUnit) {
    if (IsHighSurrogate(inUnit)) {
        return kUnicodeSurrogate_High;
    }
    return IsLowSurrogate(inUnit) ? kUnicodeSurrogate_Low : kUnicodeSurrogate_None;
}

bool ToNumericCase(unsigned short& ioUnit) {
    if (ioUnit >= 0xFF01 && ioUnit <= 0xFF1F) {
        ioUnit = static_cast<unsigned short>(ioUnit - 0xFEE0);
        return true;
    }
    return false;
}

bool ToNumericCase(UTF16String& ioText) {
    bool changed = false;
    for (unsigned short& unit : ioText) {
        changed |= ToNumericCase(unit);
    }
    return changed;
}

}  // namespace utility
}  // namespace quorel
