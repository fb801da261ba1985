// The executors' queue of functions, immediate and delayed.
#ifndef QUOREL_THREADS_SRC_THREADSAFEDELAYQUEUE_H
#define QUOREL_THREADS_SRC_THREADSAFEDELAYQUEUE_H

#include "AllocatedFunction.h"
#include "PointerQueue.h"

#include <quorel/threads/Thread.h>

#include <boost/thread/mutex.hpp>

#include <atomic>
#include <cstdint>
#include <vector>

namespace quorel {
namespace threads {

/// Ready entries wait in the platform queue; delayed entries wait in a heap,
/// earliest due time on top, until they are due.  There is no timer thread:
/// of the threads that block in Pop, one at a time is the time keeper.  It
/// waits with a time-out set to the next due time, moves due entries over to
/// the platform queue, and hands the role on when it gets real work.  Every
/// other thread waits without a time-out, and with no delayed entry nobody
/// wakes at all.
///
/// Immediate Push and Pop take no mutex while no delayed entries exist.
class ThreadSafeDelayQueue {
public:
    /// Throws std::bad_alloc when the system has no platform queue to give.
    ThreadSafeDelayQueue();
    /// Destroys every entry, delayed or ready, uncalled.
    ~ThreadSafeDelayQueue();
    ThreadSafeDelayQueue(ThreadSafeDelayQueue const&) = delete;
    ThreadSafeDelayQueue& operator=(ThreadSafeDelayQueue const&) = delete;

    /// Takes inEntry, to be ready after inDelayMilliseconds (0: at once,
    /// overtaking any due delayed entry).  On false the caller keeps the entry.
    bool Push(AllocatedFunction* inEntry, std::uint32_t inDelayMilliseconds);

    /// Waits up to inTimeoutMilliseconds (kWaitForever: without limit) for the
    /// next ready entry.  A former non-null ioEntry is destroyed.  True and a
    /// non-null entry if one came; false and null on time-out.
    bool Pop(AllocatedFunction*& ioEntry, std::uint32_t inTimeoutMilliseconds);

    /// Destroys all delayed entries; ready entries stay.
    void Clear();

private:
    struct DelayedEntry {
        boost::xtime due;
        AllocatedFunction* function;
    };

    /// Moves due entries to the platform queue, taking the keeper's role first
    /// unless inKeeper.  Milliseconds until the next due entry, or -1 when
    /// none waits or the role belongs to another thread.
    std::int64_t MoveDueEntries(bool inKeeper);
    /// Posts a null pointer to wake a thread in Pop.
    void PostWakeUp() noexcept;

    enum KeeperState : std::int32_t { kVacant = 0, kSettled = 1, kMoving = 2 };

    platform::PointerQueue* const mPort;
    std::atomic<std::int32_t> mKeeperState;
    boost::mutex mMutex;
    std::vector<DelayedEntry> mEntries;  // a heap under mMutex, earliest on top
};

}  // namespace threads
}  // namespace quorel

#endif
