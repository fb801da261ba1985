#include <quorel/utility/UnicodeConversion.h>

#include "AsciiBlocks.h"

#include <cstring>

namespace quorel {
namespace utility {

namespace {

constexpr bool IsContinuation(unsigned int inByte) noexcept { return (inByte & 0xC0) == 0x80; }

// Decodes inCount bytes into outUnits (room for inCount units) and returns the
// number of units written.  Stops at the first illegal or cut-off sequence.
std::size_t DecodeUTF8(unsigned char const* inBytes, std::size_t inCount, unsigned short* outUnits) noexcept {
    std::size_t in = 0;
    std::size_t out = 0;
    while (in < inCount) {
        unsigned int const lead = inBytes[in];
        std::size_t const left = inCount - in;
        if (lead < 0x80) {
            if (left >= ascii::kBlock && ascii::WidenBlock(inBytes + in, outUnits + out)) {
                in += ascii::kBlock;
                out += ascii::kBlock;
            } else {
                outUnits[out++] = static_cast<unsigned short>(lead);
                ++in;
            }
        } else if (lead < 0xC2) {
            break;
        } else if (lead < 0xE0) {
            if (left < 2 || !IsContinuation(inBytes[in + 1])) {
                break;
            }
            outUnits[out++] = static_cast<unsigned short>(((lead & 0x1F) << 6) | (inBytes[in + 1] & 0x3F));
            in += 2;
        } else if (lead < 0xF0) {
            if (left < 3) {
                break;
            }
            unsigned int const second = inBytes[in + 1];
            unsigned int const third = inBytes[in + 2];
            if (second < (lead == 0xE0 ? 0xA0u : 0x80u) || second > 0xBF || !IsContinuation(third)) {
                break;
            }
            outUnits[out++] = static_cast<unsigned short>(((lead & 0x0F) << 12) | ((second & 0x3F) << 6) |
                                                          (third & 0x3F));
            in += 3;
        } else if (lead < 0xF5) {
            if (left < 4) {
                break;
            }
            unsigned int const second = inBytes[in + 1];
            unsigned int const low = lead == 0xF0 ? 0x90 : 0x80;
            unsigned int const high = lead == 0xF4 ? 0x8F : 0xBF;
            if (second < low || second > high || !IsContinuation(inBytes[in + 2]) ||
                !IsContinuation(inBytes[in + 3])) {
                break;
            }
            unsigned long const codePoint = ((lead & 0x07UL) << 18) | ((second & 0x3FUL) << 12) |
                                            ((inBytes[in + 2] & 0x3FUL) << 6) | (inBytes[in + 3] & 0x3FUL);
            unsigned long const offset = codePoint - 0x10000;
            outUnits[out++] = static_cast<unsigned short>(0xD800 + (offset >> 10));
            outUnits[out++] = static_cast<unsigned short>(0xDC00 + (offset & 0x3FF));
            in += 4;
        } else {
            break;
        }
    }
    return out;
}

constexpr bool IsHighSurrogate(unsigned int inUnit) noexcept { return inUnit >= 0xD800 && inUnit <= 0xDBFF; }
constexpr bool IsLowSurrogate(unsigned int inUnit) noexcept { return inUnit >= 0xDC00 && inUnit <= 0xDFFF; }

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
        unsigned long const codePoint =
            0x10000 + ((static_cast<unsigned long>(unit) - 0xD800) << 10) + (inUnits[ioIndex + 1] - 0xDC00);
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

// The exact UTF-8 length of inCount nul-free units.
std::size_t EncodedLength(unsigned short const* inUnits, std::size_t inCount) noexcept {
    std::size_t length = 0;
    for (std::size_t i = 0; i < inCount; ++i) {
        unsigned int const unit = inUnits[i];
        if (unit < 0x80) {
            length += 1;
        } else if (unit < 0x800) {
            length += 2;
        } else if (IsPairAt(inUnits, i, inCount)) {
            length += 4;
            ++i;
        } else {
            length += 3;
        }
    }
    return length;
}

// Narrows inCount ASCII units into outBytes.
void Narrow(unsigned short const* inUnits, std::size_t inCount, unsigned char* outBytes) noexcept {
    std::size_t i = 0;
    for (; i + ascii::kBlock <= inCount; i += ascii::kBlock) {
        ascii::NarrowBlock(inUnits + i, outBytes + i);
    }
    for (; i < inCount; ++i) {
        outBytes[i] = static_cast<unsigned char>(inUnits[i]);
    }
}

// Encodes inCount nul-free units into a result of exactly the right size.
UTF8String EncodeUTF8(unsigned short const* inUnits, std::size_t inCount) {
    UTF8String result(EncodedLength(inUnits, inCount), 0);
    unsigned char* out = &result[0];
    std::size_t i = 0;
    while (i < inCount) {
        out += EncodeOne(inUnits, i, inCount, out);
    }
    return result;
}

// The common road of the pointer form and of strings of size 0 or 4 and more:
// everything up to the first nul, narrowed directly when it is all ASCII.
// inLimit units must be readable.
UTF8String EncodeToNul(unsigned short const* inUnits, std::size_t inLimit) {
    bool allAscii = true;
    std::size_t const count = ascii::ScanToNul(inUnits, inLimit, allAscii);
    if (!allAscii) {
        return EncodeUTF8(inUnits, count);
    }
    UTF8String result(count, 0);
    if (count != 0) {
        Narrow(inUnits, count, &result[0]);
    }
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

constexpr std::size_t kStackScratchUnits = 512;

}  // namespace

UTF16String AsciiToUTF16(char const* inText) {
    if (inText == nullptr) {
        return UTF16String();
    }
    return UTF8to16(UTF8String(AsciiToUTF8(inText)));
}

UTF16String UTF8to16(UTF8String const& inText) {
    std::size_t const size = inText.size();
    if (size <= kStackScratchUnits) {
        unsigned short scratch[kStackScratchUnits];
        return UTF16String(scratch, DecodeUTF8(inText.data(), size, scratch));
    }
    UTF16String result(size, 0);
    std::size_t const count = DecodeUTF8(inText.data(), size, &result[0]);
    if (count < size - size / 4) {
        // Mostly multi-byte text: keep a buffer of the right size, not of the input's.
        return UTF16String(result.data(), count);
    }
    result.resize(count);
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
