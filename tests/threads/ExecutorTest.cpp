// The threaded executor: order, delays, the time keeper, shut-down, pauses,
// failing functions, and a stress run.
#include "ExecutorTestSupport.h"

#include <quorel/threads/AsyncExecutor.h>

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <sched.h>
#include <stdexcept>
#include <thread>

using namespace quorel::threads;
using exectest::Eventually;
using exectest::Recorder;
using std::chrono::milliseconds;

namespace {

boost::shared_ptr<AsyncThreadedExecutor> MakePool(int inWorkers) {
    return CreateAsyncThreadedExecutor("Worker", inWorkers, kThreadPriority_Normal);
}

void EndPool(boost::shared_ptr<AsyncThreadedExecutor>& ioPool) {
    ioPool->Terminate();
    threadtest::FinishesInTime("Join after Terminate", [&] { ioPool->Join(); });
    ioPool.reset();
}

}  // namespace

TEST(ThreadedExecutor, RunsImmediateCallsInOrderOnItsWorkers) {
    auto pool = MakePool(1);
    Recorder order;
    std::atomic<bool> onWorker{false};
    for (int i = 0; i < 1000; ++i) {
        ASSERT_TRUE(pool->CallAsync(order.Adder(i), 0));
    }
    pool->CallAsync([&] { onWorker = pool->IsCurrentThreadExecutorThread(); }, 0);
    threadtest::FinishesInTime("Join of a running pool", [&] { pool->Join(); });
    std::vector<int> const values = order.Values();
    ASSERT_EQ(values.size(), 1000u);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(values[i], i);
    EXPECT_TRUE(onWorker);
    EXPECT_FALSE(pool->IsCurrentThreadExecutorThread());
    EXPECT_EQ(pool->GetThreadCount(), 1);
    EndPool(pool);
}

TEST(ThreadedExecutor, RunsDelayedCallsWhenDue) {
    auto pool = MakePool(2);
    Recorder order;
    auto const start = std::chrono::steady_clock::now();
    std::atomic<long> shortDelayTook{-1};
    pool->CallAsync(order.Adder(200), 200);
    pool->CallAsync(order.Adder(100), 100);
    pool->CallAsync([&] {
        shortDelayTook = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start).count();
    }, 1);
    ASSERT_TRUE(Eventually([&] { return order.Size() == 2; }));
    EXPECT_EQ(order.Values(), (std::vector<int>{100, 200}));
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(200));
    EXPECT_GE(shortDelayTook, 1);
    EXPECT_LT(shortDelayTook, 100);  // nobody had to come by to move it
    EndPool(pool);
}

