// The thread primitives: Thread, ThreadGroup, the error translation,
// priorities, the trace hook, Barrier, SyncPoint, CallOnce, ReaderWriterLock
// and RecursiveMutex.
#include <quorel/threads/Barrier.h>
#include <quorel/threads/CallOnce.h>
#include <quorel/threads/ReaderWriterLock.h>
#include <quorel/threads/ScopedLock.h>
#include <quorel/threads/SyncPoint.h>
#include <quorel/threads/Thread.h>
#include <quorel/threads/ThreadErrors.h>
#include <quorel/threads/ThreadGroup.h>
#include <quorel/threads/ThreadPriority.h>
#include <quorel/threads/ThreadTraceScope.h>

#include "ThreadTestSupport.h"
#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/resource.h>

using namespace quorel::threads;
using namespace std::chrono_literals;
using quorel::testing::ScopedErrorManager;

namespace {

// Runs inBody(thread index) on inCount threads and joins them, within kPatience.
template <typename Body>
void RunThreads(int inCount, Body inBody) {
    threadtest::FinishesInTime("the threads of a test", [&] {
        std::vector<std::thread> threads;
        for (int t = 0; t < inCount; ++t) threads.emplace_back(inBody, t);
        for (auto& thread : threads) thread.join();
    });
}

// Runs inThreads threads that each call inWait(thread) inRounds times, checks
// that no thread leaves a round before all have arrived in it, and returns per
// round how many calls returned true.
template <typename Wait>
std::vector<int> WinnersPerRound(int inThreads, int inRounds, Wait inWait) {
    std::vector<std::atomic<int>> arrived(inRounds), winners(inRounds);
    std::atomic<int> earlyLeavers{0};
    RunThreads(inThreads, [&](int inThread) {
        for (int round = 0; round < inRounds; ++round) {
            ++arrived[round];
            if (inWait(inThread)) ++winners[round];
            if (arrived[round].load() != inThreads) ++earlyLeavers;
        }
    });
    EXPECT_EQ(earlyLeavers.load(), 0);
    return std::vector<int>(winners.begin(), winners.end());
}

std::atomic<int> gCalls{0};
int gResult = 0;  // written without atomics: CallOnce's return must order it

void SlowInitialise() {
    ++gCalls;
    std::this_thread::sleep_for(20ms);  // let the other callers arrive meanwhile
    gResult = 7;
}

std::vector<std::string> gTraceLines;

void RecordTrace(std::string const& inCategory, std::int32_t inVolume, std::string const& inText) {
    gTraceLines.push_back(inCategory + "/" + std::to_string(inVolume) + ": " + inText);
}

}  // namespace

TEST(Thread, IdentityAndTheThreadMoveWithATransferAndJoinWaitsOnce) {
    threadtest::Gate release;
    Thread const main("Main");
    Thread third("Third");
    bool ran = false, selfIsHolder = false, selfIsMain = true;
    // A temporary name and function: the thread must keep its own copies.
    auto first = std::make_unique<Thread>(std::string("Worker"), boost::function0<void>([&] {
        if (!release.Pass()) return;
        Thread const self("Inside");
        selfIsHolder = (self == third);
        selfIsMain = (self == main);
        ran = true;
    }));
    Thread second(*first);
    third = second;
    third = third;
    EXPECT_EQ(third.GetName(), "Worker");
    EXPECT_NE(*first, third);  // the identity went with the thread
    // The emptied sources and a handle made by name own nothing to wait for.
    threadtest::FinishesInTime("joining emptied sources", [&] {
        first->Join();
        second.Join();
        Thread("Handle").Join();
        Thread("Empty function", boost::function0<void>()).Join();
    });
    EXPECT_FALSE(ran);
    release.Open();
    threadtest::FinishesInTime("Join, twice", [&] {
        third.Join();
        third.Join();
    });
    EXPECT_TRUE(ran);  // Join orders the thread's writes before the caller's reads
    EXPECT_TRUE(selfIsHolder);
    EXPECT_FALSE(selfIsMain);
}

