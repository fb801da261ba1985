// The file layer on POSIX: paths, names and operations by path.
#include "../FilePlatform.h"

#include "PosixErrors.h"
#include "PosixPaths.h"

#include <quorel/utility/UnicodeConversion.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorel {
namespace filesupport {
namespace platform {

namespace {

constexpr std::uint64_t kUnitsPerSecond = 10000000;
// Seconds from 1601-01-01 to 1970-01-01.
constexpr std::int64_t kEpochDifference = 11644473600LL;

std::uint64_t ToFileTime(std::int64_t inSeconds, std::uint32_t inNanoseconds) {
    return static_cast<std::uint64_t>(inSeconds + kEpochDifference) * kUnitsPerSecond + inNanoseconds / 100;
}

// True when another open file description holds a lock on the file: it is
// open through a platform stream (here or in another process), which keeps
// others from deleting, renaming or recreating it, as a handle without
// delete sharing does on Windows.
bool IsLockedByAnother(std::string const& inPath) {
    int const fd = open(inPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) {
        return false;
    }
    bool const locked = flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    close(fd);
    return locked;
}

bool IsDirectory(std::string const& inPath) {
    struct stat info;
    return stat(inPath.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool Exists(std::string const& inPath) {
    struct stat info;
    return lstat(inPath.c_str(), &info) == 0;
}

// stat of a system path, or the error it raised.
FileErrorCode Stat(std::string const& inPath, struct stat& outInfo) {
    return stat(inPath.c_str(), &outInfo) == 0 ? kError_None : LastError(inPath);
}

// For kernels without statx: the last write stands for both times.
FileErrorCode GetTimesWithoutBirth(std::string const& inPath, std::uint64_t& outCreated, std::uint64_t& outModified) {
    struct stat info;
    FileErrorCode const code = Stat(inPath, info);
    if (code == kError_None) {
        outModified = ToFileTime(info.st_mtim.tv_sec, static_cast<std::uint32_t>(info.st_mtim.tv_nsec));
        outCreated = outModified;
    }
    return code;
}

FileErrorCode Rename(std::string const& inFrom, std::string const& inTo) {
    if (renameat2(AT_FDCWD, inFrom.c_str(), AT_FDCWD, inTo.c_str(), RENAME_NOREPLACE) == 0) {
        return kError_None;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return LastError(inTo);
    }
    // The file system cannot refuse to replace by itself.
    if (Exists(inTo)) {
        return kError_AlreadyExists;
    }
    return rename(inFrom.c_str(), inTo.c_str()) == 0 ? kError_None : LastError(inTo);
}

// inCall(system path) for a path that has a system form, else kError_InvalidName.
template <class Call>
FileErrorCode OnPath(UTF16String const& inPath, Call inCall) {
    std::string path;
    return SystemPath(inPath, path) ? inCall(path) : kError_InvalidName;
}

// The stat of inPath, through OnPath.
FileErrorCode StatPath(UTF16String const& inPath, struct stat& outInfo) {
    return OnPath(inPath, [&](std::string const& inSystemPath) { return Stat(inSystemPath, outInfo); });
}

}  // namespace

bool SystemPath(UTF16String const& inPath, std::string& outPath) {
    if (inPath.find(static_cast<unsigned short>(0)) != UTF16String::npos) {
        return false;
    }
    UTF8String const utf8 = utility::UTF16to8(inPath);
    outPath.assign(utf8.begin(), utf8.end());
    return true;
}

UTF16String NativePath(UTF16String const& inNormalizedPath) {
    UTF16String native = inNormalizedPath;
    for (unsigned short& unit : native) {
        if (unit == '\\') {
            unit = '/';
        }
    }
    return native;
}

bool HasSingleRoot() noexcept { return true; }

UTF16String NarrowToUTF16(std::string const& inText) {
    return utility::UTF8to16(UTF8String(inText.begin(), inText.end()));
}

std::string UTF16ToNarrow(UTF16String const& inText) {
    UTF8String const utf8 = utility::UTF16to8(inText);
    return std::string(utf8.begin(), utf8.end());
}

FileErrorCode GetAttributes(UTF16String const& inPath, bool& outIsDirectory) {
    struct stat info;
    FileErrorCode const code = StatPath(inPath, info);
    if (code == kError_None) {
        outIsDirectory = S_ISDIR(info.st_mode);
    }
    return code;
}

FileErrorCode CreateEmptyFile(UTF16String const& inPath) {
    return OnPath(inPath, [](std::string const& inSystemPath) {
        int const fd = open(inSystemPath.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666);
        if (fd < 0) {
            return LastError(inSystemPath);
        }
        FileErrorCode result = kError_None;
        if (flock(fd, LOCK_EX | LOCK_NB) != 0 || ftruncate(fd, 0) != 0) {
            result = LastError(inSystemPath);
        }
        close(fd);
        return result;
    });
}

FileErrorCode DeleteFile(UTF16String const& inPath) {
    return OnPath(inPath, [](std::string const& inSystemPath) {
        if (IsLockedByAnother(inSystemPath)) {
            return kError_SharingViolation;
        }
        return unlink(inSystemPath.c_str()) == 0 ? kError_None : LastError(inSystemPath);
    });
}

FileErrorCode MoveFile(UTF16String const& inFrom, UTF16String const& inTo) {
    std::string from;
    std::string to;
    if (!SystemPath(inFrom, from) || !SystemPath(inTo, to)) {
        return kError_InvalidName;
    }
    if (!IsDirectory(from) && IsLockedByAnother(from)) {
        return kError_SharingViolation;
    }
    if (!Exists(from)) {
        return LastError(from);
    }
    return Rename(from, to);
}

FileErrorCode CreateDirectory(UTF16String const& inPath) {
    return OnPath(inPath, [](std::string const& inSystemPath) {
        return mkdir(inSystemPath.c_str(), 0777) == 0 ? kError_None : LastError(inSystemPath);
    });
}

FileErrorCode RemoveDirectory(UTF16String const& inPath) {
    return OnPath(inPath, [](std::string const& inSystemPath) {
        return rmdir(inSystemPath.c_str()) == 0 ? kError_None : LastError(inSystemPath);
    });
}

FileErrorCode GetFileTimes(UTF16String const& inPath, std::uint64_t& outCreated, std::uint64_t& outModified) {
    return OnPath(inPath, [&](std::string const& inSystemPath) {
        struct statx info;
        if (statx(AT_FDCWD, inSystemPath.c_str(), AT_STATX_SYNC_AS_STAT, STATX_MTIME | STATX_BTIME, &info) != 0) {
            return errno == ENOSYS ? GetTimesWithoutBirth(inSystemPath, outCreated, outModified)
                                   : LastError(inSystemPath);
        }
        outModified = ToFileTime(info.stx_mtime.tv_sec, info.stx_mtime.tv_nsec);
        // Where the file system keeps no birth time, the last write stands in.
        outCreated = (info.stx_mask & STATX_BTIME) != 0 ? ToFileTime(info.stx_btime.tv_sec, info.stx_btime.tv_nsec)
                                                        : outModified;
        return kError_None;
    });
}

FileErrorCode GetFileSize(UTF16String const& inPath, std::uint64_t& outSize) {
    struct stat info;
    FileErrorCode const code = StatPath(inPath, info);
    if (code == kError_None) {
        outSize = S_ISDIR(info.st_mode) ? 0 : static_cast<std::uint64_t>(info.st_size);
    }
    return code;
}

}  // namespace platform
}  // namespace filesupport
}  // namespace quorel
