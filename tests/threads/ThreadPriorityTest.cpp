#include <quorel/threads/ThreadPriority.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#if defined(__linux__)
#include <sys/resource.h>

using namespace quorel::threads;

namespace {

// The nice value of the calling thread (Linux keeps one per thread).
int CurrentNice() { return getpriority(PRIO_PROCESS, 0); }

// Applies the priorities in order on a fresh thread, which starts at the main
// thread's nice value; returns the nice value it ends with and whether the
// last one was applied.
int NiceAfter(std::initializer_list<ThreadPriority> inPriorities, bool* outApplied = nullptr) {
    int nice = 0;
    bool applied = false;
    std::thread([&] {
        for (ThreadPriority priority : inPriorities) applied = SetCurrentThreadPriority(priority);
        nice = CurrentNice();
    }).join();
    if (outApplied) *outApplied = applied;
    return nice;
}

}  // namespace

TEST(ThreadPriority, LevelsMapToNiceValuesInTheirOrder) {
    int const normal = CurrentNice();
    EXPECT_EQ(NiceAfter({kThreadPriority_Idle}), 19);
    int const lowest = NiceAfter({kThreadPriority_Lowest});
    int const below = NiceAfter({kThreadPriority_BelowNormal});
    EXPECT_EQ(below, std::min(normal + 5, 19));
    EXPECT_GE(lowest, below);
    bool applied = false;
    EXPECT_EQ(NiceAfter({kThreadPriority_Normal}, &applied), normal);
    EXPECT_TRUE(applied);

    // Raising needs a privilege; without it the thread stays where it was.
    int const above = NiceAfter({kThreadPriority_AboveNormal}, &applied);
    EXPECT_EQ(above, applied ? std::max(normal - 5, -20) : normal);
    int const highest = NiceAfter({kThreadPriority_Highest}, &applied);
    EXPECT_EQ(highest, applied ? std::max(normal - 10, -20) : normal);
}

TEST(ThreadPriority, UnknownValuesMeanNormal) {
    int const normal = CurrentNice();
    bool applied = false;
    EXPECT_EQ(NiceAfter({static_cast<ThreadPriority>(6)}, &applied), normal);
    EXPECT_TRUE(applied);
    EXPECT_EQ(NiceAfter({static_cast<ThreadPriority>(-1)}), normal);
    // After a lowering, an unknown value raises back to normal where allowed.
    int const back = NiceAfter({kThreadPriority_BelowNormal, static_cast<ThreadPriority>(99)}, &applied);
    EXPECT_EQ(back, applied ? normal : std::min(normal + 5, 19));
}
#endif
