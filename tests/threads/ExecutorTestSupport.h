// Helpers of the executor tests: an ordered record of calls, and what the
// kernel says about this process's threads (how many there are, which of them
// sleep with a time-out, how often they were woken).
#ifndef QUOREL_TESTS_THREADS_EXECUTORTESTSUPPORT_H
#define QUOREL_TESTS_THREADS_EXECUTORTESTSUPPORT_H

#include "ThreadTestSupport.h"

#include <quorel/threads/AsyncExecutor.h>
#include <quorel/threads/ThreadID.h>

#include <sys/syscall.h>

#include <cstdint>
#include <dirent.h>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace exectest {

using threadtest::Eventually;

/// Values appended by calls on any thread, in the order they came.
class Recorder {
public:
    void Add(int inValue) {
        std::lock_guard<std::mutex> lock(mMutex);
        mValues.push_back(inValue);
    }
    std::vector<int> Values() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mValues;
    }
    std::size_t Size() { return Values().size(); }
    /// A function for CallAsync that appends inValue.
    std::function<void()> Adder(int inValue) {
        return [this, inValue] { Add(inValue); };
    }

private:
    std::mutex mMutex;
    std::vector<int> mValues;
};

inline std::vector<std::uint32_t> ThreadIDs() {
    std::vector<std::uint32_t> ids;
    if (DIR* const tasks = ::opendir("/proc/self/task")) {
        while (dirent* const entry = ::readdir(tasks)) {
            if (entry->d_name[0] != '.') ids.push_back(static_cast<std::uint32_t>(std::stoul(entry->d_name)));
        }
        ::closedir(tasks);
    }
    return ids;
}

inline std::size_t ThreadCount() { return ThreadIDs().size(); }

/// The thread count once threads of earlier tests, which end in their own
/// time, have stopped coming and going (unchanged for 100 ms, bounded).
inline std::size_t SettledThreadCount() {
    // The first thread that a process starts may bring helper threads of the
    // runtime with it (ThreadSanitizer's); let them come first.
    std::thread([] {}).join();
    auto const deadline = std::chrono::steady_clock::now() + threadtest::kPatience;
    std::size_t count = ThreadCount();
    for (;;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        std::size_t const now = ThreadCount();
        if (now == count || std::chrono::steady_clock::now() > deadline) return now;
        count = now;
    }
}

/// How many of inThreads block in a futex wait with, and without, a time-out.
struct FutexWaits {
    int timed = 0;
    int untimed = 0;
};

inline FutexWaits CountFutexWaits(std::vector<std::uint32_t> const& inThreads) {
    FutexWaits waits;
    for (std::uint32_t id : inThreads) {
        std::ifstream file("/proc/self/task/" + std::to_string(id) + "/syscall");
        long number = -1;
        std::string arguments[4];
        file >> number >> arguments[0] >> arguments[1] >> arguments[2] >> arguments[3];
        if (number == SYS_futex) {
            // The fourth argument of a futex wait is its time-out, null for none.
            (arguments[3] == "0x0" ? waits.untimed : waits.timed) += 1;
        }
    }
    return waits;
}

/// How often inThreads have gone to sleep, in all.
inline long VoluntarySwitches(std::vector<std::uint32_t> const& inThreads) {
    long total = 0;
    for (std::uint32_t id : inThreads) {
        std::ifstream file("/proc/self/task/" + std::to_string(id) + "/status");
        std::string line;
        while (std::getline(file, line)) {
            if (line.rfind("voluntary_ctxt_switches:", 0) == 0) total += std::stol(line.substr(24));
        }
    }
    return total;
}

/// The thread identifiers of a pool's inCount workers: each worker takes one
/// call and holds it until all have come (bounded).
inline std::vector<std::uint32_t> WorkerIDs(quorel::threads::AsyncThreadedExecutor& inPool, int inCount) {
    struct Meeting {
        std::mutex mutex;
        std::condition_variable arrived;
        std::vector<std::uint32_t> ids;
    };
    auto meeting = std::make_shared<Meeting>();
    for (int i = 0; i < inCount; ++i) {
        inPool.CallAsync([meeting, inCount] {
            std::unique_lock<std::mutex> lock(meeting->mutex);
            meeting->ids.push_back(quorel::threads::GetCurrentThreadID());
            meeting->arrived.notify_all();
            meeting->arrived.wait_for(lock, threadtest::kPatience,
                                      [&] { return meeting->ids.size() == static_cast<std::size_t>(inCount); });
        }, 0);
    }
    inPool.Join();
    std::lock_guard<std::mutex> lock(meeting->mutex);
    return meeting->ids;
}

}  // namespace exectest

#endif
