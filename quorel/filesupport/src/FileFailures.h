// Which exception a failed file or directory operation raises.
#ifndef QUOREL_FILESUPPORT_SRC_FILEFAILURES_H
#define QUOREL_FILESUPPORT_SRC_FILEFAILURES_H

#include "FileErrorCodes.h"

#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/File.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>

namespace quorel {
namespace filesupport {

/// Creation and last-write time, in 100 ns units since 1601.
struct FileTimes {
    std::uint64_t mCreated = 0;
    std::uint64_t mModified = 0;
};

/// Raises the create_exception subclass for inCode.  Does nothing for 0.
void ThrowCreateFailure(File const& inFile, FileErrorCode inCode);

/// Raises file_not_found_exception for "file not found", file_exception for
/// any other error.  Does nothing for 0.
void ThrowAccessFailure(File const& inFile, FileErrorCode inCode);

/// The same for a directory: dir_not_found_exception or dir_exception.
void ThrowAccessFailure(Dir const& inDir, FileErrorCode inCode);

/// True when inName can be given to Rename: not empty and free of separators.
bool IsPlainName(UTF16String const& inName);

}  // namespace filesupport
}  // namespace quorel

#endif
