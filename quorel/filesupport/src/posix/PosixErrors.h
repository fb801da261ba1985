// The POSIX side of the file layer's error numbers: one mapping from errno.
#ifndef QUOREL_FILESUPPORT_SRC_POSIX_POSIXERRORS_H
#define QUOREL_FILESUPPORT_SRC_POSIX_POSIXERRORS_H

#include "../FileErrorCodes.h"

#include <string>

namespace quorel {
namespace filesupport {
namespace platform {

/// The error number for inErrno, raised by a call on inPath (a system path, or
/// empty when the call took a handle).  ENOENT becomes "file not found" when
/// the path's directory exists and "path not found" when it does not, as the
/// two are told apart on Windows.
FileErrorCode ErrorFromErrno(int inErrno, std::string const& inPath = std::string());

/// ErrorFromErrno of the current errno.
FileErrorCode LastError(std::string const& inPath = std::string());

}  // namespace platform
}  // namespace filesupport
}  // namespace quorel

#endif
