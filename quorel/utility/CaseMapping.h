// Case mapping of UTF-16 text.
//
// Each unit is mapped on its own, without context or language, through the
// library's case table: the code units of the Basic Multilingual Plane that
// had a case mapping in Unicode 3.0 (1,446 of them).  Upper-casing and folding
// use the full mappings, so one unit may become two or three ("ß" upper-cases
// to "SS").  Every Greek sigma folds to the final sigma U+03C2, and the Turkish
// dotted and dotless i fold to plain "i".  Units outside the table, surrogates
// included, are copied unchanged.  The table is built once, thread-safely, at
// the first case operation.
#ifndef QUOREL_UTILITY_CASEMAPPING_H
#define QUOREL_UTILITY_CASEMAPPING_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace utility {

/// Returns the lower-case form of inText (always one unit per unit).
QRL_EXPORT UTF16String LowerCase(UTF16String const& inText);
/// Returns the upper-case form of inText.
QRL_EXPORT UTF16String UpperCase(UTF16String const& inText);
/// Returns the case-folded form of inText, for caseless comparison.
QRL_EXPORT UTF16String FoldCase(UTF16String const& inText);

/// Replaces ioText by its lower-case form.
QRL_EXPORT void ToLowerCase(UTF16String& ioText);
/// Replaces ioText by its upper-case form.
QRL_EXPORT void ToUpperCase(UTF16String& ioText);
/// Replaces ioText by its case-folded form.
QRL_EXPORT void ToFoldCase(UTF16String& ioText);

}  // namespace utility
}  // namespace quorel

#endif
