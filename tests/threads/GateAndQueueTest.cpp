// The executors' internal parts: the gate and the delay queue, compiled into
// this test program from the library's sources.
#include "ExecutorTestSupport.h"

#include "quorel/threads/src/Gate.h"
#include "quorel/threads/src/ThreadSafeDelayQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

using namespace quorel::threads;
using std::chrono::milliseconds;

TEST(Gate, WaitsUntilOpenedEvenWhenClosedAgainAtOnce) {
    Gate gate(false);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(gate.Wait(0));
    EXPECT_FALSE(gate.Wait(30));
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(30));

    std::atomic<int> passed{0};
    std::mutex idsMutex;
    std::vector<std::uint32_t> ids;
    std::vector<std::thread> waiters;
    for (int i = 0; i < 3; ++i) {
        waiters.emplace_back([&] {
            {
                std::lock_guard<std::mutex> lock(idsMutex);
                ids.push_back(GetCurrentThreadID());
            }
            passed += gate.Wait(platform::kWaitForever) ? 1 : 0;
        });
    }
    ASSERT_TRUE(threadtest::Eventually([&] {
        std::lock_guard<std::mutex> lock(idsMutex);
        return exectest::CountFutexWaits(ids).untimed == 3;
    }));
    gate.Open();
    gate.Close();
    threadtest::FinishesInTime("waiters of a gate opened and closed again", [&] {
        for (std::thread& waiter : waiters) waiter.join();
    });
    EXPECT_EQ(passed.load(), 3);
    EXPECT_FALSE(gate.Wait(0));
    gate.Open();
    EXPECT_TRUE(gate.Wait(0));
}

namespace {

/// A queued function whose token shows whether the entry still exists.
AllocatedFunction* Entry(std::shared_ptr<int> const& inToken, int inValue, std::vector<int>& outCalls) {
    return AllocatedFunction::Create([inToken, inValue, &outCalls] { outCalls.push_back(inValue); });
}

}  // namespace

TEST(ThreadSafeDelayQueue, ImmediateEntriesOvertakeDelayedOnesAndTimeOutsGiveNull) {
    ThreadSafeDelayQueue queue;
    std::vector<int> calls;
    auto token = std::make_shared<int>();
    ASSERT_TRUE(queue.Push(Entry(token, 2, calls), 30));
    ASSERT_TRUE(queue.Push(Entry(token, 1, calls), 0));
    AllocatedFunction* entry = nullptr;
    ASSERT_TRUE(queue.Pop(entry, platform::kWaitForever));
    entry->Call();
    EXPECT_FALSE(queue.Pop(entry, 5));  // the former entry is destroyed
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(token.use_count(), 2);
    // The thread that kept the time comes back empty-handed when its wait
    // ends, and takes the entry on its next call.
    for (int tries = 0; tries < 100 && !queue.Pop(entry, 5000); ++tries) {
    }
    ASSERT_NE(entry, nullptr);
    entry->Call();
    AllocatedFunction::Destroy(entry);
    EXPECT_EQ(calls, (std::vector<int>{1, 2}));
    EXPECT_EQ(token.use_count(), 1);
}

TEST(ThreadSafeDelayQueue, ClearDestroysOnlyDelayedEntriesAndTheEndDestroysTheRest) {
    std::vector<int> calls;
    auto token = std::make_shared<int>();
    {
        ThreadSafeDelayQueue queue;
        queue.Push(Entry(token, 1, calls), 10000);
        queue.Push(Entry(token, 2, calls), 0);
        queue.Push(Entry(token, 3, calls), 0);
        queue.Clear();
        EXPECT_EQ(token.use_count(), 3);
        AllocatedFunction* entry = nullptr;
        ASSERT_TRUE(queue.Pop(entry, 100));
        entry->Call();
        AllocatedFunction::Destroy(entry);
    }
    EXPECT_EQ(calls, std::vector<int>{2});
    EXPECT_EQ(token.use_count(), 1);
}
