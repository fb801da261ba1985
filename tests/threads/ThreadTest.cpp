#include <quorel/threads/Thread.h>
#include <quorel/threads/ThreadID.h>

#include "ThreadTestSupport.h"

#include <boost/function.hpp>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace quorel::threads;

namespace {

// Reaches the protected parts of Thread.
class ExposedThread : public Thread {
public:
    using Thread::Thread;
    ExposedThread(std::string const& inName, boost::thread* inThread) : Thread(inName, inThread) {}
    boost::thread* Boost() const { return GetThread(); }
};

}  // namespace

TEST(Thread, RunsItsOwnCopyOfTheFunctionAndJoinWaitsForIt) {
    auto result = std::make_shared<int>(0);
    std::atomic<bool> release{false};
    std::unique_ptr<Thread> thread;
    {
        // The caller's name and function are gone before the thread uses the
        // function: it must run its own copies.
        std::string name = "Worker";
        boost::function0<void> function = [result, &release] {
            while (!release) std::this_thread::yield();
            *result = 42;
        };
        thread = std::make_unique<Thread>(name, function);
    }
    EXPECT_EQ(thread->GetName(), "Worker");
    release = true;
    threadtest::FinishesInTime("Join, twice", [&] {
        thread->Join();
        thread->Join();
    });
    EXPECT_EQ(*result, 42);  // Join orders the thread's writes before the caller's reads

    Thread idle("Idle", boost::function0<void>());  // an empty function: starts and ends
    threadtest::FinishesInTime("joining a thread without a function", [&] { idle.Join(); });
}

TEST(Thread, IdentityFollowsThePlatformThreadNotTheName) {
    ExposedThread here("Here");
    EXPECT_EQ(here.Boost(), nullptr);  // a handle owns nothing and has nothing to join
    here.Join();
    EXPECT_TRUE(here == Thread("Also here"));
    EXPECT_FALSE(here != Thread("Also here"));

    threadtest::Gate compared;
    std::unique_ptr<Thread> worker;
    bool selfMatchesStarter = false;
    bool selfDiffersFromMain = false;
    worker = std::make_unique<Thread>("Worker", [&] {
        if (!compared.Pass()) return;
        Thread self("Seen from inside");
        selfMatchesStarter = (self == *worker);
        selfDiffersFromMain = (self != here);
    });
    Thread other("Other", [] {});
    EXPECT_NE(*worker, here);
    EXPECT_NE(*worker, other);
    compared.Open();
    threadtest::FinishesInTime("joining two workers", [&] {
        worker->Join();
        other.Join();
    });
    EXPECT_TRUE(selfMatchesStarter);
    EXPECT_TRUE(selfDiffersFromMain);
}

TEST(Thread, TransferMovesTheThreadAndItsIdentityAndCopiesTheName) {
    std::atomic<bool> release{false};
    Thread const* finalHolder = nullptr;
    bool holderMatches = false;
    ExposedThread first("First", [&] {
        while (!release) std::this_thread::yield();
        holderMatches = (Thread("inside") == *finalHolder);
    });
    boost::thread* const running = first.Boost();
    ExposedThread second(first);
    EXPECT_EQ(first.Boost(), nullptr);
    EXPECT_EQ(second.Boost(), running);
    ExposedThread third("Third");
    third = second;
    third = third;
    EXPECT_EQ(third.Boost(), running);
    EXPECT_EQ(second.Boost(), nullptr);
    EXPECT_EQ(first.GetName(), "First");
    EXPECT_EQ(third.GetName(), "First");

    finalHolder = &third;
    release = true;
    threadtest::FinishesInTime("joining through the last holder", [&] {
        first.Join();  // emptied: returns at once
        third.Join();
    });
    EXPECT_TRUE(holderMatches);
    EXPECT_FALSE(running->joinable());

    // The protected constructor adopts a boost::thread, identity included.
    std::atomic<bool> go{false};
    bool adoptedMatches = false;
    std::unique_ptr<ExposedThread> adopted;
    auto* raw = new boost::thread([&] {
        while (!go) std::this_thread::yield();
        adoptedMatches = (Thread("inside") == *adopted);
    });
    adopted = std::make_unique<ExposedThread>("Adopted", raw);
    EXPECT_EQ(adopted->Boost(), raw);
    go = true;
    threadtest::FinishesInTime("joining an adopted thread", [&] { adopted->Join(); });
    EXPECT_TRUE(adoptedMatches);
}

TEST(Thread, SleepWaitsUntilAnAbsoluteUtcTime) {
    boost::xtime target;
    boost::xtime_get(&target, boost::TIME_UTC_);
    target.nsec += 30000123;  // may leave the nanoseconds above one second
    threadtest::FinishesInTime("Thread::Sleep", [&] { Thread::Sleep(target); });
    boost::xtime now;
    boost::xtime_get(&now, boost::TIME_UTC_);
    std::int64_t const nowNs = now.sec * 1000000000LL + now.nsec;
    EXPECT_GE(nowNs, target.sec * 1000000000LL + target.nsec);

    target.sec -= 5;  // in the past: returns at once
    auto const start = std::chrono::steady_clock::now();
    Thread::Sleep(target);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(ThreadID, IsTheKernelIdOfTheCallingThread) {
    std::uint32_t const mine = GetCurrentThreadID();
#if defined(__linux__)
    // gtest runs the tests on the main thread, whose kernel id is the process id.
    EXPECT_EQ(mine, static_cast<std::uint32_t>(getpid()));
#endif
    std::vector<std::uint32_t> ids(4);
    std::vector<std::thread> threads;
    for (auto& id : ids) {
        threads.emplace_back([&id] {
            id = GetCurrentThreadID();
#if defined(__linux__)
            EXPECT_EQ(id, static_cast<std::uint32_t>(syscall(SYS_gettid)));
#endif
        });
    }
    for (auto& thread : threads) thread.join();
    std::set<std::uint32_t> distinct(ids.begin(), ids.end());
    distinct.insert(mine);
    EXPECT_EQ(distinct.size(), ids.size() + 1);
}
