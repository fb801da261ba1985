// The error numbers of the file layer.  They are the operating system error
// numbers of the Win32 API, which the platform layer of every system reports,
// so that the tables of which failure raises which exception hold everywhere.
#ifndef QUOREL_FILESUPPORT_SRC_FILEERRORCODES_H
#define QUOREL_FILESUPPORT_SRC_FILEERRORCODES_H

#include <cstdint>

namespace quorel {
namespace filesupport {

using FileErrorCode = std::uint32_t;

constexpr FileErrorCode kError_None = 0;
constexpr FileErrorCode kError_FileNotFound = 2;
constexpr FileErrorCode kError_PathNotFound = 3;
constexpr FileErrorCode kError_TooManyOpenFiles = 4;
constexpr FileErrorCode kError_AccessDenied = 5;
constexpr FileErrorCode kError_InvalidHandle = 6;
constexpr FileErrorCode kError_NotEnoughMemory = 8;
constexpr FileErrorCode kError_InvalidAccess = 12;
constexpr FileErrorCode kError_NotSameDevice = 17;
constexpr FileErrorCode kError_NoMoreFiles = 18;
constexpr FileErrorCode kError_WriteProtect = 19;
constexpr FileErrorCode kError_WriteFault = 29;
constexpr FileErrorCode kError_GenFailure = 31;
constexpr FileErrorCode kError_SharingViolation = 32;
constexpr FileErrorCode kError_HandleEof = 38;
constexpr FileErrorCode kError_NotSupported = 50;
constexpr FileErrorCode kError_NetworkBusy = 54;
constexpr FileErrorCode kError_BadNetResponse = 58;
constexpr FileErrorCode kError_NetNameDeleted = 64;
constexpr FileErrorCode kError_NetworkAccessDenied = 65;
constexpr FileErrorCode kError_RequestNotAccepted = 71;
constexpr FileErrorCode kError_FileExists = 80;
constexpr FileErrorCode kError_CannotMake = 82;
constexpr FileErrorCode kError_InvalidPassword = 86;
constexpr FileErrorCode kError_InvalidParameter = 87;
constexpr FileErrorCode kError_DiskChange = 107;
constexpr FileErrorCode kError_DiskFull = 112;
constexpr FileErrorCode kError_InvalidName = 123;
constexpr FileErrorCode kError_DirNotEmpty = 145;
constexpr FileErrorCode kError_Busy = 170;
constexpr FileErrorCode kError_AlreadyExists = 183;
constexpr FileErrorCode kError_FilenameTooLong = 206;
constexpr FileErrorCode kError_FileTooLarge = 223;
constexpr FileErrorCode kError_SwapError = 999;
constexpr FileErrorCode kError_IoDevice = 1117;
constexpr FileErrorCode kError_DiskQuotaExceeded = 1295;
constexpr FileErrorCode kError_CantResolveFilename = 1921;

}  // namespace filesupport
}  // namespace quorel

#endif
