// The path behind a Dir.
#ifndef QUOREL_FILESUPPORT_DIRHELPER_H
#define QUOREL_FILESUPPORT_DIRHELPER_H

#include <quorel/filesupport/PathBase.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace filesupport {

/// Holds the normalised path of a directory: backslashes as separators, no
/// doubled backslash but a leading UNC pair, no long-path prefix ("\\?\"), and
/// no trailing backslash (so the top of a drive is "C:").  Where the system has
/// one file tree (POSIX) its root is held as a single backslash.
class QRL_EXPORT DirHelper : public PathHelperBase {
public:
    /// Removes one trailing backslash, then normalises: forward slashes become
    /// backslashes, a long-path prefix goes, doubled backslashes are reduced.
    /// "." and ".." stay, and so does the case of the text.
    explicit DirHelper(UTF16String const& inPath);

private:
    friend class Dir;
    struct StoredPath {};
    DirHelper(StoredPath, UTF16String const& inPath);
};

}  // namespace filesupport
}  // namespace quorel

#endif
