// Native paths as the POSIX calls take them.
#ifndef QUOREL_FILESUPPORT_SRC_POSIX_POSIXPATHS_H
#define QUOREL_FILESUPPORT_SRC_POSIX_POSIXPATHS_H

#include <quorel/utility/UnicodeString.h>

#include <string>

namespace quorel {
namespace filesupport {
namespace platform {

/// The UTF-8 bytes of a native path.  False for a path that holds a nul unit,
/// which no system call could name (it would silently name a shorter path).
bool SystemPath(UTF16String const& inPath, std::string& outPath);

}  // namespace platform
}  // namespace filesupport
}  // namespace quorel

#endif
