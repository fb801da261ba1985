#include <quorel/threads/RecursiveMutex.h>
#include <quorel/threads/ScopedLock.h>

#include "ThreadTestSupport.h"
#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace quorel::threads;
using quorel::testing::ScopedErrorManager;

namespace {

// Reaches the protected Boost mutex, to look at the state a transfer leaves.
class ExposedMutex : public RecursiveMutex {
public:
    using RecursiveMutex::RecursiveMutex;
    boost::recursive_mutex* Boost() const { return GetMutex(); }
};

// Whether another thread gets the mutex within 50 ms; if it does not, it
// keeps trying in outWaiter, which sets outGot when it succeeds.
bool OtherThreadGets(RecursiveMutex& inMutex, std::thread& outWaiter, std::atomic<bool>& outGot) {
    outGot = false;
    outWaiter = std::thread([&] {
        RecursiveMutexLock lock(inMutex, true);
        outGot = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return outGot;
}

}  // namespace

TEST(RecursiveMutex, NestedLocksHoldTheMutexUntilTheLastRelease) {
    RecursiveMutex mutex("Nested");
    std::thread waiter;
    std::atomic<bool> got{false};
    {
        RecursiveMutexLock outer(mutex, true);
        {
            RecursiveMutexLock inner(mutex, true);  // a plain mutex would deadlock here
            RecursiveMutexLock deferred(mutex, false);
            EXPECT_FALSE(deferred.IsLocked());
            deferred.Lock();
            EXPECT_TRUE(deferred.IsLocked());
        }
        EXPECT_FALSE(OtherThreadGets(mutex, waiter, got));  // outer still holds it
    }
    ASSERT_TRUE(threadtest::Eventually([&] { return got.load(); }));
    waiter.join();

    // A deferred lock leaves the mutex to others until Lock, and again after Unlock.
    RecursiveMutexLock later(mutex, false);
    ASSERT_TRUE(OtherThreadGets(mutex, waiter, got));
    waiter.join();
    later.Lock();
    EXPECT_FALSE(OtherThreadGets(mutex, waiter, got));
    later.Unlock();
    ASSERT_TRUE(threadtest::Eventually([&] { return got.load(); }));
    waiter.join();
}

TEST(RecursiveMutex, LocksExcludeEachOtherAcrossThreads) {
    // An unprotected read-modify-write of a plain counter: a lock that does not
    // exclude loses increments (and ThreadSanitizer reports the race).
    RecursiveMutex mutex;
    long counter = 0;
    constexpr int kThreads = 4;
    constexpr int kRounds = 20000;
    threadtest::FinishesInTime("contended locking", [&] {
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&] {
                for (int i = 0; i < kRounds; ++i) {
                    RecursiveMutexLock lock(mutex, true);
                    long const seen = counter;
                    counter = seen + 1;
                }
            });
        }
        for (auto& thread : threads) thread.join();
    });
    EXPECT_EQ(counter, static_cast<long>(kThreads) * kRounds);
}

TEST(RecursiveMutex, TransferMovesTheMutexAndLeavesTheSourceEmpty) {
    ScopedErrorManager manager;
    threadtest::NoContractDialog noDialog;

    ExposedMutex first("First");
    boost::recursive_mutex* const held = first.Boost();
    ExposedMutex second(first);
    EXPECT_EQ(first.Boost(), nullptr);
    EXPECT_EQ(second.Boost(), held);
    ExposedMutex third;
    third = second;
    third = third;
    EXPECT_EQ(third.Boost(), held);
    EXPECT_EQ(second.Boost(), nullptr);
    EXPECT_TRUE(RecursiveMutexLock(third, true).IsLocked());

    // Locking an emptied mutex breaks the contract and gives a lock without a mutex.
    EXPECT_FALSE(RecursiveMutexLock(first, true).IsLocked());
    ASSERT_EQ(manager->mCalls.size(), 1u);
    EXPECT_EQ(manager->mCalls[0].mLevel, quorel::config::kErrorLevel_Fatal);
    EXPECT_EQ(manager->mCalls[0].mModuleID, 105u);
    EXPECT_EQ(manager->mCalls[0].mErrorNumber, 25);
}
