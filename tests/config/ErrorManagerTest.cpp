#include <quorel/config/Errors.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace quorel;
using namespace quorel::config;
using quorel::testing::RecordingErrorManager;
using quorel::testing::ScopedErrorManager;

namespace {

void RaiseNumbered(std::int32_t inNumber, bool inDeferrable = true) {
    ThrowError(kErrorLevel_NonFatal, kErrorMessage_MalformedGUID, kErrorModule_Utility, inNumber, inDeferrable,
               ReplacementValue(inNumber));
}

}  // namespace

TEST(ErrorManager, WithoutAManagerTheFirstErrorIsALogicError) {
    ErrorManager::Set(nullptr);
    try {
        TestThrowError(false);
        FAIL() << "no exception";
    } catch (std::logic_error const& error) {
        EXPECT_STREQ(error.what(), "qrl::config::ErrorManager not initialized. Check qrl/config/Errors.");
    }
    EXPECT_THROW(DeferredErrorReporter reporter, std::logic_error);
}

TEST(ErrorManager, DispatchReachesHandleErrorWithAllArguments) {
    ScopedErrorManager manager;
    EXPECT_EQ(ErrorManager::Get(), &*manager);
    EXPECT_FALSE(manager->IsErrorReportingDeferred());

    TestThrowError(false);
    TestThrowError(true);
    ASSERT_EQ(manager->mCalls.size(), 2u);
    auto const& nonFatal = manager->mCalls[0];
    EXPECT_EQ(nonFatal.mLevel, kErrorLevel_NonFatal);
    EXPECT_EQ(nonFatal.mMessage, kErrorMessage_NonFatalTest);
    EXPECT_EQ(nonFatal.mModuleID, 100u);
    EXPECT_EQ(nonFatal.mErrorNumber, 20);
    EXPECT_TRUE(nonFatal.mDeferrable);
    EXPECT_EQ(nonFatal.mValues[0].GetKind(), ReplacementValue::kKind_Signed);
    EXPECT_EQ(nonFatal.mValues[0].GetSigned(), -2147483648LL);
    EXPECT_EQ(nonFatal.mValues[1].GetKind(), ReplacementValue::kKind_Unsigned);
    EXPECT_EQ(nonFatal.mValues[1].GetUnsigned(), 4294967295ULL);
    EXPECT_EQ(nonFatal.mValues[2].GetKind(), ReplacementValue::kKind_Double);
    EXPECT_DOUBLE_EQ(nonFatal.mValues[2].GetDouble(), 29.2334);
    EXPECT_EQ(nonFatal.mValues[3].GetKind(), ReplacementValue::kKind_None);

    auto const& fatal = manager->mCalls[1];
    EXPECT_EQ(fatal.mLevel, kErrorLevel_Fatal);
    EXPECT_EQ(fatal.mMessage, kErrorMessage_FatalTest);
    EXPECT_EQ(fatal.mErrorNumber, 21);
    for (auto const& value : fatal.mValues) EXPECT_EQ(value.GetKind(), ReplacementValue::kKind_None);
}

TEST(DeferredErrorReporter, TheNewestReporterTakesDeferrableErrorsOnly) {
    ScopedErrorManager manager;
    DeferredErrorReporter outer;
    EXPECT_EQ(outer.GetLevel(), -1);
    EXPECT_EQ(outer.GetModuleID(), 110u);
    EXPECT_EQ(outer.GetErrorNumber(), 0);
    EXPECT_TRUE(manager->IsErrorReportingDeferred());
    {
        DeferredErrorReporter inner;
        RaiseNumbered(1);
        EXPECT_EQ(inner.GetPendingErrorCount(), 1);
        EXPECT_EQ(inner.GetErrorNumber(), 1);
        EXPECT_EQ(outer.GetPendingErrorCount(), 0);

        RaiseNumbered(2, false);  // not deferrable: no reporter sees it
        EXPECT_EQ(inner.GetPendingErrorCount(), 1);
        EXPECT_EQ(manager->mCalls.size(), 2u);  // HandleError is called all the same
        {
            DeferredErrorReporter copy(inner);  // a copy is not registered
            EXPECT_EQ(copy.GetPendingErrorCount(), 1);
            EXPECT_EQ(copy.GetRefCount(), 0);
        }
        RaiseNumbered(3);
        EXPECT_EQ(inner.GetPendingErrorCount(), 2);
    }
    RaiseNumbered(4);
    EXPECT_EQ(outer.GetPendingErrorCount(), 1);
    EXPECT_EQ(outer.GetErrorNumber(), 4);
    EXPECT_STREQ(outer.GetMessage().c_str(), kErrorMessage_MalformedGUID);
    EXPECT_EQ(outer.GetReplacementValue(0).GetSigned(), 4);
}

