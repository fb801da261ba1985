// A fresh directory under the system's temporary directory, removed with
// everything in it when the test ends.
#ifndef QUOREL_TESTS_FILESUPPORT_TEMPDIRECTORY_H
#define QUOREL_TESTS_FILESUPPORT_TEMPDIRECTORY_H

#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/File.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace quorel {
namespace testing {

class TempDirectory {
public:
    TempDirectory() {
        char const* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base != nullptr && *base != 0 ? base : "/tmp") + "/quorel-files-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot make a temporary directory");
        }
        mPath = pattern;
    }
    ~TempDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TempDirectory(TempDirectory const&) = delete;
    TempDirectory& operator=(TempDirectory const&) = delete;

    std::string const& Path() const { return mPath; }
    std::string Path(std::string const& inName) const { return mPath + "/" + inName; }
    filesupport::Dir AsDir() const { return filesupport::Dir(Wide(mPath)); }
    filesupport::File FileNamed(char const* inName) const { return filesupport::File(AsDir(), Wide(inName)); }

    static UTF16String Wide(std::string const& inText) {
        return utility::UTF8to16(UTF8String(inText.begin(), inText.end()));
    }

private:
    std::string mPath;
};

}  // namespace testing
}  // namespace quorel

#endif
