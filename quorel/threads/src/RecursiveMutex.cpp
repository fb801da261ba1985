#include <quorel/threads/RecursiveMutex.h>

#include <quorel/threads/ThreadErrors.h>
#include <quorel/threads/ThreadTraceScope.h>

#include <utility>

namespace quorel {
namespace threads {

namespace {

std::unique_ptr<boost::recursive_mutex> NewMutex() {
    return CallTranslatingThreadErrors([] { return std::make_unique<boost::recursive_mutex>(); });
}

}  // namespace

RecursiveMutex::RecursiveMutex() : mMutex(NewMutex()) {}

RecursiveMutex::RecursiveMutex(std::string const& inName) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, inName, "RecursiveMutex", "Default Constructor",
                           false);
    mMutex = NewMutex();
}

RecursiveMutex::RecursiveMutex(RecursiveMutex& inOther) noexcept : mMutex(std::move(inOther.mMutex)) {}

RecursiveMutex::RecursiveMutex(RecursiveMutex&& inOther) noexcept : mMutex(std::move(inOther.mMutex)) {}

RecursiveMutex& RecursiveMutex::operator=(RecursiveMutex& inOther) noexcept {
    if (this != &inOther) {
        mMutex = std::move(inOther.mMutex);
    }
    return *this;
}

RecursiveMutex& RecursiveMutex::operator=(RecursiveMutex&& inOther) noexcept { return *this = inOther; }

RecursiveMutex::~RecursiveMutex() = default;

}  // namespace threads
}  // namespace quorel
