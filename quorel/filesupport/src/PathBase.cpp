// What File and Dir share, and the helpers that hold their paths.
#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/File.h>

#include "FileFailures.h"
#include "FilePlatform.h"
#include "PathText.h"

namespace quorel {
namespace filesupport {

namespace {

// Both times of what inTarget names; raises its not-found or general exception.
template <class Target>
FileTimes ReadTimes(Target const& inTarget) {
    FileTimes times;
    ThrowAccessFailure(inTarget,
                       platform::GetFileTimes(inTarget.Helper().FullNativePath(), times.mCreated, times.mModified));
    return times;
}

}  // namespace

PathHelperBase::PathHelperBase(UTF16String const& inNormalizedPath) : mPath(inNormalizedPath) {}

UTF16String const& PathHelperBase::Path() const { return mPath; }

UTF16String PathHelperBase::FullNativePath() const { return platform::NativePath(mPath); }

FileHelper::FileHelper(UTF16String const& inPath) : PathHelperBase(pathtext::Normalize(inPath)) {}

FileHelper::FileHelper(std::string const& inPath) : FileHelper(platform::NarrowToUTF16(inPath)) {}

FileHelper::FileHelper(Dir const& inDir, UTF16String const& inName)
    : FileHelper(pathtext::Join(inDir.Helper().Path(), inName)) {}

FileHelper::FileHelper(StoredPath, UTF16String const& inPath) : PathHelperBase(inPath) {}

DirHelper::DirHelper(UTF16String const& inPath) : PathHelperBase(pathtext::NormalizeDirectory(inPath)) {}

DirHelper::DirHelper(StoredPath, UTF16String const& inPath) : PathHelperBase(inPath) {}

template <class Self, class HelperType>
PathBase<Self, HelperType>::PathBase() : mHelper(new HelperType(UTF16String())) {}

template <class Self, class HelperType>
PathBase<Self, HelperType>::PathBase(UTF16String const& inPath) : mHelper(new HelperType(inPath)) {}

template <class Self, class HelperType>
PathBase<Self, HelperType>::PathBase(Dir const& inParent, UTF16String const& inName)
    : mHelper(new HelperType(pathtext::Join(inParent.Helper().Path(), inName))) {}

template <class Self, class HelperType>
PathBase<Self, HelperType>::PathBase(HelperType const& inHelper) : mHelper(new HelperType(inHelper)) {}

template <class Self, class HelperType>
PathBase<Self, HelperType>::PathBase(PathBase const& inOther) : mHelper(new HelperType(*inOther.mHelper)) {}

template <class Self, class HelperType>
PathBase<Self, HelperType>& PathBase<Self, HelperType>::operator=(PathBase const& inOther) {
    std::unique_ptr<HelperType> replacement(new HelperType(*inOther.mHelper));
    mHelper = std::move(replacement);
    return *this;
}

// Given a body: GCC emitted no destructor for "= default" in the explicit
// instantiations below, and hosts call the library's.
template <class Self, class HelperType>
PathBase<Self, HelperType>::~PathBase() {}

template <class Self, class HelperType>
UTF16String PathBase<Self, HelperType>::FullPath() const {
    return mHelper->Path();
}

template <class Self, class HelperType>
std::string PathBase<Self, HelperType>::FullPathMultiByte() const {
    return platform::UTF16ToNarrow(mHelper->Path());
}

template <class Self, class HelperType>
UTF16String PathBase<Self, HelperType>::GetName() const {
    return pathtext::Name(mHelper->Path());
}

template <class Self, class HelperType>
Dir PathBase<Self, HelperType>::Parent() const {
    return Dir(pathtext::ParentText(mHelper->Path()));
}

template <class Self, class HelperType>
std::uint64_t PathBase<Self, HelperType>::Created() const {
    return ReadTimes(static_cast<Self const&>(*this)).mCreated;
}

template <class Self, class HelperType>
std::uint64_t PathBase<Self, HelperType>::Modified() const {
    return ReadTimes(static_cast<Self const&>(*this)).mModified;
}

template <class Self, class HelperType>
bool PathBase<Self, HelperType>::operator==(PathBase const& inOther) const {
    return mHelper->Path() == inOther.mHelper->Path();
}

template <class Self, class HelperType>
bool PathBase<Self, HelperType>::operator!=(PathBase const& inOther) const {
    return !(*this == inOther);
}

template <class Self, class HelperType>
HelperType const& PathBase<Self, HelperType>::Helper() const {
    return *mHelper;
}

template class PathBase<Dir, DirHelper>;
template class PathBase<File, FileHelper>;

}  // namespace filesupport
}  // namespace quorel