TEST(ThreadErrors, BoostFailuresAreReportedAsError20Or21ThenRethrown) {
    ScopedErrorManager manager;
    EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::thread_resource_error(EAGAIN, "x"); }),
                 boost::thread_resource_error);
    EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::lock_error(EDEADLK, "x"); }), boost::lock_error);
    // Other exceptions, boost::thread_exception siblings included, pass unreported.
    EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::condition_error(EINVAL, "x"); }),
                 boost::condition_error);
    EXPECT_THROW(CallTranslatingThreadErrors([] { throw std::invalid_argument("x"); }), std::invalid_argument);
    // A thread joining itself is refused with error 20.
    std::atomic<Thread*> self{nullptr};
    std::atomic<bool> refused{false};
    Thread thread("Self", [&] {
        while (self == nullptr) std::this_thread::yield();
        try {
            self.load()->Join();
        } catch (boost::thread_resource_error const&) {
            refused = true;
        }
    });
    self = &thread;
    threadtest::FinishesInTime("a thread joining itself", [&] { thread.Join(); });
    EXPECT_TRUE(refused);
    int const numbers[] = {20, 21, 20};
    ASSERT_EQ(manager->mCalls.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        auto const& call = manager->mCalls[i];
        EXPECT_EQ(call.mModuleID, 106u);
        EXPECT_EQ(call.mErrorNumber, numbers[i]);
        EXPECT_EQ(call.mLevel, quorel::config::kErrorLevel_NonFatal);
        EXPECT_TRUE(call.mDeferrable);
        EXPECT_EQ(call.mMessage, numbers[i] == 20 ? quorel::config::kErrorMessage_NotEnoughThreadResources
                                                  : quorel::config::kErrorMessage_FailedToAcquireThreadLock);
    }
}

TEST(ThreadGroup, NamesCountCreatedThreadsAndJoinAllWaitsForTheMembersOnly) {
    threadtest::Gate release, outsiderRelease;
    std::atomic<int> finished{0};
    std::atomic<bool> outsiderDone{false};
    auto work = [&] { finished += release.Pass(); };
    ThreadGroup group("Decoders");
    std::unique_ptr<Thread> first(group.CreateThread(work));
    delete group.CreateThread(work);  // the group keeps its share of the thread
    std::unique_ptr<Thread> outsider(group.CreateThread([&] { outsiderDone = outsiderRelease.Pass(); }));
    group.RemoveThread(outsider.get());
    std::unique_ptr<Thread> fourth(group.CreateThread(work));
    EXPECT_EQ(first->GetName(), "Decoders created thread #1");
    EXPECT_EQ(fourth->GetName(), "Decoders created thread #4");  // removal does not renumber
    Thread added("Added", work);
    Thread handle("Owns no thread");
    for (Thread* ignored : {&added, fourth.get(), &handle, static_cast<Thread*>(nullptr)}) group.AddThread(ignored);
    EXPECT_EQ(group.Size(), 4);
    release.Open();
    threadtest::FinishesInTime("JoinAll while a removed thread still runs", [&] { group.JoinAll(); });
    EXPECT_EQ(finished.load(), 4);
    EXPECT_FALSE(outsiderDone);
    outsiderRelease.Open();
    threadtest::FinishesInTime("joining the removed thread", [&] { outsider->Join(); });
}

TEST(ThreadPriority, LoweringSucceedsAndARefusedRaiseChangesNothing) {
    int const normal = getpriority(PRIO_PROCESS, 0);
    std::thread([normal] {  // a fresh thread starts at the main thread's nice value
        auto const step = [](ThreadPriority inPriority, int inNice) {
            int const before = getpriority(PRIO_PROCESS, 0);
            bool const applied = SetCurrentThreadPriority(inPriority);
            EXPECT_EQ(getpriority(PRIO_PROCESS, 0), applied ? inNice : before) << inPriority;
            EXPECT_TRUE(applied || inNice < before) << inPriority;  // lowering needs no privilege
        };
        step(kThreadPriority_Highest, std::max(normal - 10, -20));
        step(static_cast<ThreadPriority>(99), normal);  // unknown means normal
        step(kThreadPriority_Lowest, std::min(normal + 10, 19));
        step(kThreadPriority_AboveNormal, std::max(normal - 5, -20));
        step(kThreadPriority_Idle, 19);
    }).join();
}

TEST(ThreadTraceScope, EnabledScopesWriteBeginAndEndToTheHookAndDisabledOnesNothing) {
    gTraceLines.clear();
    ThreadTraceWriter const previous = SetThreadTraceWriter(&RecordTrace);
    {
        ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, "Pool", "Thread", "Join", true);
        ThreadTraceScope quiet("Category", 3, "Name", "Class", "Operation", false);
    }
    SetThreadTraceWriter(previous);
    EXPECT_EQ(gTraceLines, (std::vector<std::string>{"QRLThreads/15: Begin - Pool - Thread - Join",
                                                     "QRLThreads/15: End - Pool - Thread - Join"}));
}

