// The exceptions of the file layer and their message constants.
#include <quorel/config/Messages.h>
#include <quorel/filesupport/FileExceptions.h>

namespace quorel {
namespace filesupport {

namespace msg = quorel::config;

file_exception::file_exception(File const& inFile) : file_exception(inFile, msg::kMessage_FileError) {}
file_exception::file_exception(File const& inFile, char const* inMessage) : mFile(inFile), mMessage(inMessage) {}
file_exception::~file_exception() = default;
File const& file_exception::GetFile() const { return mFile; }
char const* file_exception::what() const noexcept { return mMessage; }

file_not_found_exception::file_not_found_exception(File const& inFile)
    : file_exception(inFile, msg::kMessage_FileNotFound) {}
file_not_found_exception::~file_not_found_exception() = default;

file_delete_exception::file_delete_exception(File const& inFile) : file_exception(inFile, msg::kMessage_FileDelete) {}
file_delete_exception::~file_delete_exception() = default;

create_exception::create_exception(File const& inFile) : file_exception(inFile, msg::kMessage_FileCreate) {}
create_exception::create_exception(File const& inFile, char const* inMessage) : file_exception(inFile, inMessage) {}
create_exception::~create_exception() = default;

create_fnf_exception::create_fnf_exception(File const& inFile)
    : create_exception(inFile, msg::kMessage_FileCreateNotFound) {}
create_fnf_exception::~create_fnf_exception() = default;

create_locked_exception::create_locked_exception(File const& inFile)
    : create_exception(inFile, msg::kMessage_FileCreateLocked) {}
create_locked_exception::~create_locked_exception() = default;

create_accessdenied_exception::create_accessdenied_exception(File const& inFile)
    : create_exception(inFile, msg::kMessage_FileCreateAccessDenied) {}
create_accessdenied_exception::~create_accessdenied_exception() = default;

create_invalidpath_exception::create_invalidpath_exception(File const& inFile)
    : create_exception(inFile, msg::kMessage_FileCreateInvalidPath) {}
create_invalidpath_exception::~create_invalidpath_exception() = default;

rename_file::rename_file(File const& inFile, UTF16String const& inNewName)
    : rename_file(inFile, inNewName, msg::kMessage_FileRename) {}
rename_file::rename_file(File const& inFile, UTF16String const& inNewName, char const* inMessage)
    : file_exception(inFile, inMessage), mNewName(inNewName) {}
rename_file::~rename_file() = default;
UTF16String const& rename_file::GetNewName() const { return mNewName; }

dir_exception::dir_exception(Dir const& inDir) : dir_exception(inDir, msg::kMessage_DirError) {}
dir_exception::dir_exception(Dir const& inDir, char const* inMessage) : mDir(inDir), mMessage(inMessage) {}
dir_exception::~dir_exception() = default;
Dir const& dir_exception::GetDir() const { return mDir; }
char const* dir_exception::what() const noexcept { return mMessage; }

dir_not_found_exception::dir_not_found_exception(Dir const& inDir) : dir_exception(inDir, msg::kMessage_DirNotFound) {}
dir_not_found_exception::~dir_not_found_exception() = default;

dir_delete_exception::dir_delete_exception(Dir const& inDir) : dir_exception(inDir, msg::kMessage_DirDelete) {}
dir_delete_exception::dir_delete_exception(Dir const& inDir, char const* inMessage) : dir_exception(inDir, inMessage) {}
dir_delete_exception::~dir_delete_exception() = default;

rename_dir::rename_dir(Dir const& inDir, UTF16String const& inNewName)
    : rename_dir(inDir, inNewName, msg::kMessage_DirRename) {}
rename_dir::rename_dir(Dir const& inDir, UTF16String const& inNewName, char const* inMessage)
    : dir_exception(inDir, inMessage), mNewName(inNewName) {}
rename_dir::~rename_dir() = default;
UTF16String const& rename_dir::GetNewName() const { return mNewName; }

rename_dir_already_exists::rename_dir_already_exists(Dir const& inDir, UTF16String const& inNewName)
    : rename_dir(inDir, inNewName, msg::kMessage_DirRenameExists) {}
rename_dir_already_exists::~rename_dir_already_exists() = default;

}  // namespace filesupport
}  // namespace quorel
