// The portable relative path form stored in documents: components separated
// by forward slashes, relative to the directory of a reference file.
#ifndef QUOREL_FILESUPPORT_RELATIVEPATH_H
#define QUOREL_FILESUPPORT_RELATIVEPATH_H

#include <quorel/filesupport/File.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace filesupport {

/// True for a path in the relative form: not empty, not starting with a slash
/// or backslash, and (when longer than one unit) without a colon second.  So
/// "a/b" and "a" are relative, "C:x", "/a" and "\a" are not.
QRL_EXPORT bool IsNormalizedRelativePath(UTF16String const& inPath);

/// Turns a stored path back into a File.  A path that is not relative gives
/// File(inPath).  Otherwise its slash-separated components are applied to
/// the directory of inRelativeTo: "." stays, ".." goes up, anything else goes
/// down; the last component is the file's name.  Backslashes are not
/// separators here.  A path ending in a slash names no file: the empty File.
/// Relative to C:\a\b\c.txt, "../x/y.txt" gives C:\a\x\y.txt.
QRL_EXPORT File MakeFileFromPath(UTF16String const& inPath, File const& inRelativeTo);

/// The relative form of inFile as seen from the directory of inRelativeTo:
/// "../" for each level up to the nearest common directory, then the names
/// down to inFile.  Directories are compared exactly, case included.  When
/// the two have no common directory (another drive) the result is empty.
/// Relative to C:\a\b\c.txt, C:\a\x\y.txt gives "../x/y.txt".
QRL_EXPORT UTF16String MakeNormalizedRelativePath(File const& inFile, File const& inRelativeTo);

}  // namespace filesupport
}  // namespace quorel

#endif
