// File: a value type naming a file.
#ifndef QUOREL_FILESUPPORT_FILE_H
#define QUOREL_FILESUPPORT_FILE_H

#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/FileHelper.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>
#include <memory>
#include <string>

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

/// A normalised file path (see FileHelper) and operations on what lies there.
/// Constructing one touches no disk; it may name nothing that exists.  An
/// empty path means "not set".  File times are 100 ns units since 1601-01-01
/// UTC.  Failures raise file_exception or one of its subclasses
/// (FileExceptions.h), and leave the path unchanged.
class QRL_EXPORT File {
public:
    /// The empty path.
    File();
    /// Normalises inPath: "C:/a//b.txt" gives "C:\a\b.txt", "\\?\C:\x" gives
    /// "C:\x", "\\?\UNC\srv\sh\f" gives "\\srv\sh\f".
    explicit File(UTF16String const& inPath);
    /// inDir's path, a backslash unless it ends in one, and inName, normalised.
    /// With an empty inDir the result is File(inName).
    File(Dir const& inDir, UTF16String const& inName);
    /// Takes the helper's path unchanged.
    explicit File(FileHelper const& inHelper);
    File(File const& inOther);
    /// Builds the new helper first, then replaces the old one.
    File& operator=(File const& inOther);
    ~File();

    /// The stored path.
    UTF16String FullPath() const;
    /// The stored path in the system's narrow encoding (UTF-8 on POSIX).
    std::string FullPathMultiByte() const;
    /// The last component with its extension; the whole path when it has no
    /// separator.
    UTF16String GetName() const;
    /// The last component without its extension.
    UTF16String GetTitle() const;
    /// The extension with its dot, from the last dot of the last component to
    /// the end; empty when there is none, and always for a path without a
    /// separator.  "C:\d\.cfg" has the extension ".cfg" and an empty title.
    /// Lower-cased unit by unit when inLowerCase is true.
    UTF16String GetExtension(bool inLowerCase) const;
    /// The directory that holds the file.
    Dir Parent() const;

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
    /// Creation time; file_not_found_exception when the file is missing,
    /// file_exception for other failures.  Where the file system keeps no birth
    /// time this is the last-write time.
    std::uint64_t Created() const;
    /// Last-write time; failures as Created.
    std::uint64_t Modified() const;
    /// The size in bytes for the data and total selectors, 0 for the resource
    /// selectors and values above 5 (without touching the disk).  Raises
    /// nothing: 0 also stands for a missing file.
    std::uint64_t Size(FileSizeSelector inSelector) const;

    /// The stored paths are equal unit for unit: case counts.  For the system's
    /// notion of equal names use CompareFileNames.
    bool operator==(File const& inOther) const;
    bool operator!=(File const& inOther) const { return !(*this == inOther); }

    /// The helper that holds the path.
    FileHelper const& Helper() const;
    FileHelper& Helper();

private:
    std::unique_ptr<FileHelper> mHelper;
};

}  // namespace filesupport
}  // namespace quorel

#endif
