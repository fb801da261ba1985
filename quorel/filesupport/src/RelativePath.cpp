// The slash-separated relative path form and its conversions.
#include <quorel/filesupport/RelativePath.h>
#include <quorel/utility/UnicodeConversion.h>

#include <vector>

namespace quorel {
namespace filesupport {

namespace {

constexpr unsigned short kSlash = '/';

bool IsSeparator(unsigned short inUnit) { return inUnit == '/' || inUnit == '\\'; }

// The directories above inFile, from the top-level one down to its parent.
std::vector<Dir> Ancestors(File const& inFile) {
    std::vector<Dir> chain;
    Dir dir = inFile.Parent();
    chain.push_back(dir);
    while (!dir.IsTopLevelDir()) {
        dir = dir.Parent();
        chain.push_back(dir);
    }
    return std::vector<Dir>(chain.rbegin(), chain.rend());
}

std::size_t IndexOf(std::vector<Dir> const& inChain, Dir const& inDir) {
    for (std::size_t i = 0; i < inChain.size(); ++i) {
        if (inChain[i] == inDir) {
            return i;
        }
    }
    return inChain.size();
}

}  // namespace

bool IsNormalizedRelativePath(UTF16String const& inPath) {
    if (inPath.empty() || IsSeparator(inPath[0])) {
        return false;
    }
    return inPath.size() == 1 || inPath[1] != ':';
}

File MakeFileFromPath(UTF16String const& inPath, File const& inRelativeTo) {
    if (!IsNormalizedRelativePath(inPath)) {
        return File(inPath);
    }
    Dir dir = inRelativeTo.Parent();
    UTF16String rest = inPath;
    for (;;) {
        std::size_t const slash = rest.find(kSlash);
        if (slash == UTF16String::npos) {
            return File(dir, rest);
        }
        UTF16String const component = rest.substr(0, slash);
        rest.erase(0, slash + 1);
        if (component == utility::AsciiToUTF16("..")) {
            dir = dir.Parent();
        } else if (component != utility::AsciiToUTF16(".")) {
            dir = Dir(dir, component);
        }
        if (rest.empty()) {
            return File();
        }
    }
}

UTF16String MakeNormalizedRelativePath(File const& inFile, File const& inRelativeTo) {
    Dir dir = inRelativeTo.Parent();
    if (inFile.Parent() == dir) {
        return inFile.GetName();
    }
    std::vector<Dir> const chain = Ancestors(inFile);
    UTF16String result;
    std::size_t match = IndexOf(chain, dir);
    while (match == chain.size()) {
        result += utility::AsciiToUTF16("../");
        if (dir.IsTopLevelDir()) {
            return UTF16String();  // no common directory
        }
        dir = dir.Parent();
        match = IndexOf(chain, dir);
    }
    for (std::size_t i = match + 1; i < chain.size(); ++i) {
        result += chain[i].GetName();
        result.push_back(kSlash);
    }
    return result + inFile.GetName();
}

}  // namespace filesupport
}  // namespace quorel
