// File: a normalised file path and the operations on what lies there.
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/FileExceptions.h>
#include <quorel/utility/CaseMapping.h>

#include "FileFailures.h"
#include "FilePlatform.h"
#include "PathText.h"

namespace quorel {
namespace filesupport {

namespace {

// Both times of what inTarget names; raises the not-found or general exception.
FileTimes ReadTimes(File const& inTarget) {
    FileTimes times;
    ThrowFileAccessFailure(inTarget,
                           platform::GetFileTimes(inTarget.Helper().FullNativePath(), times.mCreated, times.mModified));
    return times;
}

}  // namespace

File::File() : mHelper(new FileHelper(UTF16String())) {}

File::File(UTF16String const& inPath) : mHelper(new FileHelper(inPath)) {}

File::File(Dir const& inDir, UTF16String const& inName) : mHelper(new FileHelper(inDir, inName)) {}

File::File(FileHelper const& inHelper) : mHelper(new FileHelper(inHelper)) {}

File::File(File const& inOther) : mHelper(new FileHelper(*inOther.mHelper)) {}

File& File::operator=(File const& inOther) {
    std::unique_ptr<FileHelper> replacement(new FileHelper(*inOther.mHelper));
    mHelper = std::move(replacement);
    return *this;
}

File::~File() = default;

UTF16String File::FullPath() const { return mHelper->Path(); }

std::string File::FullPathMultiByte() const { return platform::UTF16ToNarrow(mHelper->Path()); }

UTF16String File::GetName() const { return pathtext::Name(mHelper->Path()); }

UTF16String File::GetTitle() const { return pathtext::Title(mHelper->Path()); }

UTF16String File::GetExtension(bool inLowerCase) const {
    UTF16String const extension = pathtext::Extension(mHelper->Path());
    return inLowerCase ? utility::LowerCase(extension) : extension;
}

Dir File::Parent() const { return Dir(pathtext::ParentText(mHelper->Path())); }

bool File::Exists() const {
    bool isDirectory = false;
    return platform::GetAttributes(mHelper->FullNativePath(), isDirectory) == kError_None;
}

void File::Create() const { ThrowCreateFailure(*this, platform::CreateEmptyFile(mHelper->FullNativePath())); }

void File::Delete() const {
    if (platform::DeleteFile(mHelper->FullNativePath()) != kError_None) {
        throw file_delete_exception(*this);
    }
}

void File::Rename(UTF16String const& inNewName) {
    if (!IsPlainName(inNewName)) {
        throw rename_file(*this, inNewName);
    }
    UTF16String const target = pathtext::Join(Parent().FullPath(), inNewName);
    if (platform::MoveFile(mHelper->FullNativePath(), platform::NativePath(target)) != kError_None) {
        throw rename_file(*this, inNewName);
    }
    mHelper.reset(new FileHelper(FileHelper::StoredPath(), target));
}

std::uint64_t File::Created() const { return ReadTimes(*this).mCreated; }

std::uint64_t File::Modified() const { return ReadTimes(*this).mModified; }

std::uint64_t File::Size(FileSizeSelector inSelector) const {
    switch (inSelector) {
        case kFileSize_DataLogical:
        case kFileSize_DataPhysical:
        case kFileSize_TotalLogical:
        case kFileSize_TotalPhysical:
            break;
        default:
            return 0;
    }
    std::uint64_t size = 0;
    return platform::GetFileSize(mHelper->FullNativePath(), size) == kError_None ? size : 0;
}

bool File::operator==(File const& inOther) const { return mHelper->Path() == inOther.mHelper->Path(); }

FileHelper const& File::Helper() const { return *mHelper; }

FileHelper& File::Helper() { return *mHelper; }

}  // namespace filesupport
}  // namespace quorel
