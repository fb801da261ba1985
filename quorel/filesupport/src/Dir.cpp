// Dir: a normalised directory path and the operations on what lies there.
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

// Both times of what inTarget names; raises the not-found or general exception.
FileTimes ReadTimes(Dir const& inTarget) {
    FileTimes times;
    ThrowDirAccessFailure(inTarget,
                          platform::GetFileTimes(inTarget.Helper().FullNativePath(), times.mCreated, times.mModified));
    return times;
}

}  // namespace

Dir::Dir() : mHelper(new DirHelper(DirHelper::StoredPath(), UTF16String())) {}

Dir::Dir(UTF16String const& inPath) : mHelper(new DirHelper(inPath)) {}

Dir::Dir(Dir const& inParent, UTF16String const& inName)
    : mHelper(new DirHelper(pathtext::Join(inParent.mHelper->Path(), inName))) {}

Dir::Dir(DirHelper const& inHelper) : mHelper(new DirHelper(inHelper)) {}

Dir::Dir(Dir const& inOther) : mHelper(new DirHelper(*inOther.mHelper)) {}

Dir& Dir::operator=(Dir const& inOther) {
    std::unique_ptr<DirHelper> replacement(new DirHelper(*inOther.mHelper));
    mHelper = std::move(replacement);
    return *this;
}

Dir::~Dir() = default;

UTF16String Dir::FullPath() const { return mHelper->Path(); }

std::string Dir::FullPathMultiByte() const { return platform::UTF16ToNarrow(mHelper->Path()); }

UTF16String Dir::GetName() const { return pathtext::Name(mHelper->Path()); }

Dir Dir::Parent() const { return Dir(pathtext::ParentText(mHelper->Path())); }

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

std::uint64_t Dir::Created() const { return ReadTimes(*this).mCreated; }

std::uint64_t Dir::Modified() const { return ReadTimes(*this).mModified; }

bool Dir::operator==(Dir const& inOther) const { return mHelper->Path() == inOther.mHelper->Path(); }

DirHelper const& Dir::Helper() const { return *mHelper; }

}  // namespace filesupport
}  // namespace quorel
