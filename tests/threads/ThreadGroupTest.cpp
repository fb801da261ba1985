#include <quorel/threads/ThreadGroup.h>

#include "ThreadTestSupport.h"
#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using namespace quorel::threads;
using quorel::testing::ScopedErrorManager;

TEST(ThreadGroup, NamesCountCreatedThreadsAndMembershipIgnoresRepeats) {
    ThreadGroup group("Decoders");
    std::unique_ptr<Thread> first(group.CreateThread([] {}));
    std::unique_ptr<Thread> second(group.CreateThread([] {}));
    EXPECT_EQ(first->GetName(), "Decoders created thread #1");
    EXPECT_EQ(second->GetName(), "Decoders created thread #2");
    EXPECT_EQ(group.Size(), 2);

    group.RemoveThread(first.get());
    group.RemoveThread(first.get());  // no longer in the group
    group.RemoveThread(nullptr);
    EXPECT_EQ(group.Size(), 1);
    std::unique_ptr<Thread> third(group.CreateThread([] {}));
    EXPECT_EQ(third->GetName(), "Decoders created thread #3");  // removal does not renumber

    group.AddThread(third.get());  // already in
    group.AddThread(nullptr);
    Thread handle("Handle on the caller");
    group.AddThread(&handle);  // owns no thread
    EXPECT_EQ(group.Size(), 2);
    threadtest::FinishesInTime("joining the group and the removed thread", [&] {
        group.JoinAll();
        first->Join();
    });
    EXPECT_EQ(group.Size(), 2);  // joined threads stay members
}

TEST(ThreadGroup, JoinAllWaitsForTheMembersOnlyWhateverOwnsThem) {
    threadtest::Gate release;
    std::atomic<int> finished{0};
    auto work = [&] {
        if (release.Pass()) ++finished;
    };
    threadtest::Gate outsiderRelease;
    std::atomic<bool> outsiderDone{false};
    std::unique_ptr<Thread> outsider;
    std::unique_ptr<Thread> survivor;
    {
        ThreadGroup group("Mixed");
        delete group.CreateThread(work);  // the group keeps its share of the thread
        survivor.reset(group.CreateThread(work));
        Thread added("Added", work);
        group.AddThread(&added);
        outsider.reset(group.CreateThread([&] {
            outsiderRelease.Pass();
            outsiderDone = true;
        }));
        group.RemoveThread(outsider.get());

        release.Open();
        threadtest::FinishesInTime("JoinAll while a removed thread still runs", [&] { group.JoinAll(); });
        EXPECT_EQ(finished.load(), 3);
        EXPECT_FALSE(outsiderDone);
        added.Join();  // joined through the group already: returns at once
        threadtest::FinishesInTime("JoinAll over joined threads", [&] { group.JoinAll(); });
    }
    // Threads outlive their group.
    EXPECT_EQ(survivor->GetName(), "Mixed created thread #2");
    survivor->Join();
    outsiderRelease.Open();
    threadtest::FinishesInTime("joining the removed thread", [&] { outsider->Join(); });
}

TEST(ThreadGroup, TransferMovesTheListAndKeepsCounting) {
    ScopedErrorManager manager;
    threadtest::NoContractDialog noDialog;

    ThreadGroup first("Source");
    std::unique_ptr<Thread> one(first.CreateThread([] {}));
    ThreadGroup second(first);
    EXPECT_EQ(second.GetName(), "Source");
    std::unique_ptr<Thread> two(second.CreateThread([] {}));
    EXPECT_EQ(two->GetName(), "Source created thread #2");
    ThreadGroup third("Target");
    std::unique_ptr<Thread> replaced(third.CreateThread([] {}));
    third = second;
    third = third;
    EXPECT_EQ(third.Size(), 2);
    threadtest::FinishesInTime("joining a transferred group", [&] {
        third.JoinAll();
        replaced->Join();
    });

    // Each operation on an emptied group breaks the contract and does nothing.
    EXPECT_EQ(first.Size(), 0);
    EXPECT_EQ(first.CreateThread([] {}), nullptr);
    first.AddThread(one.get());
    first.RemoveThread(one.get());
    first.JoinAll();
    ASSERT_EQ(manager->mCalls.size(), 5u);
    for (auto const& call : manager->mCalls) EXPECT_EQ(call.mErrorNumber, 25);
}
