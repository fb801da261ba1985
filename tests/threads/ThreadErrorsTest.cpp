#include <quorel/threads/ScopedLock.h>
#include <quorel/threads/Thread.h>
#include <quorel/threads/ThreadErrors.h>
#include <quorel/threads/ThreadGroup.h>

#include "ThreadTestSupport.h"
#include "support/RecordingErrorManager.h"

#include <boost/thread/exceptions.hpp>
#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <stdexcept>

using namespace quorel;
using namespace quorel::threads;
using quorel::testing::RecordedCall;
using quorel::testing::RecordedError;
using quorel::testing::RecordingErrorManager;
using quorel::testing::ScopedErrorManager;

namespace {

void ExpectThreadError(RecordedCall const& inCall, std::int32_t inNumber, char const* inMessage) {
    EXPECT_EQ(inCall.mLevel, config::kErrorLevel_NonFatal);
    EXPECT_STREQ(inCall.mMessage.c_str(), inMessage);
    EXPECT_EQ(inCall.mModuleID, 106u);
    EXPECT_EQ(inCall.mErrorNumber, inNumber);
    EXPECT_TRUE(inCall.mDeferrable);
    for (auto const& value : inCall.mValues) EXPECT_EQ(value.GetKind(), config::ReplacementValue::kKind_None);
}

}  // namespace

TEST(ThreadErrors, BoostFailuresAreReportedThenRethrownAsTheyWere) {
    ScopedErrorManager manager;
    try {
        CallTranslatingThreadErrors([] { throw boost::thread_resource_error(EAGAIN, "no more threads"); });
        ADD_FAILURE() << "no exception";
    } catch (boost::thread_resource_error const& error) {
        EXPECT_EQ(error.code().value(), EAGAIN);
    }
    try {
        CallTranslatingThreadErrors([] { throw boost::lock_error(EDEADLK, "refused"); });
        ADD_FAILURE() << "no exception";
    } catch (boost::lock_error const& error) {
        EXPECT_EQ(error.code().value(), EDEADLK);
    }
    ASSERT_EQ(manager->mCalls.size(), 2u);
    ExpectThreadError(manager->mCalls[0], 20,
                      "$$$/qrl/threads/Error/NotEnoughThreadResources=Not enough thread resources.");
    ExpectThreadError(manager->mCalls[1], 21,
                      "$$$/qrl/threads/Error/FailedToAcquireThreadLock=Failure to acquire thread lock.");
}

TEST(ThreadErrors, OtherExceptionsPassUnreportedAndAThrowingManagerHasTheLastWord) {
    {
        ScopedErrorManager manager;
        EXPECT_THROW(CallTranslatingThreadErrors([] { throw std::invalid_argument("x"); }), std::invalid_argument);
        // Siblings of the two translated kinds under boost::thread_exception.
        EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::condition_error(EINVAL, "x"); }),
                     boost::condition_error);
        EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::thread_exception(EINVAL, "x"); }),
                     boost::thread_exception);
        EXPECT_TRUE(manager->mCalls.empty());
    }
    ScopedErrorManager manager(RecordingErrorManager::kThrow);
    EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::lock_error(); }), RecordedError);
    EXPECT_THROW(CallTranslatingThreadErrors([] { throw boost::thread_resource_error(); }), RecordedError);
    EXPECT_EQ(manager->mCalls.size(), 2u);
}

TEST(ThreadErrors, ThePrimitivesReportRefusedLocksAndSelfJoins) {
    ScopedErrorManager manager;
    RecursiveMutex mutex("Refusals");
    RecursiveMutexLock lock(mutex, true);
    EXPECT_THROW(lock.Lock(), boost::lock_error);  // held through this lock already
    lock.Unlock();
    EXPECT_THROW(lock.Unlock(), boost::lock_error);  // not held

    // A thread joining itself, directly and through its group (one after the
    // other: the recording manager is not made for concurrent errors).
    threadtest::Gate created;
    threadtest::Gate joined;
    std::unique_ptr<Thread> self;
    bool joinThrew = false;
    self = std::make_unique<Thread>("Self", [&] {
        if (!created.Pass()) return;
        try {
            self->Join();
        } catch (boost::thread_resource_error const&) {
            joinThrew = true;
        }
    });
    ThreadGroup group("Own");
    bool joinAllThrew = false;
    std::unique_ptr<Thread> member(group.CreateThread([&] {
        if (!joined.Pass()) return;
        try {
            group.JoinAll();
        } catch (boost::thread_resource_error const&) {
            joinAllThrew = true;
        }
    }));
    created.Open();
    threadtest::FinishesInTime("threads joining themselves", [&] {
        self->Join();
        joined.Open();
        member->Join();
    });
    EXPECT_TRUE(joinThrew);
    EXPECT_TRUE(joinAllThrew);

    ASSERT_EQ(manager->mCalls.size(), 4u);
    ExpectThreadError(manager->mCalls[0], 21, config::kErrorMessage_FailedToAcquireThreadLock);
    ExpectThreadError(manager->mCalls[1], 21, config::kErrorMessage_FailedToAcquireThreadLock);
    ExpectThreadError(manager->mCalls[2], 20, config::kErrorMessage_NotEnoughThreadResources);
    ExpectThreadError(manager->mCalls[3], 20, config::kErrorMessage_NotEnoughThreadResources);
}
