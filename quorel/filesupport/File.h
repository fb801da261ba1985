// File: a value type naming a file.
#ifndef QUOREL_FILESUPPORT_FILE_H
#define QUOREL_FILESUPPORT_FILE_H

#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/FileHelper.h>
#include <quorel/filesupport/PathBase.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>

namespace quorel {
namespace filesupport {

/// Which size File::Size reports: the data fork, the resource fork, or both,
/// each as logical length or as space taken.  Files here have a data fork
/// only: the resource selectors give 0, the others the file's length.
enum FileSizeSelector {
    kFileSize_DataLogical = 0,
    kFileSize_ResourceLogical = 1,
    kFileSize_DataPhysical = 2,
    kFileSize_TotalLogical = 3,
    kFileSize_ResourcePhysical = 4,
    kFileSize_TotalPhysical = 5
};

class File;
extern template class PathBase<File, FileHelper>;

/// A normalised file path (see FileHelper) and operations on what lies there;
/// the constructors, the path operations and the times are those of PathBase.
/// "C:/a//b.txt" is held as "C:\a\b.txt", "\\?\C:\x" as "C:\x",
/// "\\?\UNC\srv\sh\f" as "\\srv\sh\f".  Failures raise file_exception
/// or one of its subclasses (FileExceptions.h), and leave the path unchanged.
class QRL_EXPORT File : public PathBase<File, FileHelper> {
public:
    using PathBase::PathBase;

    /// The last component without its extension.
    UTF16String GetTitle() const;
    /// The extension with its dot, from the last dot of the last component to
    /// the end; empty when there is none, and always for a path without a
    /// separator.  "C:\d\.cfg" has the extension ".cfg" and an empty title.
    /// Lower-cased unit by unit when inLowerCase is true.
    UTF16String GetExtension(bool inLowerCase) const;

    /// True when something is there; a directory counts.
    bool Exists() const;
    /// Creates the file, or empties an existing one, and closes it again.
    /// Raises a create_exception subclass chosen by the system's error:
    /// create_fnf_exception, create_invalidpath_exception (missing directory),
    /// create_locked_exception (write-protected), create_accessdenied_exception,
    /// or create_exception itself.
    void Create() const;
    /// Deletes the file; file_delete_exception on failure (a missing file, a
    /// directory, a file open through a platform stream).
    void Delete() const;
    /// Renames the file within its directory to inNewName, a name and not a
    /// path; an existing file of that name is not replaced.  rename_file on
    /// failure.  On success the path becomes parent, backslash, inNewName.
    void Rename(UTF16String const& inNewName);
    /// The size in bytes for the data and total selectors, 0 for the resource
    /// selectors and values above 5 (without touching the disk).  Raises
    /// nothing: 0 also stands for a missing file.
    std::uint64_t Size(FileSizeSelector inSelector) const;

    using PathBase::Helper;
    FileHelper& Helper();
};

}  // namespace filesupport
}  // namespace quorel

#endif
