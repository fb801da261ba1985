// Which exception a failed file or directory operation raises.
#include "FileFailures.h"

#include <quorel/filesupport/FileExceptions.h>

#include <algorithm>

namespace quorel {
namespace filesupport {

namespace {

constexpr FileErrorCode kCreateNotFound[] = {kError_FileNotFound, kError_InvalidHandle, kError_NoMoreFiles,
                                             kError_DiskChange};
constexpr FileErrorCode kCreateAccessDenied[] = {
    kError_AccessDenied,        kError_InvalidAccess,  kError_WriteFault,     kError_NetworkBusy,
    kError_BadNetResponse,      kError_NetNameDeleted, kError_NetworkAccessDenied, kError_RequestNotAccepted,
    kError_FileExists,          kError_CannotMake,     kError_InvalidPassword, kError_Busy,
    kError_AlreadyExists,       kError_SwapError};

template <std::size_t inSize>
bool Contains(FileErrorCode const (&inCodes)[inSize], FileErrorCode inCode) {
    return std::find(inCodes, inCodes + inSize, inCode) != inCodes + inSize;
}

}  // namespace

void ThrowCreateFailure(File const& inFile, FileErrorCode inCode) {
    if (inCode == kError_None) {
        return;
    }
    if (Contains(kCreateNotFound, inCode)) {
        throw create_fnf_exception(inFile);
    }
    if (inCode == kError_PathNotFound) {
        throw create_invalidpath_exception(inFile);
    }
    if (inCode == kError_WriteProtect) {
        throw create_locked_exception(inFile);
    }
    if (Contains(kCreateAccessDenied, inCode)) {
        throw create_accessdenied_exception(inFile);
    }
    throw create_exception(inFile);
}

void ThrowAccessFailure(File const& inFile, FileErrorCode inCode) {
    if (inCode == kError_FileNotFound) {
        throw file_not_found_exception(inFile);
    }
    if (inCode != kError_None) {
        throw file_exception(inFile);
    }
}

void ThrowAccessFailure(Dir const& inDir, FileErrorCode inCode) {
    if (inCode == kError_FileNotFound) {
        throw dir_not_found_exception(inDir);
    }
    if (inCode != kError_None) {
        throw dir_exception(inDir);
    }
}

bool IsPlainName(UTF16String const& inName) {
    return !inName.empty() && inName.find(static_cast<unsigned short>('\\')) == UTF16String::npos &&
           inName.find(static_cast<unsigned short>('/')) == UTF16String::npos;
}

}  // namespace filesupport
}  // namespace quorel
