#include <quorel/threads/CallOnce.h>

#include "ThreadTestSupport.h"
#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace quorel::threads;

namespace {

std::atomic<int> gCalls{0};
int gResult = 0;  // written by the once-function without atomics on purpose
std::atomic<int> gFailuresLeft{0};

void SlowInitialise() {
    ++gCalls;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));  // let the others arrive meanwhile
    gResult = 7;
}

void FailAtFirst() {
    ++gCalls;
    if (gFailuresLeft.fetch_sub(1) > 0) throw std::runtime_error("not yet");
}

// Starts inThreads threads that call inCall at the same moment and joins them.
template <typename Call>
void Race(int inThreads, Call inCall) {
    std::atomic<bool> go{false};
    threadtest::FinishesInTime("racing CallOnce callers", [&] {
        std::vector<std::thread> threads;
        for (int t = 0; t < inThreads; ++t) {
            threads.emplace_back([&, t] {
                while (!go) std::this_thread::yield();
                inCall(t);
            });
        }
        go = true;
        for (auto& thread : threads) thread.join();
    });
}

}  // namespace

TEST(CallOnce, RacingCallersRunTheFunctionOnceAndAllSeeItsResult) {
    gCalls = 0;
    std::int32_t flag = kCallOnce_Init;
    std::vector<int> seen(8, 0);
    Race(8, [&](int inThread) {
        CallOnce(&SlowInitialise, flag);
        // Returning means the function has completed: its plain write is
        // visible here (and ThreadSanitizer checks the ordering).
        seen[inThread] = gResult;
    });
    EXPECT_EQ(gCalls.load(), 1);
    EXPECT_EQ(seen, std::vector<int>(8, 7));
    EXPECT_EQ(flag, kCallOnce_Done);

    std::int32_t other = kCallOnce_Init;  // each flag stands for its own initialisation
    CallOnce(&SlowInitialise, other);
    CallOnce(&SlowInitialise, flag);
    EXPECT_EQ(gCalls.load(), 2);
}

TEST(CallOnce, AThrowingRunLeavesTheFlagToTheNextCaller) {
    gCalls = 0;
    gFailuresLeft = 1;
    std::int32_t flag = kCallOnce_Init;
    EXPECT_THROW(CallOnce(&FailAtFirst, flag), std::runtime_error);
    EXPECT_EQ(flag, kCallOnce_Init);
    CallOnce(&FailAtFirst, flag);
    CallOnce(&FailAtFirst, flag);
    EXPECT_EQ(gCalls.load(), 2);

    // Waiting callers take over after each failure until one run succeeds.
    gCalls = 0;
    gFailuresLeft = 3;
    std::int32_t contested = kCallOnce_Init;
    std::atomic<int> failures{0};
    Race(6, [&](int) {
        for (;;) {
            try {
                CallOnce(&FailAtFirst, contested);
                return;
            } catch (std::runtime_error const&) {
                ++failures;
            }
        }
    });
    EXPECT_EQ(failures.load(), 3);
    EXPECT_EQ(gCalls.load(), 4);
}

TEST(CallOnce, ANullFunctionBreaksTheContractAndLeavesTheFlag) {
    quorel::testing::ScopedErrorManager manager;
    threadtest::NoContractDialog noDialog;
    std::int32_t flag = kCallOnce_Init;
    CallOnce(nullptr, flag);
    EXPECT_EQ(flag, kCallOnce_Init);
    ASSERT_EQ(manager->mCalls.size(), 1u);
    EXPECT_EQ(manager->mCalls[0].mErrorNumber, 25);
}
