#include <quorel/threads/Barrier.h>
#include <quorel/threads/SyncPoint.h>

#include "ThreadTestSupport.h"
#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace quorel::threads;
using quorel::testing::ScopedErrorManager;

namespace {

// Runs inThreads threads that each call inWait(thread) inRounds times, checks
// that no thread leaves a round before all have arrived in it, and returns per
// round how many calls returned true.
template <typename Wait>
std::vector<int> WinnersPerRound(int inThreads, int inRounds, Wait inWait) {
    std::vector<std::atomic<int>> arrived(inRounds);
    std::vector<std::atomic<int>> winners(inRounds);
    std::atomic<int> earlyLeavers{0};
    threadtest::FinishesInTime("threads meeting at a barrier", [&] {
        std::vector<std::thread> threads;
        for (int t = 0; t < inThreads; ++t) {
            threads.emplace_back([&, t] {
                for (int round = 0; round < inRounds; ++round) {
                    ++arrived[round];
                    if (inWait(t)) ++winners[round];
                    if (arrived[round].load() != inThreads) ++earlyLeavers;
                }
            });
        }
        for (auto& thread : threads) thread.join();
    });
    EXPECT_EQ(earlyLeavers.load(), 0);
    std::vector<int> result;
    for (auto& count : winners) result.push_back(count.load());
    return result;
}

}  // namespace

TEST(Barrier, ExactlyTheLastArrivalOfEachGenerationGetsTrue) {
    Barrier single(1);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(single.Wait());

    Barrier three("Three", 3);
    EXPECT_EQ(WinnersPerRound(3, 2, [&](int) { return three.Wait(); }), (std::vector<int>{1, 1}));
    Barrier many("Many", 5);
    EXPECT_EQ(WinnersPerRound(5, 20, [&](int) { return many.Wait(); }), std::vector<int>(20, 1));
}

TEST(Barrier, ACountOfZeroIsAnInvalidArgumentAndNothingIsReported) {
    ScopedErrorManager manager;
    auto expectRejected = [](auto inMake) {
        try {
            inMake();
            ADD_FAILURE() << "no exception";
        } catch (std::invalid_argument const& error) {
            EXPECT_STREQ(error.what(), "count cannot be zero.");
        }
    };
    expectRejected([] { Barrier barrier(0); });
    expectRejected([] { Barrier barrier("Zero", 0); });
    expectRejected([] { SyncPoint point(0); });
    expectRejected([] { SyncPoint point("Zero", 0); });
    EXPECT_TRUE(manager->mCalls.empty());
}

TEST(Barrier, TransferMovesTheBarrierAndLeavesTheSourceEmpty) {
    ScopedErrorManager manager;
    threadtest::NoContractDialog noDialog;

    Barrier first("Pair", 2);
    Barrier second(first);
    Barrier third(1);
    third = second;
    third = third;
    EXPECT_EQ(first.GetName(), "Pair");
    EXPECT_EQ(third.GetName(), "Pair");
    EXPECT_EQ(WinnersPerRound(2, 3, [&](int) { return third.Wait(); }), (std::vector<int>{1, 1, 1}));

    // The emptied ones break the contract instead of blocking.
    EXPECT_FALSE(first.Wait());
    EXPECT_FALSE(second.Wait());
    ASSERT_EQ(manager->mCalls.size(), 2u);
    EXPECT_EQ(manager->mCalls[1].mErrorNumber, 25);
}

TEST(SyncPoint, CopiesShareOneBarrierThatTheLastCopyEnds) {
    SyncPoint original("Shared", 3);
    std::vector<SyncPoint> copies(3, original);
    EXPECT_EQ(WinnersPerRound(3, 4, [&](int inThread) { return copies[inThread].Wait(); }), std::vector<int>(4, 1));

    // The waiting thread's copy and the last one keep the barrier while the
    // original goes.
    auto point = std::make_unique<SyncPoint>("Pair", 2);
    std::atomic<bool> waiterResult{false};
    std::atomic<bool> done{false};
    std::thread waiter([&, copy = *point]() mutable {
        waiterResult = copy.Wait();
        done = true;
    });
    SyncPoint last = *point;
    point.reset();
    bool lastResult = false;
    threadtest::FinishesInTime("the second arrival at a sync point", [&] { lastResult = last.Wait(); });
    ASSERT_TRUE(threadtest::Eventually([&] { return done.load(); }));
    waiter.join();
    EXPECT_NE(lastResult, waiterResult.load());  // exactly one of the two was last
}
