// errno to the file layer's error numbers.
#include "PosixErrors.h"

#include <cerrno>
#include <sys/stat.h>

namespace quorel {
namespace filesupport {
namespace platform {

namespace {

struct ErrnoMapping {
    int mErrno;
    FileErrorCode mCode;
};

constexpr ErrnoMapping kMappings[] = {
    {ENOTDIR, kError_PathNotFound},
    {EACCES, kError_AccessDenied},
    {EPERM, kError_AccessDenied},
    {EISDIR, kError_AccessDenied},
    {EROFS, kError_WriteProtect},
    {EEXIST, kError_AlreadyExists},
    {ENOTEMPTY, kError_DirNotEmpty},
    {EBUSY, kError_Busy},
    {ETXTBSY, kError_SharingViolation},
    {EWOULDBLOCK, kError_SharingViolation},
    {ENAMETOOLONG, kError_FilenameTooLong},
    {ENOSPC, kError_DiskFull},
    {EDQUOT, kError_DiskQuotaExceeded},
    {EFBIG, kError_FileTooLarge},
    {EINVAL, kError_InvalidParameter},
    {EBADF, kError_InvalidHandle},
    {EIO, kError_IoDevice},
    {ENOMEM, kError_NotEnoughMemory},
    {EMFILE, kError_TooManyOpenFiles},
    {ENFILE, kError_TooManyOpenFiles},
    {EXDEV, kError_NotSameDevice},
    {ELOOP, kError_CantResolveFilename},
    {EILSEQ, kError_InvalidName},
    {ENOSYS, kError_NotSupported},
    {EOPNOTSUPP, kError_NotSupported},
};

// The directory part of a system path ("." for a bare name).
std::string DirectoryOf(std::string const& inPath) {
    std::string::size_type const slash = inPath.find_last_of('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : inPath.substr(0, slash);
}

FileErrorCode NotFound(std::string const& inPath) {
    struct stat info;
    bool const directoryExists = stat(DirectoryOf(inPath).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
    return directoryExists ? kError_FileNotFound : kError_PathNotFound;
}

}  // namespace

FileErrorCode ErrorFromErrno(int inErrno, std::string const& inPath) {
    if (inErrno == 0) {
        return kError_None;
    }
    if (inErrno == ENOENT) {
        return inPath.empty() ? kError_FileNotFound : NotFound(inPath);
    }
    for (ErrnoMapping const& mapping : kMappings) {
        if (mapping.mErrno == inErrno) {
            return mapping.mCode;
        }
    }
    return kError_GenFailure;
}

FileErrorCode LastError(std::string const& inPath) {
    int const saved = errno;
    return ErrorFromErrno(saved, inPath);
}

}  // namespace platform
}  // namespace filesupport
}  // namespace quorel
