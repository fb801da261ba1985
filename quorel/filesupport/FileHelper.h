// The path behind a File.
#ifndef QUOREL_FILESUPPORT_FILEHELPER_H
#define QUOREL_FILESUPPORT_FILEHELPER_H

#include <quorel/filesupport/PathBase.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <string>

namespace quorel {
namespace filesupport {

/// Holds the normalised path of a file: backslashes as separators, no doubled
/// backslash but a leading UNC pair, no long-path prefix ("\\?\" or
/// "\\?\UNC\").  "." and ".." components and the case of the text stay.
class QRL_EXPORT FileHelper : public PathHelperBase {
public:
    /// Normalises inPath.
    explicit FileHelper(UTF16String const& inPath);

    /// Converts inPath from the system's narrow encoding (UTF-8 on POSIX), then
    /// normalises.  Text that converts to nothing gives the empty path.
    explicit FileHelper(std::string const& inPath);

    /// The directory's path, one backslash, inName, normalised.
    FileHelper(Dir const& inDir, UTF16String const& inName);

private:
    friend class File;
    struct StoredPath {};
    FileHelper(StoredPath, UTF16String const& inPath);
};

}  // namespace filesupport
}  // namespace quorel

#endif
