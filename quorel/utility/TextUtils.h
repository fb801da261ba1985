// Line endings, message templates and small text clean-ups.
#ifndef QUOREL_UTILITY_TEXTUTILS_H
#define QUOREL_UTILITY_TEXTUTILS_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace utility {

/// The three line endings the library writes.
enum LineEndingType {
    kLineEnding_CRLF = 0,  ///< U+000D U+000A
    kLineEnding_CR = 1,    ///< U+000D
    kLineEnding_LF = 2     ///< U+000A
};

/// The text of a line ending; a value outside LineEndingType gives "".
QRL_EXPORT UTF16String GetLineEnding(LineEndingType inType);

/// Rewrites every line ending of ioText (CR LF, lone CR, lone LF) as inType.
/// The string is only assigned when an ending differed.  With a type outside
/// LineEndingType the endings are removed, unless that would leave the string
/// empty, in which case it stays as it was.
QRL_EXPORT void ConvertLineEndings(LineEndingType inType, UTF16String& ioText);

/// Expands a message template: "@0" to "@9" become the ten replacements,
/// "@@" becomes "@", any other "@x" stays as it is, and a final "@" stays.
/// Replacement text is not scanned again.
QRL_EXPORT UTF16String ReplaceInString(UTF16String const& inTemplate, UTF16String const& in0,
                                       UTF16String const& in1, UTF16String const& in2,
                                       UTF16String const& in3, UTF16String const& in4,
                                       UTF16String const& in5, UTF16String const& in6,
                                       UTF16String const& in7, UTF16String const& in8,
                                       UTF16String const& in9);

/// Replaces each occurrence of inSearch in ioText, from left to right and
/// without overlap, by inReplacement.  The search goes on behind each inserted
/// replacement.  An empty inSearch leaves ioText unchanged.
QRL_EXPORT void ReplaceAllStringInString(UTF16String& ioText, UTF16String const& inSearch,
                                         UTF16String const& inReplacement);

/// Upper-cases ioText, then keeps only "0"-"9" and "A"-"F", in order.
QRL_EXPORT void ValidateForHex(UTF16String& ioText);

}  // namespace utility
}  // namespace quorel

#endif
