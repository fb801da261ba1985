#include <quorel/threads/CallOnce.h>

#include <quorel/debug/Debug.h>
#include <quorel/threads/ThreadErrors.h>

#include "ThreadPlatform.h"

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/locks.hpp>
#include <boost/thread/mutex.hpp>

namespace quorel {
namespace threads {

namespace {

// The third state of a flag: its function runs on some thread now.
constexpr std::int32_t kCallOnce_Running = 2;

// One monitor for all flags: the losers of a race wait here until the winner
// is done.  A flag is contended only at its first use, so sharing the monitor
// costs little, and it lets the flag stay a plain word of the caller's.  Every
// change of a flag is made with the mutex held; only the fast path of a done
// flag reads it without.
struct OnceMonitor {
    boost::mutex mMutex;
    boost::condition_variable mDone;
};

OnceMonitor& GetMonitor() {
    // Made at the first contended call and never destroyed, so that CallOnce
    // keeps working while static objects are destroyed at exit.
    static OnceMonitor* const S_monitorP = new OnceMonitor;
    return *S_monitorP;
}

void RunOnce(void (*inFunction)(), std::int32_t& ioFlag) {
    OnceMonitor& monitor = GetMonitor();
    boost::unique_lock<boost::mutex> lock(monitor.mMutex);
    for (;;) {
        std::int32_t const state = platform::LoadAcquire(ioFlag);
        if (state == kCallOnce_Done) {
            return;
        }
        if (state != kCallOnce_Running) {
            break;
        }
        monitor.mDone.wait(lock);
    }
    platform::StoreRelease(ioFlag, kCallOnce_Running);
    lock.unlock();

    try {
        inFunction();
    } catch (...) {
        lock.lock();
        platform::StoreRelease(ioFlag, kCallOnce_Init);
        lock.unlock();
        monitor.mDone.notify_all();
        throw;
    }

    lock.lock();
    platform::StoreRelease(ioFlag, kCallOnce_Done);
    lock.unlock();
    monitor.mDone.notify_all();
}

}  // namespace

void CallOnce(void (*inFunction)(), std::int32_t& ioFlag) {
    QRL_INPUT_CONTRACT(inFunction != nullptr);
    if (inFunction == nullptr) {
        return;
    }
    // The path of every call after the first: one acquire read.
    if (platform::LoadAcquire(ioFlag) == kCallOnce_Done) {
        return;
    }
    CallTranslatingThreadErrors([&] { RunOnce(inFunction, ioFlag); });
}

}  // namespace threads
}  // namespace quorel
