#include <quorel/threads/ThreadTraceScope.h>

#include <atomic>

namespace quorel {
namespace threads {

namespace {

std::atomic<ThreadTraceWriter> S_writerP{nullptr};

void Write(std::string const& inCategory, std::int32_t inVolume, std::string const& inText) {
    if (ThreadTraceWriter const writer = S_writerP.load(std::memory_order_acquire)) {
        writer(inCategory, inVolume, inText);
    }
}

}  // namespace

ThreadTraceWriter SetThreadTraceWriter(ThreadTraceWriter inWriter) noexcept {
    return S_writerP.exchange(inWriter, std::memory_order_acq_rel);
}

void ThreadTraceScope::Begin(std::string_view inCategory, std::string_view inName, std::string_view inClass,
                             std::string_view inOperation) {
    mCategory.assign(inCategory);
    mMessage.reserve(inName.size() + inClass.size() + inOperation.size() + 6);
    mMessage.append(inName).append(" - ").append(inClass).append(" - ").append(inOperation);
    Write(mCategory, mVolume, "Begin - " + mMessage);
}

void ThreadTraceScope::End() noexcept {
    // Runs in a destructor: a failure to compose or write the line must not
    // end the process, so it loses the line instead.
    try {
        Write(mCategory, mVolume, "End - " + mMessage);
    } catch (...) {
    }
}

}  // namespace threads
}  // namespace quorel
