// What File and Dir, and the helpers behind them, have in common: a normalised
// path and the operations that read it or the times of what it names.
#ifndef QUOREL_FILESUPPORT_PATHBASE_H
#define QUOREL_FILESUPPORT_PATHBASE_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>
#include <memory>
#include <string>

namespace quorel {
namespace filesupport {

class Dir;

/// The stored path of a FileHelper or DirHelper; each says how it normalises.
class QRL_EXPORT PathHelperBase {
public:
    /// The stored, normalised path.
    UTF16String const& Path() const;

    /// The path as the system's calls take it.  On POSIX every backslash
    /// becomes a slash.
    UTF16String FullNativePath() const;

protected:
    explicit PathHelperBase(UTF16String const& inNormalizedPath);

private:
    UTF16String mPath;
};

/// The common part of File and Dir (Self), which hold their path in a
/// HelperType and take its constructors.  Constructing one touches no disk;
/// it may name nothing that exists.  An empty path means "not set".  A copy builds the new helper
/// first, then replaces the old one.  File times are 100 ns units since
/// 1601-01-01 UTC.  The library instantiates it for File and Dir only, with
/// every member defined there (none inline).
template <class Self, class HelperType>
class QRL_EXPORT PathBase {
public:
    /// The empty path.
    PathBase();
    /// inPath, normalised as HelperType does it.
    explicit PathBase(UTF16String const& inPath);
    /// inParent's path, a backslash unless it ends in one, and inName,
    /// normalised as HelperType does it.  With an empty parent: inName alone.
    PathBase(Dir const& inParent, UTF16String const& inName);
    /// Takes the helper's path unchanged.
    explicit PathBase(HelperType const& inHelper);

    /// The stored path.
    UTF16String FullPath() const;
    /// The stored path in the system's narrow encoding (UTF-8 on POSIX).
    std::string FullPathMultiByte() const;
    /// The last component (with its extension, for a file): the text behind
    /// the last separator, or the whole path when there is none.
    UTF16String GetName() const;
    /// The directory above (for a file: the one that holds it), the text before
    /// the last separator.  Up from "C:\a" come "C:" and then the empty Dir.
    /// On POSIX the parent of "\x" is the root "\", whose parent is the empty
    /// Dir.
    Dir Parent() const;

    /// Creation time; the not-found exception of Self (file_not_found_exception,
    /// dir_not_found_exception) when nothing is there, the general one
    /// (file_exception, dir_exception) for other failures.  Where the file
    /// system keeps no birth time this is the last-write time.
    std::uint64_t Created() const;
    /// Last-write time; failures as Created.
    std::uint64_t Modified() const;

    /// The stored paths are equal unit for unit: case counts.  For the system's
    /// notion of equal names use CompareFileNames.
    bool operator==(PathBase const& inOther) const;
    bool operator!=(PathBase const& inOther) const;

    /// The helper that holds the path.
    HelperType const& Helper() const;

protected:
    PathBase(PathBase const& inOther);
    PathBase& operator=(PathBase const& inOther);
    ~PathBase();

    std::unique_ptr<HelperType> mHelper;
};

}  // namespace filesupport
}  // namespace quorel

#endif
