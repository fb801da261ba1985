// The text rules of stored paths.
#include "PathText.h"

#include "FilePlatform.h"

namespace quorel {
namespace filesupport {
namespace pathtext {

namespace {

UTF16String const kRoot(1, kBackslash);

bool StartsWith(UTF16String const& inText, char const* inPrefix) {
    std::size_t i = 0;
    for (; inPrefix[i] != 0; ++i) {
        if (i >= inText.size() || inText[i] != static_cast<unsigned char>(inPrefix[i])) {
            return false;
        }
    }
    return true;
}

void SlashesToBackslashes(UTF16String& ioPath) {
    for (unsigned short& unit : ioPath) {
        if (unit == kSlash) {
            unit = kBackslash;
        }
    }
}

void RemoveLongPathPrefix(UTF16String& ioPath) {
    if (StartsWith(ioPath, "\\\\?\\UNC\\")) {
        ioPath.erase(2, 6);
    } else if (StartsWith(ioPath, "\\\\?\\")) {
        ioPath.erase(0, 4);
    }
}

// Drops the second backslash of every pair that starts at index 1 or later.
void ReduceDoubledBackslashes(UTF16String& ioPath) {
    std::size_t out = 0;
    for (std::size_t in = 0; in < ioPath.size(); ++in) {
        bool const doubled = out >= 2 && ioPath[in] == kBackslash && ioPath[out - 1] == kBackslash;
        if (!doubled) {
            ioPath[out++] = ioPath[in];
        }
    }
    ioPath.resize(out);
}

std::size_t LastSeparator(UTF16String const& inPath) {
    for (std::size_t i = inPath.size(); i > 0; --i) {
        if (inPath[i - 1] == kBackslash || inPath[i - 1] == kSlash) {
            return i - 1;
        }
    }
    return UTF16String::npos;
}

// The index of the dot that starts the extension, or npos.
std::size_t ExtensionDot(UTF16String const& inPath) {
    std::size_t const separator = LastSeparator(inPath);
    std::size_t const dot = inPath.rfind(static_cast<unsigned short>('.'));
    if (separator == UTF16String::npos || dot == UTF16String::npos || dot < separator) {
        return UTF16String::npos;
    }
    return dot;
}

bool IsRoot(UTF16String const& inPath) { return platform::HasSingleRoot() && inPath == kRoot; }

}  // namespace

UTF16String Normalize(UTF16String const& inPath) {
    UTF16String path = inPath;
    SlashesToBackslashes(path);
    RemoveLongPathPrefix(path);
    ReduceDoubledBackslashes(path);
    return path;
}

UTF16String NormalizeDirectory(UTF16String const& inPath) {
    if (IsRoot(inPath)) {
        return inPath;
    }
    if (!inPath.empty() && inPath.back() == kBackslash) {
        return Normalize(inPath.substr(0, inPath.size() - 1));
    }
    return Normalize(inPath);
}

UTF16String Join(UTF16String const& inDirectory, UTF16String const& inName) {
    if (inDirectory.empty()) {
        return inName;
    }
    UTF16String path = inDirectory;
    if (path.back() != kBackslash) {
        path.push_back(kBackslash);
    }
    return path + inName;
}

UTF16String Name(UTF16String const& inPath) {
    std::size_t const separator = LastSeparator(inPath);
    return separator == UTF16String::npos ? inPath : inPath.substr(separator + 1);
}

UTF16String Title(UTF16String const& inPath) {
    std::size_t const separator = LastSeparator(inPath);
    if (separator == UTF16String::npos) {
        return inPath;
    }
    std::size_t const dot = ExtensionDot(inPath);
    std::size_t const end = dot == UTF16String::npos ? inPath.size() : dot;
    return inPath.substr(separator + 1, end - separator - 1);
}

UTF16String Extension(UTF16String const& inPath) {
    std::size_t const dot = ExtensionDot(inPath);
    return dot == UTF16String::npos ? UTF16String() : inPath.substr(dot);
}

UTF16String ParentText(UTF16String const& inPath) {
    std::size_t const separator = LastSeparator(inPath);
    if (separator == UTF16String::npos) {
        return UTF16String();
    }
    if (separator == 0 && platform::HasSingleRoot() && inPath.size() > 1) {
        return kRoot;
    }
    return inPath.substr(0, separator);
}

bool IsTopLevel(UTF16String const& inPath) {
    std::size_t const separator = LastSeparator(inPath);
    if (separator == UTF16String::npos) {
        return true;
    }
    if (separator != 0) {
        return false;
    }
    return !platform::HasSingleRoot() || IsRoot(inPath);
}

}  // namespace pathtext
}  // namespace filesupport
}  // namespace quorel
