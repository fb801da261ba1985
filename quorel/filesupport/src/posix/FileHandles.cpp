// The file layer on POSIX: open files.  Sharing modes are advisory flock
// locks: shared for readers, exclusive for the writer, taken without waiting.
#include "../FilePlatform.h"

#include "PosixErrors.h"
#include "PosixPaths.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorel {
namespace filesupport {
namespace platform {

namespace {

int Descriptor(FileHandle inHandle) { return static_cast<int>(inHandle); }

// Opening a directory as a file is refused, as on Windows.
FileErrorCode CheckRegular(int inFd) {
    struct stat info;
    if (fstat(inFd, &info) != 0) {
        return LastError();
    }
    return S_ISDIR(info.st_mode) ? kError_AccessDenied : kError_None;
}

}  // namespace

FileErrorCode OpenFile(UTF16String const& inPath, OpenMode inMode, FileHandle& outHandle) {
    outHandle = kInvalidHandle;
    std::string path;
    if (!SystemPath(inPath, path)) {
        return kError_InvalidName;
    }
    bool const reading = inMode == OpenMode::kReadShared;
    int const fd = open(path.c_str(), (reading ? O_RDONLY : O_WRONLY) | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) {
        return LastError(path);
    }
    FileErrorCode result = CheckRegular(fd);
    if (result == kError_None && flock(fd, (reading ? LOCK_SH : LOCK_EX) | LOCK_NB) != 0) {
        result = LastError(path);
    }
    if (result != kError_None) {
        close(fd);
        return result;
    }
    outHandle = fd;
    return kError_None;
}

FileErrorCode ReadFile(FileHandle inHandle, unsigned char* outDest, std::uint32_t inCount, std::uint32_t& outRead) {
    outRead = 0;
    while (outRead < inCount) {
        ssize_t const got = read(Descriptor(inHandle), outDest + outRead, inCount - outRead);
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return LastError();
        }
        if (got == 0) {
            break;  // end of file
        }
        outRead += static_cast<std::uint32_t>(got);
    }
    return kError_None;
}

FileErrorCode WriteFile(FileHandle inHandle, unsigned char const* inSource, std::uint32_t inCount) {
    std::uint32_t written = 0;
    while (written < inCount) {
        ssize_t const put = write(Descriptor(inHandle), inSource + written, inCount - written);
        if (put < 0) {
            if (errno == EINTR) {
                continue;
            }
            return LastError();
        }
        if (put == 0) {
            return kError_DiskFull;
        }
        written += static_cast<std::uint32_t>(put);
    }
    return kError_None;
}

FileErrorCode SeekFile(FileHandle inHandle, std::uint64_t inPosition) {
    if (inPosition > static_cast<std::uint64_t>(INT64_MAX)) {
        return kError_InvalidParameter;
    }
    return lseek(Descriptor(inHandle), static_cast<off_t>(inPosition), SEEK_SET) < 0 ? LastError() : kError_None;
}

FileErrorCode TellFile(FileHandle inHandle, std::uint64_t& outPosition) {
    off_t const position = lseek(Descriptor(inHandle), 0, SEEK_CUR);
    if (position < 0) {
        return LastError();
    }
    outPosition = static_cast<std::uint64_t>(position);
    return kError_None;
}

FileErrorCode SizeOfFile(FileHandle inHandle, std::uint64_t& outSize) {
    struct stat info;
    if (fstat(Descriptor(inHandle), &info) != 0) {
        return LastError();
    }
    outSize = static_cast<std::uint64_t>(info.st_size);
    return kError_None;
}

void CloseFile(FileHandle inHandle) noexcept {
    if (inHandle != kInvalidHandle) {
        close(Descriptor(inHandle));
    }
}

}  // namespace platform
}  // namespace filesupport
}  // namespace quorel