TEST(DeferredErrorReporter, FinishHandsOnTheLastErrorOnce) {
    ScopedErrorManager manager;
    boost::intrusive_ptr<DeferredErrorReporter> reporter = manager->NewDeferredErrorReporter(false);
    EXPECT_EQ(reporter->GetRefCount(), 1);
    EXPECT_FALSE(reporter->GetReportErrorWhenFinished());

    RaiseNumbered(7);
    RaiseNumbered(8);
    RaiseNumbered(9);
    EXPECT_EQ(manager->mCalls.size(), 3u);
    reporter->Finish();  // reporting is off: counts, keeps the errors
    EXPECT_EQ(manager->mCalls.size(), 3u);
    EXPECT_EQ(reporter->GetPendingErrorCount(), 3);

    reporter->SetReportErrorWhenFinished(true);
    reporter->Finish();
    ASSERT_EQ(manager->mCalls.size(), 4u);
    EXPECT_EQ(manager->mCalls[3].mErrorNumber, 9);
    EXPECT_EQ(manager->mCalls[3].mValues[0].GetSigned(), 9);
    EXPECT_TRUE(manager->mCalls[3].mDeferrable);
    EXPECT_EQ(reporter->GetPendingErrorCount(), 0);

    reporter->Finish();  // nothing new: only counted
    EXPECT_EQ(manager->mCalls.size(), 4u);
    EXPECT_EQ(reporter->GetFinishCount(), 3);

    RaiseNumbered(10);
    reporter->Finish();
    EXPECT_EQ(manager->mCalls.size(), 6u);
    EXPECT_EQ(manager->mCalls[5].mErrorNumber, 10);
}

TEST(DeferredErrorReporter, FinishBypassesTheOtherReporters) {
    ScopedErrorManager manager;
    DeferredErrorReporter outer;
    DeferredErrorReporter inner;
    RaiseNumbered(5);
    DeferredErrorReporter newest;
    inner.Finish();
    EXPECT_EQ(manager->mCalls.size(), 2u);
    EXPECT_EQ(newest.GetPendingErrorCount(), 0);
    EXPECT_EQ(outer.GetPendingErrorCount(), 0);
}

TEST(DeferredErrorReporter, DestructionDropsPendingErrorsAndSurvivesAnUninstalledManager) {
    RecordingErrorManager manager;
    ErrorManager::Set(&manager);
    {
        DeferredErrorReporter reporter;
        RaiseNumbered(1);
    }
    EXPECT_EQ(manager.mCalls.size(), 1u);
    EXPECT_FALSE(manager.IsErrorReportingDeferred());

    auto* reporter = new DeferredErrorReporter;
    ErrorManager::Set(nullptr);
    delete reporter;  // must not throw although no manager is installed
    ErrorManager::Set(&manager);
    manager.RemoveDeferredErrorReporter(reporter);  // the stale entry, dropped by hand
    manager.AddDeferredErrorReporter(nullptr);
    EXPECT_FALSE(manager.IsErrorReportingDeferred());
    ErrorManager::Set(nullptr);
}

TEST(ErrorManager, TopLevelHandlerSwallowsEverything) {
    ScopedErrorManager manager;
    EXPECT_EQ(manager->ExecuteFunctionWithTopLevelExceptionHandler([] { return 42; }), 42);
    EXPECT_EQ(manager->ExecuteFunctionWithTopLevelExceptionHandler([]() -> std::int32_t { throw 3.5; }), 1);
    EXPECT_EQ(manager->ExecuteFunctionWithTopLevelExceptionHandler(boost::function0<std::int32_t>()), 1);
    EXPECT_FALSE(manager->PurgeMemory(1024));
    manager->IncrementLazilyDisplayErrors();
    manager->DecrementLazilyDisplayErrors();
}

TEST(ReplacementValue, WidensAndTagsEachKind) {
    ReplacementValue const fromLong(static_cast<std::int32_t>(-1));
    EXPECT_EQ(fromLong.GetKind(), ReplacementValue::kKind_Signed);
    EXPECT_EQ(fromLong.GetSigned(), -1);
    EXPECT_EQ(fromLong.GetUnsigned(), 0u);

    ReplacementValue const fromUnsigned(static_cast<std::uint32_t>(0xFFFFFFFFu));
    EXPECT_EQ(fromUnsigned.GetKind(), ReplacementValue::kKind_Unsigned);
    EXPECT_EQ(fromUnsigned.GetUnsigned(), 4294967295ULL);
    EXPECT_EQ(fromUnsigned.GetSigned(), 0);

    ReplacementValue const big(static_cast<std::int64_t>(-5000000000LL));
    EXPECT_EQ(big.GetSigned(), -5000000000LL);

    UTF16String const text(3, 'x');
    ReplacementValue withText(text);
    EXPECT_EQ(withText.GetKind(), ReplacementValue::kKind_Text);
    EXPECT_EQ(withText.GetText(), text);
    EXPECT_EQ(withText.GetDouble(), 0.0);

    ReplacementValue copy;
    EXPECT_EQ(copy.GetKind(), ReplacementValue::kKind_None);
    copy = ReplacementValue(2.5);
    copy.Init();
    EXPECT_EQ(copy.GetKind(), ReplacementValue::kKind_Double);
    EXPECT_EQ(copy.GetDouble(), 0.0);
    withText.Init();
    EXPECT_EQ(withText.GetText(), text);
}
