// Dir: the operations on what a directory path names.
#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/FileExceptions.h>

#include "FileFailures.h"
#include "FilePlatform.h"
#include "PathText.h"

namespace quorel {
namespace filesupport {

namespace {

// A drive alone ("C:") names the drive's current directory to Windows; its
// top is tested as "C:\".
bool IsDriveAlone(UTF16String const& inPath) { return inPath.size() == 2 && inPath[1] == ':'; }

}  // namespace

bool Dir::IsTopLevelDir() const { return pathtext::IsTopLevel(mHelper->Path()); }

bool Dir::Exists() const {
    UTF16String path = mHelper->Path();
    if (IsDriveAlone(path)) {
        path.push_back(pathtext::kBackslash);
    }
    bool isDirectory = false;
    return platform::GetAttributes(platform::NativePath(path), isDirectory) == kError_None && isDirectory;
}

void Dir::Create() const {
    FileErrorCode const code = platform::CreateDirectory(mHelper->FullNativePath());
    if (code != kError_None && code != kError_AlreadyExists) {
        throw dir_exception(*this);
    }
}

void Dir::Delete() const {
    if (platform::RemoveDirectory(mHelper->FullNativePath()) != kError_None) {
        throw dir_exception(*this);
    }
}

void Dir::Rename(UTF16String const& inNewName) {
    if (!IsPlainName(inNewName)) {
        throw rename_dir(*this, inNewName);
    }
    UTF16String const target = pathtext::Join(Parent().FullPath(), inNewName);
    FileErrorCode const code = platform::MoveFile(mHelper->FullNativePath(), platform::NativePath(target));
    if (code == kError_AlreadyExists) {
        throw rename_dir_already_exists(*this, inNewName);
    }
    if (code != kError_None) {
        throw rename_dir(*this, inNewName);
    }
    mHelper.reset(new DirHelper(DirHelper::StoredPath(), target));
}

}  // namespace filesupport
}  // namespace quorel
