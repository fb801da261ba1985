// Conversions between UTF-8 and UTF-16, and tests on single code units.
#ifndef QUOREL_UTILITY_UNICODECONVERSION_H
#define QUOREL_UTILITY_UNICODECONVERSION_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace utility {

/// What a UTF-16 code unit is with respect to surrogate pairs.
enum UnicodeSurrogateT {
    kUnicodeSurrogate_None = 0,  ///< not a surrogate
    kUnicodeSurrogate_High = 1,  ///< U+D800 to U+DBFF
    kUnicodeSurrogate_Low = 2    ///< U+DC00 to U+DFFF
};

/// Lets a narrow literal pass as UTF-8 text at no cost: returns its argument.
inline unsigned char const* AsciiToUTF8(char const* inText) noexcept {
    return reinterpret_cast<unsigned char const*>(inText);
}
/// The same operation as AsciiToUTF8 under a second name.
inline unsigned char const* AsciiToUTF8Impl(char const* inText) noexcept {
    return reinterpret_cast<unsigned char const*>(inText);
}

/// Converts nul-terminated narrow text, read as UTF-8, to UTF-16.
QRL_EXPORT UTF16String AsciiToUTF16(char const* inText);

/// Decodes UTF-8 to UTF-16, embedded nul bytes included.  Decoding stops
/// silently at the first illegal or truncated sequence: the result is what was
/// decoded before it, with no replacement character.  Encoded surrogates
/// (ED A0 80 and the like) are accepted and give that very unit.
QRL_EXPORT UTF16String UTF8to16(UTF8String const& inText);

/// Encodes UTF-16 up to its first nul unit as UTF-8.  Nothing is rejected: an
/// unpaired surrogate becomes a three-byte sequence, so UTF8to16(UTF16to8(s))
/// gives back any nul-free s.  A string of one to three units is encoded over
/// a result presized to its length, so units from a nul onwards leave nul bytes.
QRL_EXPORT UTF8String UTF16to8(UTF16String const& inText);

/// Encodes a nul-terminated UTF-16 array as UTF-8.  A null pointer gives "".
QRL_EXPORT UTF8String UTF16to8(unsigned short const* inText);

/// Classifies one UTF-16 code unit.
QRL_EXPORT UnicodeSurrogateT UnicodeSurrogate(unsigned short inUnit);

/// Turns a full-width "!" to "?" (U+FF01 to U+FF1F) into its ASCII unit and
/// returns true; any other unit stays and the result is false.
QRL_EXPORT bool ToNumericCase(unsigned short& ioUnit);

/// Applies ToNumericCase to every unit; true if at least one changed.
QRL_EXPORT bool ToNumericCase(UTF16String& ioText);

}  // namespace utility
}  // namespace quorel

#endif
