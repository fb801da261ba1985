#include "ThreadSafeDelayQueue.h"

#include <boost/thread/xtime.hpp>

#include <algorithm>
#include <new>

namespace quorel {
namespace threads {

namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1000000000;
constexpr std::int64_t kNoLimit = -1;

boost::xtime Now() {
    boost::xtime now;
    boost::xtime_get(&now, boost::TIME_UTC_);
    return now;
}

bool IsBefore(boost::xtime const& inA, boost::xtime const& inB) {
    return inA.sec < inB.sec || (inA.sec == inB.sec && inA.nsec < inB.nsec);
}

boost::xtime AddMilliseconds(boost::xtime inTime, std::uint32_t inMilliseconds) {
    std::int64_t const nanoseconds = inTime.nsec + static_cast<std::int64_t>(inMilliseconds % 1000) * 1000000;
    inTime.sec += inMilliseconds / 1000 + nanoseconds / kNanosecondsPerSecond;
    inTime.nsec = static_cast<boost::xtime::xtime_nsec_t>(nanoseconds % kNanosecondsPerSecond);
    return inTime;
}

/// Whole milliseconds from inFrom to the later inTo, the fraction cut off.
std::int64_t MillisecondsBetween(boost::xtime const& inFrom, boost::xtime const& inTo) {
    std::int64_t const nanoseconds = (static_cast<std::int64_t>(inTo.sec) - inFrom.sec) * kNanosecondsPerSecond +
                                     (static_cast<std::int64_t>(inTo.nsec) - inFrom.nsec);
    return nanoseconds / 1000000;
}

}  // namespace

ThreadSafeDelayQueue::ThreadSafeDelayQueue() : mPort(platform::CreatePointerQueue()), mKeeperState(kSettled) {
    if (mPort == nullptr) {
        throw std::bad_alloc();
    }
}

ThreadSafeDelayQueue::~ThreadSafeDelayQueue() {
    Clear();
    void* pointer = nullptr;
    while (platform::GetPointer(mPort, pointer, 0)) {
        AllocatedFunction::Destroy(static_cast<AllocatedFunction*>(pointer));
    }
    platform::ClosePointerQueue(mPort);
}

void ThreadSafeDelayQueue::PostWakeUp() noexcept {
    // A failed wake-up post leaves the role vacant: the next thread that comes
    // to Pop takes it, so the entry in the heap is not lost.
    platform::PostPointer(mPort, nullptr);
}

bool ThreadSafeDelayQueue::Push(AllocatedFunction* inEntry, std::uint32_t inDelayMilliseconds) {
    if (inDelayMilliseconds == 0) {
        return platform::PostPointer(mPort, inEntry);
    }
    boost::xtime const now = Now();
    DelayedEntry const entry = {AddMilliseconds(now, inDelayMilliseconds), inEntry};
    auto const later = [](DelayedEntry const& inA, DelayedEntry const& inB) { return IsBefore(inB.due, inA.due); };

    boost::mutex::scoped_lock lock(mMutex);
    bool const wakeUp = mEntries.empty() || IsBefore(entry.due, mEntries.front().due) ||
                        !IsBefore(now, mEntries.front().due);
    mEntries.push_back(entry);  // std::bad_alloc leaves the entry with the caller
    std::push_heap(mEntries.begin(), mEntries.end(), later);
    std::int32_t settled = kSettled;
    if (wakeUp && mKeeperState.compare_exchange_strong(settled, kVacant)) {
        PostWakeUp();
    }
    return true;
}

std::int64_t ThreadSafeDelayQueue::MoveDueEntries(bool inKeeper) {
    if (!inKeeper) {
        // Looking first keeps the usual case (the role is settled) free of a
        // locked instruction on a cache line that every worker shares.
        std::int32_t vacant = kVacant;
        if (mKeeperState.load(std::memory_order_relaxed) != kVacant ||
            !mKeeperState.compare_exchange_strong(vacant, kMoving)) {
            return kNoLimit;
        }
    }
    auto const later = [](DelayedEntry const& inA, DelayedEntry const& inB) { return IsBefore(inB.due, inA.due); };
    boost::mutex::scoped_lock lock(mMutex);
    boost::xtime const now = Now();
    while (!mEntries.empty() && !IsBefore(now, mEntries.front().due)) {
        // A due entry that cannot be posted stays on top for the next pass.
        if (!platform::PostPointer(mPort, mEntries.front().function)) {
            break;
        }
        std::pop_heap(mEntries.begin(), mEntries.end(), later);
        mEntries.pop_back();
    }
    std::int64_t wait = kNoLimit;
    if (!mEntries.empty()) {
        // Whole milliseconds, the fraction cut off; but at least 1, so that a
        // keeper less than a millisecond before the due time (or behind a
        // failed post) sleeps instead of polling in a loop.
        wait = std::max<std::int64_t>(MillisecondsBetween(now, mEntries.front().due), 1);
    }
    mKeeperState.exchange(kSettled);
    return wait;
}

bool ThreadSafeDelayQueue::Pop(AllocatedFunction*& ioEntry, std::uint32_t inTimeoutMilliseconds) {
    bool keeper = false;
    std::uint32_t remaining = inTimeoutMilliseconds;
    bool got = false;
    void* pointer = nullptr;
    for (;;) {
        std::int64_t wait = MoveDueEntries(keeper);
        keeper = wait != kNoLimit;
        if (remaining != platform::kWaitForever) {
            wait = keeper ? std::min<std::int64_t>(wait, remaining) : remaining;
            remaining -= static_cast<std::uint32_t>(wait);
        }
        std::uint32_t const timeout = wait < 0 ? platform::kWaitForever : static_cast<std::uint32_t>(
                                                                                std::min<std::int64_t>(wait, platform::kWaitForever - 1));
        got = platform::GetPointer(mPort, pointer, timeout);
        if (!(got && pointer == nullptr)) {
            break;
        }
    }
    AllocatedFunction* const entry = static_cast<AllocatedFunction*>(pointer);
    if (ioEntry != entry) {
        AllocatedFunction::Destroy(ioEntry);
    }
    ioEntry = entry;
    std::int32_t settled = kSettled;
    if (keeper && mKeeperState.compare_exchange_strong(settled, kVacant)) {
        PostWakeUp();
    }
    return got;
}

void ThreadSafeDelayQueue::Clear() {
    // The functions go after the lock: their destructors are the caller's code
    // and may come back to an executor.
    std::vector<DelayedEntry> entries;
    {
        boost::mutex::scoped_lock lock(mMutex);
        entries.swap(mEntries);
    }
    for (DelayedEntry const& entry : entries) {
        AllocatedFunction::Destroy(entry.function);
    }
}

}  // namespace threads
}  // namespace quorel