TEST(Barrier, EveryGenerationWaitsForAllAndHasOneLastArrivalAndZeroIsRefused) {
    Barrier barrier("Five", 5);
    EXPECT_EQ(WinnersPerRound(5, 20, [&](int) { return barrier.Wait(); }), std::vector<int>(20, 1));
    std::vector<SyncPoint> copies(3, SyncPoint("Shared", 3));  // they share one barrier and keep it
    EXPECT_EQ(WinnersPerRound(3, 5, [&](int inThread) { return copies[inThread].Wait(); }), std::vector<int>(5, 1));

    ScopedErrorManager manager;  // a count of zero is an invalid argument, and nothing is reported
    for (auto make : {+[] { Barrier(0); }, +[] { Barrier("Zero", 0); }, +[] { SyncPoint(0); },
                      +[] { SyncPoint("Zero", 0); }}) {
        try {
            make();
            ADD_FAILURE() << "no exception";
        } catch (std::invalid_argument const& error) {
            EXPECT_STREQ(error.what(), "count cannot be zero.");
        }
    }
    EXPECT_TRUE(manager->mCalls.empty());
}

TEST(CallOnce, RacingCallersRunTheFunctionOnceAndAllSeeItsResult) {
    gCalls = 0;
    std::int32_t flag = kCallOnce_Init;
    std::vector<int> seen(8, 0);
    RunThreads(8, [&](int inThread) {
        CallOnce(&SlowInitialise, flag);
        seen[inThread] = gResult;
    });
    EXPECT_EQ(gCalls.load(), 1);
    EXPECT_EQ(seen, std::vector<int>(8, 7));
}

TEST(ReaderWriterLock, ReadersShareAndAWriterTurnsTryingOnesAwayWithoutATrace) {
    ReaderWriterLock lock;
    std::atomic<int> inside{0};
    RunThreads(6, [&](int inThread) {  // each reader stays until all six are in
        ReadLockHolder holder(lock, inThread % 2 == 0);
        EXPECT_TRUE(holder.Held());
        ++inside;
        EXPECT_TRUE(threadtest::Eventually([&] { return inside.load() == 6; }));
    });
    ASSERT_TRUE(lock.AcquireRead(true));
    EXPECT_FALSE(lock.AcquireWrite(true));  // a reader is inside
    lock.ReleaseRead();

    ASSERT_TRUE(lock.AcquireWrite(false));
    std::uint32_t const held = lock.mState.load();
    EXPECT_FALSE(lock.AcquireRead(true));
    EXPECT_FALSE(lock.AcquireWrite(true));
    EXPECT_EQ(lock.mState.load(), held);
    lock.ReleaseWrite();
    EXPECT_THROW(lock.ReleaseWrite(), boost::lock_error);
}

TEST(ReaderWriterLock, ReadersNeverStarveAWaitingWriter) {
    // Four readers overlap all the time, so the lock is never free of them on
    // its own; the writer still gets in, fifty times, or the test times out.
    ReaderWriterLock lock;
    std::atomic<bool> stop{false};
    std::atomic<long> reads{0};
    int shared = 0;
    RunThreads(5, [&](int inThread) {
        if (inThread == 4) {
            EXPECT_TRUE(threadtest::Eventually([&] { return reads.load() > 100; }));
            for (int i = 0; i < 50; ++i) {
                WriteLockHolder holder(lock);
                holder.Acquire(false);
                ++shared;
            }
            stop = true;
        }
        while (!stop) {
            if (lock.AcquireRead(inThread % 2 == 0)) {  // trying and waiting readers
                reads += 1 + shared;
                std::this_thread::sleep_for(50us);
                lock.ReleaseRead();
            }
        }
    });
    EXPECT_EQ(shared, 50);
    EXPECT_EQ(lock.mState.load(), 0u);
}

TEST(RecursiveMutex, NestedLocksHoldItUntilTheLastReleaseAndExcludeOtherThreads) {
    ScopedErrorManager manager;
    RecursiveMutex mutex("Nested");
    std::atomic<bool> otherGot{false};
    std::thread other;
    threadtest::FinishesInTime("nested locking", [&] {
        RecursiveMutexLock outer(mutex, true);
        {
            RecursiveMutexLock inner(mutex, true);  // a plain mutex would deadlock here
            EXPECT_THROW(inner.Lock(), boost::lock_error);  // but not twice through one lock
        }
        other = std::thread([&] {
            RecursiveMutexLock lock(mutex, true);
            otherGot = true;
        });
        std::this_thread::sleep_for(50ms);
        EXPECT_FALSE(otherGot.load());  // the outer lock still holds it
    });
    threadtest::FinishesInTime("locking after the last release", [&] { other.join(); });
    ASSERT_EQ(manager->mCalls.size(), 1u);
    EXPECT_EQ(manager->mCalls[0].mErrorNumber, 21);
}
