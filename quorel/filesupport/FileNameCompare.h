// Comparing file names the way the file system treats them.
#ifndef QUOREL_FILESUPPORT_FILENAMECOMPARE_H
#define QUOREL_FILESUPPORT_FILENAMECOMPARE_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace filesupport {

/// Compares two names or paths as whole strings (not component by component),
/// ignoring case, the width of characters (full-width "Ａ" equals "A",
/// half-width katakana equal their full-width forms) and kana type (hiragana
/// equal katakana).  Returns -1, 0 or 1 for less, equal or greater; the order
/// is that of the code units after those foldings.
QRL_EXPORT int CompareFileNames(UTF16String const& inA, UTF16String const& inB);

}  // namespace filesupport
}  // namespace quorel

#endif
