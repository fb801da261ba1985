// FileHelper and DirHelper: the normalised paths behind File and Dir.
#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/DirHelper.h>
#include <quorel/filesupport/FileHelper.h>

#include "FilePlatform.h"
#include "PathText.h"

namespace quorel {
namespace filesupport {

FileHelper::FileHelper(UTF16String const& inPath) : mPath(pathtext::Normalize(inPath)) {}

FileHelper::FileHelper(std::string const& inPath) : FileHelper(platform::NarrowToUTF16(inPath)) {}

FileHelper::FileHelper(Dir const& inDir, UTF16String const& inName)
    : FileHelper(pathtext::Join(inDir.Helper().Path(), inName)) {}

FileHelper::FileHelper(StoredPath, UTF16String const& inPath) : mPath(inPath) {}

UTF16String const& FileHelper::Path() const { return mPath; }

UTF16String FileHelper::FullNativePath() const { return platform::NativePath(mPath); }

DirHelper::DirHelper(UTF16String const& inPath) : mPath(pathtext::NormalizeDirectory(inPath)) {}

DirHelper::DirHelper(StoredPath, UTF16String const& inPath) : mPath(inPath) {}

UTF16String const& DirHelper::Path() const { return mPath; }

UTF16String DirHelper::FullNativePath() const { return platform::NativePath(mPath); }

}  // namespace filesupport
}  // namespace quorel
