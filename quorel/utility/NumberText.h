// Numbers written for people and read back.
//
// Numbers are written in a canonical form, with "." as the decimal point and
// "," between groups of thousands, and translated as the last step to the
// separators of the user's locale (NumberSeparators.h); text that is read
// takes the reverse road.  These functions don't use the locale of any stream
// for that.  Bad input gives 0 or a shorter text; nothing is reported.
#ifndef QUOREL_UTILITY_NUMBERTEXT_H
#define QUOREL_UTILITY_NUMBERTEXT_H

#include <quorel/utility/Export.h>
#include <quorel/utility/Flags.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>

namespace quorel {
namespace utility {

/// Flags of NumberToString.
enum : unsigned short {
    kNumberFormat_NoInternationalize = 1,  ///< keep "." and "," of the canonical form
    kNumberFormat_PadWithBlanks = 2,       ///< pad on the left with blanks, not "0"
    kNumberFormat_TrimTrailingZeros = 4,   ///< drop trailing zeros of the fraction, and a bare "."
    kNumberFormat_GroupThousands = 8,      ///< put "," between groups of three digits
    kNumberFormat_ShowPlus = 16,           ///< "+" before a number that isn't negative
    kNumberFormat_BlankForPlus = 32,       ///< a blank there instead (only without ShowPlus)
    kNumberFormat_NoPlusOnZero = 64        ///< with ShowPlus, no sign on zero
};

/// Flags of StringToNumber; other bits have no effect there.
enum : unsigned short {
    kNumberParse_NoDeInternationalize = 2  ///< the text is canonical already
};

/// Decimal text of a 32-bit value ("%ld"); never internationalised.
QRL_EXPORT UTF16String NumberToString(std::int32_t inValue);

/// Decimal text of a 64-bit value; never internationalised.
QRL_EXPORT UTF16String NumberToString(std::int64_t inValue);

/// Upper-case hexadecimal text of the 32-bit pattern, without prefix and
/// without leading zeros: -1 gives "FFFFFFFF", 0 gives "0".
QRL_EXPORT UTF16String NumberToHexString(std::int32_t inValue);

/// NumberToString(inValue, 1, 2, no flags).
QRL_EXPORT UTF16String NumberToString(double inValue);

/// Writes inValue for people:
///  - with inDecimals 0 it is rounded half up to a whole number, otherwise
///    written with inDecimals decimals;
///  - a value that needs more than 22 characters, or that is too great for 32
///    bits when written without decimals, is written in scientific form
///    ("%e", e.g. "3.000000e+09") and gets no padding, grouping or trimming;
///  - the integer part is padded on the left to inMinimumDigits characters;
///  - the sign ("-", or "+" or a blank as the flags say) goes in front;
///  - at last the separators become the user's, unless
///    kNumberFormat_NoInternationalize is set.
/// So 1234.5 with 6, 2 and kNumberFormat_GroupThousands |
/// kNumberFormat_NoInternationalize gives "001,234.50".
QRL_EXPORT UTF16String NumberToString(double inValue, int inMinimumDigits, int inDecimals,
                                      Flags<unsigned short> inFlags);

/// Reads a number from the start of inText: DeInternationalizeNum (unless
/// kNumberParse_NoDeInternationalize), every "," removed, then one double read
/// as standard stream extraction in the "C" locale reads it.  Leading white
/// space and a sign are accepted and trailing text is ignored: "12abc" gives
/// 12.  Text without a number gives 0.0.
QRL_EXPORT double StringToNumber(UTF16String const& inText, Flags<unsigned short> inFlags = 0);

/// Canonical to local separators, in place: a "." followed by a digit becomes
/// the user's decimal separator, a "," followed by a digit the user's
/// thousands separator.  The length doesn't change.
QRL_EXPORT void InternationalizeNum(UTF16String& ioText);

/// Local to canonical, in place.  First full-width "!" to "?" (U+FF01 to
/// U+FF1F, digits included), the ideographic comma U+3001 and the ideographic
/// full stop U+3002 become their ASCII forms; then the user's decimal
/// separator becomes "." and the user's thousands separator ",".
QRL_EXPORT void DeInternationalizeNum(UTF16String& ioText);

}  // namespace utility
}  // namespace quorel

#endif
