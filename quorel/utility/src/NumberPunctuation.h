// Shared by the number functions and the calculator: the fixed part of
// reading numbers in a person's notation.
#ifndef QUOREL_UTILITY_SRC_NUMBERPUNCTUATION_H
#define QUOREL_UTILITY_SRC_NUMBERPUNCTUATION_H

#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace utility {

/// Full-width "!" to "?" (digits included) become ASCII, the ideographic
/// comma U+3001 becomes "," and the ideographic full stop U+3002 ".", in place.
void ToCanonicalPunctuation(UTF16String& ioText);

}  // namespace utility
}  // namespace quorel

#endif
