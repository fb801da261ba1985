// Helpers of the thread tests.  Every wait here is bounded: a broken primitive
// fails its test instead of hanging the run.
#ifndef QUOREL_TESTS_THREADS_THREADTESTSUPPORT_H
#define QUOREL_TESTS_THREADS_THREADTESTSUPPORT_H

#include <quorel/debug/Debug.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <mutex>
#include <thread>

namespace threadtest {

/// How long a test waits for something that should happen at once.
constexpr std::chrono::seconds kPatience{10};

/// Runs inBody on a helper thread and waits for it at most kPatience.  A body
/// still running then is stuck in the primitive under test, and threads
/// blocked there cannot be freed: the run stops with a message naming inWhat.
/// An exception of the body is rethrown here.
template <typename Body>
void FinishesInTime(char const* inWhat, Body&& inBody) {
    std::future<void> finished = std::async(std::launch::async, [&] { inBody(); });
    if (finished.wait_for(kPatience) != std::future_status::ready) {
        std::fprintf(stderr, "FATAL: '%s' did not finish in time; a thread primitive is stuck\n", inWhat);
        std::abort();
    }
    finished.get();
}

/// Polls inCondition until it holds (true) or kPatience has passed (false).
template <typename Condition>
bool Eventually(Condition inCondition) {
    auto const deadline = std::chrono::steady_clock::now() + kPatience;
    while (!inCondition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// A one-shot gate of the standard library, to hold a test's threads at a
/// known point independently of the primitives under test.
class Gate {
public:
    void Open() {
        std::lock_guard<std::mutex> lock(mMutex);
        mOpen = true;
        mOpened.notify_all();
    }
    /// False when the gate stayed shut for kPatience.
    bool Pass() {
        std::unique_lock<std::mutex> lock(mMutex);
        return mOpened.wait_for(lock, kPatience, [this] { return mOpen; });
    }

private:
    std::mutex mMutex;
    std::condition_variable mOpened;
    bool mOpen = false;
};

/// Switches the contract dialog off while a test breaks a contract on purpose.
class NoContractDialog {
public:
    NoContractDialog() : mWasEnabled(quorel::debug::IsContractDialogEnabled()) {
        quorel::debug::DisableContractDialog();
    }
    ~NoContractDialog() { if (mWasEnabled) quorel::debug::EnableContractDialog(); }

private:
    bool mWasEnabled;
};

}  // namespace threadtest

#endif
