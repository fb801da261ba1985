// What the file layer needs of the operating system, behind one small internal
// interface so that each platform supplies its own (src/posix/ on POSIX).
//
// Every path argument is a full native path as NativePath makes it.  Every
// operation that can fail returns an error number of FileErrorCodes.h, 0 for
// success; the platform layer maps its own errors to them in one place.
#ifndef QUOREL_FILESUPPORT_SRC_FILEPLATFORM_H
#define QUOREL_FILESUPPORT_SRC_FILEPLATFORM_H

#include "FileErrorCodes.h"

#include <quorel/utility/UnicodeString.h>

#include <cstdint>
#include <string>

namespace quorel {
namespace filesupport {
namespace platform {

// ---- Paths and names ----

/// The form of a normalised (backslashed) path that the system calls take.
UTF16String NativePath(UTF16String const& inNormalizedPath);

/// True where a single backslash names the root of the one file tree (POSIX):
/// "\" is then a directory of its own, the parent of "\x", and top level.
bool HasSingleRoot() noexcept;

/// Text in the system's narrow encoding to UTF-16 and back.
UTF16String NarrowToUTF16(std::string const& inText);
std::string UTF16ToNarrow(UTF16String const& inText);

// ---- Files and directories by path ----

/// kError_None when something exists at the path; outIsDirectory tells what.
FileErrorCode GetAttributes(UTF16String const& inPath, bool& outIsDirectory);

/// Creates the file or empties an existing one, taking it exclusively for the
/// moment, then closes it.
FileErrorCode CreateEmptyFile(UTF16String const& inPath);

FileErrorCode DeleteFile(UTF16String const& inPath);

/// Moves a file or directory; an existing target is an error, not replaced.
FileErrorCode MoveFile(UTF16String const& inFrom, UTF16String const& inTo);

/// Creates one directory level; kError_AlreadyExists when the name is taken.
FileErrorCode CreateDirectory(UTF16String const& inPath);

/// Removes an empty directory.
FileErrorCode RemoveDirectory(UTF16String const& inPath);

/// Creation and last-write time, in 100 ns units since 1601-01-01 UTC.
FileErrorCode GetFileTimes(UTF16String const& inPath, std::uint64_t& outCreated, std::uint64_t& outModified);

/// The size in bytes of a file; 0 for a directory.
FileErrorCode GetFileSize(UTF16String const& inPath, std::uint64_t& outSize);

// ---- Open files ----

using FileHandle = std::intptr_t;
constexpr FileHandle kInvalidHandle = -1;

enum class OpenMode {
    kReadShared,      ///< read; other readers allowed, no writer
    kWriteExclusive   ///< write; no other opener at all
};

/// Opens an existing file without creating or truncating it.
FileErrorCode OpenFile(UTF16String const& inPath, OpenMode inMode, FileHandle& outHandle);

/// Reads up to inCount bytes; outRead < inCount only at the end of the file.
FileErrorCode ReadFile(FileHandle inHandle, unsigned char* outDest, std::uint32_t inCount, std::uint32_t& outRead);

/// Writes all inCount bytes.
FileErrorCode WriteFile(FileHandle inHandle, unsigned char const* inSource, std::uint32_t inCount);

FileErrorCode SeekFile(FileHandle inHandle, std::uint64_t inPosition);
FileErrorCode TellFile(FileHandle inHandle, std::uint64_t& outPosition);
FileErrorCode SizeOfFile(FileHandle inHandle, std::uint64_t& outSize);

/// Closes the handle; a failure is ignored.
void CloseFile(FileHandle inHandle) noexcept;

}  // namespace platform
}  // namespace filesupport
}  // namespace quorel

#endif
