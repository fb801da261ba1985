// The text rules of stored paths, shared by File, Dir and their helpers.
#ifndef QUOREL_FILESUPPORT_SRC_PATHTEXT_H
#define QUOREL_FILESUPPORT_SRC_PATHTEXT_H

#include <quorel/utility/UnicodeString.h>

#include <cstddef>

namespace quorel {
namespace filesupport {
namespace pathtext {

constexpr unsigned short kBackslash = '\\';
constexpr unsigned short kSlash = '/';

/// Slashes to backslashes, the long-path prefix removed ("\\?\UNC\" leaves
/// the two leading backslashes of the UNC name), doubled backslashes reduced
/// except a pair at the very start.
UTF16String Normalize(UTF16String const& inPath);

/// Normalize after removing one trailing backslash.  A lone backslash is kept
/// where it names the root (POSIX).
UTF16String NormalizeDirectory(UTF16String const& inPath);

/// inDirectory, a backslash unless it ends in one, and inName; inName alone
/// when inDirectory is empty.  Not normalised.
UTF16String Join(UTF16String const& inDirectory, UTF16String const& inName);

/// The text behind the last separator (backslash or slash); all of it when
/// there is none.
UTF16String Name(UTF16String const& inPath);
/// Name without the extension.
UTF16String Title(UTF16String const& inPath);
/// From the last dot behind the last separator to the end; empty when there is
/// no separator or no such dot.
UTF16String Extension(UTF16String const& inPath);

/// The text that names the directory above inPath, to be built as a directory
/// path: the text before the last separator; on POSIX the root for "\x".
UTF16String ParentText(UTF16String const& inPath);

/// No separator, or (where the system has no single root) one at the start
/// only; on POSIX the root itself.
bool IsTopLevel(UTF16String const& inPath);

}  // namespace pathtext
}  // namespace filesupport
}  // namespace quorel

#endif
