// The two standard locales that quorel works in, and a tolerant reader of
// numbers in display strings.
#ifndef QUOREL_UTILITY_LOCALE_H
#define QUOREL_UTILITY_LOCALE_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <locale>

namespace quorel {
namespace Locale {

/// The user's locale, built when the library is loaded from the environment
/// (std::locale(""), all categories), with the facets of the library's code
/// units added (see CodeUnitFacets.h), so that it can be imbued into any of
/// quorel's streams.  Where the environment names a locale that does not
/// exist, the "C" locale takes its place: loading never throws.
QRL_EXPORT std::locale const& Native();

/// The "C" locale with the facets of the library's code units; the locale
/// every quorel stream starts in.  Made by the first call, thread-safely.
QRL_EXPORT std::locale const& Default();

/// Reads a number from text that a person may have typed in either the
/// user's notation or the "C" notation.  The text is read once in Native()
/// and once in Default(), each from its start; a reading that fails (nothing
/// readable, an overflow, digit grouping that doesn't fit the locale) counts
/// as 0.0.  Of the two values the one that went further wins: the greater of
/// two positive values, the lesser of two negative ones, and otherwise the "C"
/// reading.  So with "," as the user's decimal point "3,5" gives 3.5, and
/// "3.5" gives 3.5 too.  An empty text gives 0.0.
QRL_EXPORT double GetValueFromDisplayString(UTF16String const& inText);

/// The same with inNative in place of Native(); inNative should come from
/// utility::WithCodeUnitFacets.
QRL_EXPORT double GetValueFromDisplayString(UTF16String const& inText, std::locale const& inNative);

}  // namespace Locale
}  // namespace quorel

#endif
