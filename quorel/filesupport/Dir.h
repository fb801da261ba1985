// Dir: a value type naming a directory.
#ifndef QUOREL_FILESUPPORT_DIR_H
#define QUOREL_FILESUPPORT_DIR_H

#include <quorel/filesupport/DirHelper.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>
#include <memory>
#include <string>

namespace quorel {
namespace filesupport {

/// A normalised directory path (see DirHelper) and operations on what lies
/// there.  Constructing one touches no disk; it may name nothing that exists.
/// An empty path means "not set".  File times are 100 ns units since
/// 1601-01-01 UTC.  Failures raise dir_exception or one of its subclasses
/// (FileExceptions.h), and leave the path unchanged.
class QRL_EXPORT Dir {
public:
    /// The empty path.
    Dir();
    /// Removes one trailing backslash (only a backslash), then normalises:
    /// "C:\a\" gives "C:\a", "C:/a/" gives "C:\a\", "C:\" gives "C:".  On POSIX
    /// "/" and "\" give the root, "\".
    explicit Dir(UTF16String const& inPath);
    /// inParent's path, a backslash unless it ends in one, and inName, built as
    /// Dir(path).  With an empty parent the result is Dir(inName).
    Dir(Dir const& inParent, UTF16String const& inName);
    /// Takes the helper's path unchanged.
    explicit Dir(DirHelper const& inHelper);
    Dir(Dir const& inOther);
    /// Builds the new helper first, then replaces the old one.
    Dir& operator=(Dir const& inOther);
    ~Dir();

    /// The stored path.
    UTF16String FullPath() const;
    /// The stored path in the system's narrow encoding (UTF-8 on POSIX).
    std::string FullPathMultiByte() const;
    /// The last component: the text behind the last separator, or the whole
    /// path when there is none.
    UTF16String GetName() const;
    /// The directory above: the text before the last separator, as a Dir.  Up
    /// from "C:\a" come "C:" and then the empty Dir.  On POSIX the parent of
    /// "\x" is the root "\", whose parent is the empty Dir.
    Dir Parent() const;
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
    /// Creation time; dir_not_found_exception when the directory is missing,
    /// dir_exception for other failures.  Where the file system keeps no birth
    /// time this is the last-write time.
    std::uint64_t Created() const;
    /// Last-write time; failures as Created.
    std::uint64_t Modified() const;

    /// The stored paths are equal unit for unit: case counts.  For the system's
    /// notion of equal names use CompareFileNames.
    bool operator==(Dir const& inOther) const;
    bool operator!=(Dir const& inOther) const { return !(*this == inOther); }

    /// The helper that holds the path.
    DirHelper const& Helper() const;

private:
    std::unique_ptr<DirHelper> mHelper;
};

}  // namespace filesupport
}  // namespace quorel

#endif
