// The exceptions of the file layer.
//
// Each carries a copy of the File or Dir concerned and a message constant of
// quorel/config/Messages.h, which what() returns unexpanded: a localisable key
// with "@0" for the path and "@1" for a new name.  A handler fills them in from
// GetFile/GetDir and GetNewName.  They are thrown by value and caught by
// reference.
#ifndef QUOREL_FILESUPPORT_FILEEXCEPTIONS_H
#define QUOREL_FILESUPPORT_FILEEXCEPTIONS_H

#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/File.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <exception>

namespace quorel {
namespace filesupport {

/// Something failed with a file.  The root of the file exceptions.
class QRL_EXPORT file_exception : public std::exception {
public:
    explicit file_exception(File const& inFile);
    file_exception(File const& inFile, char const* inMessage);
    ~file_exception() override;

    /// The file concerned.
    File const& GetFile() const;
    /// The message constant.
    char const* what() const noexcept override;

private:
    File mFile;
    char const* mMessage;
};

/// The file does not exist.
class QRL_EXPORT file_not_found_exception : public file_exception {
public:
    explicit file_not_found_exception(File const& inFile);
    ~file_not_found_exception() override;
};

/// File::Delete failed.
class QRL_EXPORT file_delete_exception : public file_exception {
public:
    explicit file_delete_exception(File const& inFile);
    ~file_delete_exception() override;
};

/// File::Create failed for a reason none of the subclasses names.
class QRL_EXPORT create_exception : public file_exception {
public:
    explicit create_exception(File const& inFile);
    ~create_exception() override;

protected:
    create_exception(File const& inFile, char const* inMessage);
};

/// File::Create failed: the file (or something it needs) was not found.
class QRL_EXPORT create_fnf_exception : public create_exception {
public:
    explicit create_fnf_exception(File const& inFile);
    ~create_fnf_exception() override;
};

/// File::Create failed: the disk is write-protected.
class QRL_EXPORT create_locked_exception : public create_exception {
public:
    explicit create_locked_exception(File const& inFile);
    ~create_locked_exception() override;
};

/// File::Create failed: access was denied.
class QRL_EXPORT create_accessdenied_exception : public create_exception {
public:
    explicit create_accessdenied_exception(File const& inFile);
    ~create_accessdenied_exception() override;
};

/// File::Create failed: the path is not valid (its directory does not exist).
class QRL_EXPORT create_invalidpath_exception : public create_exception {
public:
    explicit create_invalidpath_exception(File const& inFile);
    ~create_invalidpath_exception() override;
};

/// File::Rename failed.
class QRL_EXPORT rename_file : public file_exception {
public:
    rename_file(File const& inFile, UTF16String const& inNewName);
    rename_file(File const& inFile, UTF16String const& inNewName, char const* inMessage);
    ~rename_file() override;

    /// The name the file was to get.
    UTF16String const& GetNewName() const;

private:
    UTF16String mNewName;
};

/// Something failed with a directory.  The root of the directory exceptions.
class QRL_EXPORT dir_exception : public std::exception {
public:
    explicit dir_exception(Dir const& inDir);
    dir_exception(Dir const& inDir, char const* inMessage);
    ~dir_exception() override;

    /// The directory concerned.
    Dir const& GetDir() const;
    /// The message constant.
    char const* what() const noexcept override;

private:
    Dir mDir;
    char const* mMessage;
};

/// The directory does not exist.
class QRL_EXPORT dir_not_found_exception : public dir_exception {
public:
    explicit dir_not_found_exception(Dir const& inDir);
    ~dir_not_found_exception() override;
};

/// A directory could not be deleted.  The library raises dir_exception for a
/// failed Dir::Delete; this class is for hosts.
class QRL_EXPORT dir_delete_exception : public dir_exception {
public:
    explicit dir_delete_exception(Dir const& inDir);
    dir_delete_exception(Dir const& inDir, char const* inMessage);
    ~dir_delete_exception() override;
};

/// Dir::Rename failed.
class QRL_EXPORT rename_dir : public dir_exception {
public:
    rename_dir(Dir const& inDir, UTF16String const& inNewName);
    rename_dir(Dir const& inDir, UTF16String const& inNewName, char const* inMessage);
    ~rename_dir() override;

    /// The name the directory was to get.
    UTF16String const& GetNewName() const;

private:
    UTF16String mNewName;
};

/// Dir::Rename failed because the new name is taken.
class QRL_EXPORT rename_dir_already_exists : public rename_dir {
public:
    rename_dir_already_exists(Dir const& inDir, UTF16String const& inNewName);
    ~rename_dir_already_exists() override;
};

}  // namespace filesupport
}  // namespace quorel

#endif
