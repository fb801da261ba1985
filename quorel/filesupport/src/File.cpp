// File: the name parts of a file path and the operations on what it names.
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/FileExceptions.h>
#include <quorel/utility/CaseMapping.h>

#include "FileFailures.h"
#include "FilePlatform.h"
#include "PathText.h"

namespace quorel {
namespace filesupport {

UTF16String File::GetTitle() const { return pathtext::Title(mHelper->Path()); }

UTF16String File::GetExtension(bool inLowerCase) const {
    UTF16String const extension = pathtext::Extension(mHelper->Path());
    return inLowerCase ? utility::LowerCase(extension) : extension;
}

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

FileHelper& File::Helper() { return *mHelper; }

}  // namespace filesupport
}  // namespace quorel
