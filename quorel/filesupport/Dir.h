// Dir: a value type naming a directory.
#ifndef QUOREL_FILESUPPORT_DIR_H
#define QUOREL_FILESUPPORT_DIR_H

#include <quorel/filesupport/DirHelper.h>
#include <quorel/filesupport/PathBase.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

namespace quorel {
namespace filesupport {

class Dir;
extern template class PathBase<Dir, DirHelper>;

/// A normalised directory path (see DirHelper) and operations on what lies
/// there; the constructors, the path operations and the times are those of
/// PathBase.  A directory path loses one trailing backslash (only a
/// backslash), then is normalised: "C:\a\" gives "C:\a", "C:/a/" gives
/// "C:\a\", "C:\" gives "C:".  On POSIX "/" and "\" give the root, "\".
/// Failures raise dir_exception or one of its subclasses (FileExceptions.h),
/// and leave the path unchanged.
class QRL_EXPORT Dir : public PathBase<Dir, DirHelper> {
public:
    using PathBase::PathBase;

    /// True when the path has no separator (a drive "C:", a bare name, the
    /// empty path) or a single one at its start.  On POSIX the root "\" is top
    /// level and "\x" is not.
    bool IsTopLevelDir() const;

    /// True when a directory is there.  For a drive ("C:") the test is made on
    /// "C:\".
    bool Exists() const;
    /// Creates the directory, one level: a missing parent is an error
    /// (dir_exception).  An existing directory is not an error.
    void Create() const;
    /// Removes the directory, which must be empty (dir_exception otherwise).
    void Delete() const;
    /// Renames the directory within its parent to inNewName, a name and not a
    /// path.  rename_dir_already_exists when the name is taken, rename_dir for
    /// other failures.  On success the path becomes parent, backslash, inNewName.
    void Rename(UTF16String const& inNewName);
};

}  // namespace filesupport
}  // namespace quorel

#endif