// With no delayed entry no worker wakes; with one, exactly one idle worker
// waits with a time-out; an entry behind the earliest one wakes nobody, one
// before it does.
TEST(ThreadedExecutor, OneIdleWorkerKeepsTheTime) {
    auto pool = MakePool(4);
    std::vector<std::uint32_t> const workers = exectest::WorkerIDs(*pool, 4);
    ASSERT_EQ(workers.size(), 4u);
    auto waits = [&](int inTimed, int inUntimed) {
        return Eventually([&] {
            exectest::FutexWaits const now = exectest::CountFutexWaits(workers);
            return now.timed == inTimed && now.untimed == inUntimed;
        });
    };
    auto sleepsUndisturbed = [&] {
        long const before = exectest::VoluntarySwitches(workers);
        std::this_thread::sleep_for(milliseconds(150));
        return exectest::VoluntarySwitches(workers) == before;
    };
    ASSERT_TRUE(waits(0, 4));
    EXPECT_TRUE(sleepsUndisturbed());

    Recorder order;
    pool->CallAsync(order.Adder(1), 60000);
    EXPECT_TRUE(waits(1, 3));
    pool->CallAsync(order.Adder(2), 120000);
    EXPECT_TRUE(sleepsUndisturbed());
    auto const start = std::chrono::steady_clock::now();
    pool->CallAsync(order.Adder(3), 300);  // before the top: wakes a new keeper
    ASSERT_TRUE(Eventually([&] { return order.Size() == 1; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(300));
    EndPool(pool);
    EXPECT_EQ(order.Values(), std::vector<int>{3});
}

TEST(ThreadedExecutor, TerminateRunsQueuedCallsAndDropsPendingDelays) {
    auto pool = MakePool(1);
    threadtest::Gate release;
    Recorder order;
    pool->CallAsync([&] { release.Pass(); }, 0);
    pool->CallAsync(order.Adder(1), 0);
    pool->CallAsync(order.Adder(99), 50);
    pool->Terminate();
    pool->Terminate();
    EXPECT_TRUE(pool->IsTerminated());  // while the worker is still busy
    EXPECT_FALSE(pool->CallAsync(order.Adder(2), 0));
    release.Open();
    threadtest::FinishesInTime("Join after Terminate", [&] { pool->Join(); });
    threadtest::FinishesInTime("second Join", [&] { pool->Join(); });
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(order.Values(), std::vector<int>{1});
}

TEST(ThreadedExecutor, JoinOnAPausedPoolWaitsForResume) {
    auto pool = MakePool(2);
    Recorder order;
    pool->Pause();
    pool->CallAsync(order.Adder(1), 0);
    std::atomic<bool> joined{false};
    std::thread joiner([&] {
        pool->Join();
        joined = true;
    });
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_FALSE(joined);
    EXPECT_EQ(order.Size(), 0u);
    pool->Resume();
    EXPECT_TRUE(Eventually([&] { return joined.load(); }));
    joiner.join();
    EXPECT_EQ(order.Values(), std::vector<int>{1});
    threadtest::FinishesInTime("WaitWhilePaused on a running pool", [&] { pool->WaitWhilePaused(); });
    EndPool(pool);
    pool = MakePool(1);
    pool->Pause();
    pool->Terminate();  // ends the pause too
    threadtest::FinishesInTime("Join of a terminated paused pool", [&] { pool->Join(); });
}

TEST(ThreadedExecutor, FailingAndEmptyFunctionsDoNotEndTheWorker) {
    auto pool = MakePool(1);
    Recorder order;
    pool->CallAsync([] { throw std::runtime_error("failed"); }, 0);
    pool->CallAsync([] { throw 42; }, 0);
    EXPECT_TRUE(pool->CallAsync(boost::function0<void>(), 0));
    pool->CallAsync(order.Adder(1), 0);
    pool->Join();
    EXPECT_EQ(order.Values(), std::vector<int>{1});
    EndPool(pool);
}

TEST(ThreadedExecutor, WorkerCounts) {
    auto pool = MakePool(0);
    Recorder never;
    EXPECT_EQ(pool->GetThreadCount(), 0);
    EXPECT_TRUE(pool->CallAsync(never.Adder(1), 0));
    threadtest::FinishesInTime("Join without workers", [&] { pool->Join(); });
    EndPool(pool);
    EXPECT_EQ(never.Size(), 0u);

    cpu_set_t set;
    ASSERT_EQ(sched_getaffinity(0, sizeof set, &set), 0);
    pool = MakePool(-1);
    EXPECT_EQ(pool->GetThreadCount(), CPU_COUNT(&set));
    EndPool(pool);
}

TEST(ThreadedExecutor, TerminateAndJoinFromAWorkerDoNothing) {
    auto pool = MakePool(2);
    AsyncThreadedExecutor* const raw = pool.get();
    std::atomic<int> terminated{-1};
    pool->CallAsync([&terminated, raw] {
        raw->Terminate();
        raw->Join();
        terminated = raw->IsTerminated() ? 1 : 0;
    }, 0);
    ASSERT_TRUE(Eventually([&] { return terminated.load() != -1; }));
    EXPECT_EQ(terminated.load(), 0);
    EXPECT_TRUE(pool->CallAsync([] {}, 0));
    EndPool(pool);
}

// Releasing the last reference on one of the pool's own workers still ends
// every worker (and ASan's leak check sees nothing left behind).
TEST(ThreadedExecutor, LastReferenceReleasedOnAWorkerEndsThePool) {
    std::size_t const baseline = exectest::SettledThreadCount();
    struct Holder {
        boost::shared_ptr<AsyncThreadedExecutor> pool;
    };
    auto holder = std::make_shared<Holder>();
    holder->pool = MakePool(3);
    EXPECT_EQ(exectest::ThreadCount(), baseline + 3);
    holder->pool->CallAsync([holder] { holder->pool.reset(); }, 0);
    holder.reset();
    EXPECT_TRUE(Eventually([&] { return exectest::ThreadCount() == baseline; }));
}

TEST(ThreadedExecutor, StressEveryCallRunsExactlyOnce) {
    constexpr int kProducers = 4;
    constexpr int kCallsEach = 100000;
    std::size_t const baseline = exectest::SettledThreadCount();
    auto pool = MakePool(2);
    std::vector<std::atomic<std::uint8_t>> runs(kProducers * kCallsEach);
    std::atomic<int> total{0};
    std::vector<std::thread> producers;
    std::atomic<int> refused{0};
    for (int p = 0; p < kProducers; ++p) {
        producers.emplace_back([&, p] {
            std::minstd_rand random(p + 1);
            for (int i = 0; i < kCallsEach; ++i) {
                int const id = p * kCallsEach + i;
                bool const taken = pool->CallAsync([&runs, &total, id] {
                    runs[id].fetch_add(1);
                    total.fetch_add(1);
                }, random() % 6);
                if (!taken) refused.fetch_add(1);
            }
        });
    }
    for (std::thread& producer : producers) producer.join();
    EXPECT_EQ(refused.load(), 0);
    EXPECT_TRUE(threadtest::Eventually([&] { return total.load() == kProducers * kCallsEach; }));
    EndPool(pool);
    int wrong = 0;
    for (auto const& count : runs) wrong += count.load() != 1;
    EXPECT_EQ(wrong, 0);
    EXPECT_TRUE(Eventually([&] { return exectest::ThreadCount() == baseline; }));
}
