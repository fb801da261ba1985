#include <quorel/config/Errors.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <string>

using namespace quorel;
using namespace quorel::config;
using quorel::testing::ScopedErrorManager;

namespace {

// A deferrable (or not) error numbered inNumber, carrying the number as its first value.
void RaiseNumbered(std::int32_t inNumber, bool inDeferrable = true) {
    ThrowError(kErrorLevel_NonFatal, kErrorMessage_MalformedGUID, kErrorModule_Utility, inNumber, inDeferrable,
               ReplacementValue(inNumber));
}

}  // namespace

TEST(ErrorManager, WithoutAManagerTheFirstErrorIsALogicError) {
    ErrorManager::Set(nullptr);
    std::string what;
    try { TestThrowError(false); } catch (std::logic_error const& error) { what = error.what(); }
    EXPECT_EQ(what, "qrl::config::ErrorManager not initialized. Check qrl/config/Errors.");
    EXPECT_THROW(DeferredErrorReporter reporter, std::logic_error);
}

TEST(ErrorManager, DispatchReachesHandleErrorWithAllArguments) {
    ScopedErrorManager manager;
    EXPECT_EQ(ErrorManager::Get(), &*manager);
    TestThrowError(false);
    TestThrowError(true);
    ASSERT_EQ(manager->mCalls.size(), 2u);
    quorel::testing::RecordedCall const &nonFatal = manager->mCalls[0], &fatal = manager->mCalls[1];
    EXPECT_TRUE(nonFatal.mLevel == kErrorLevel_NonFatal && nonFatal.mModuleID == 100u && nonFatal.mErrorNumber == 20);
    EXPECT_TRUE(fatal.mLevel == kErrorLevel_Fatal && fatal.mModuleID == 100u && fatal.mErrorNumber == 21);
    EXPECT_TRUE(nonFatal.mDeferrable && fatal.mDeferrable);
    EXPECT_EQ(nonFatal.mMessage, kErrorMessage_NonFatalTest);
    EXPECT_EQ(fatal.mMessage, kErrorMessage_FatalTest);
    ReplacementValue const* values = nonFatal.mValues;
    EXPECT_TRUE(values[0].GetKind() == ReplacementValue::kKind_Signed && values[0].GetSigned() == -2147483648LL);
    EXPECT_TRUE(values[1].GetKind() == ReplacementValue::kKind_Unsigned && values[1].GetUnsigned() == 4294967295ULL);
    EXPECT_TRUE(values[2].GetKind() == ReplacementValue::kKind_Double && values[2].GetDouble() == 29.2334);
    EXPECT_EQ(values[3].GetKind(), ReplacementValue::kKind_None);
    for (ReplacementValue const& value : fatal.mValues) EXPECT_EQ(value.GetKind(), ReplacementValue::kKind_None);

    // The top-level handler swallows everything, an empty function included.
    EXPECT_EQ(manager->ExecuteFunctionWithTopLevelExceptionHandler([] { return 42; }), 42);
    EXPECT_EQ(manager->ExecuteFunctionWithTopLevelExceptionHandler([]() -> std::int32_t { throw 3.5; }), 1);
    EXPECT_EQ(manager->ExecuteFunctionWithTopLevelExceptionHandler(boost::function0<std::int32_t>()), 1);
    EXPECT_FALSE(manager->PurgeMemory(1024));
}

TEST(DeferredErrorReporter, TheNewestReporterTakesDeferrableErrorsOnly) {
    ScopedErrorManager manager;
    DeferredErrorReporter outer;
    EXPECT_TRUE(outer.GetLevel() == -1 && outer.GetModuleID() == 110u && outer.GetErrorNumber() == 0);
    EXPECT_TRUE(manager->IsErrorReportingDeferred());
    {
        DeferredErrorReporter inner;
        RaiseNumbered(1);
        RaiseNumbered(2, false);  // not deferrable: no reporter sees it, HandleError does
        EXPECT_EQ(manager->mCalls.size(), 2u);
        EXPECT_TRUE(inner.GetPendingErrorCount() == 1 && inner.GetErrorNumber() == 1);
        EXPECT_EQ(outer.GetPendingErrorCount(), 0);
        {
            DeferredErrorReporter copy(inner);  // a copy is not registered
            EXPECT_TRUE(copy.GetPendingErrorCount() == 1 && copy.GetRefCount() == 0);
        }
        RaiseNumbered(3);
        EXPECT_EQ(inner.GetPendingErrorCount(), 2);
    }
    RaiseNumbered(4);  // back to the outer one
    EXPECT_TRUE(outer.GetPendingErrorCount() == 1 && outer.GetErrorNumber() == 4);
    EXPECT_EQ(outer.GetMessage(), kErrorMessage_MalformedGUID);
    EXPECT_EQ(outer.GetReplacementValue(0).GetSigned(), 4);
}

TEST(DeferredErrorReporter, FinishHandsOnTheLastErrorOnce) {
    ScopedErrorManager manager;
    boost::intrusive_ptr<DeferredErrorReporter> reporter = manager->NewDeferredErrorReporter(false);
    for (std::int32_t number : {7, 8, 9}) RaiseNumbered(number);
    reporter->Finish();  // reporting is off: counts, keeps the errors
    EXPECT_EQ(manager->mCalls.size(), 3u);
    EXPECT_TRUE(reporter->GetPendingErrorCount() == 3 && reporter->GetRefCount() == 1);

    reporter->SetReportErrorWhenFinished(true);
    DeferredErrorReporter newest;  // Finish goes straight to the manager, past newer reporters
    reporter->Finish();
    reporter->Finish();  // nothing new: only counted
    ASSERT_EQ(manager->mCalls.size(), 4u);
    EXPECT_TRUE(manager->mCalls[3].mErrorNumber == 9 && manager->mCalls[3].mDeferrable);
    EXPECT_EQ(manager->mCalls[3].mValues[0].GetSigned(), 9);
    EXPECT_TRUE(newest.GetPendingErrorCount() == 0 && reporter->GetPendingErrorCount() == 0);
    EXPECT_EQ(reporter->GetFinishCount(), 3);
}

TEST(DeferredErrorReporter, DestructionDropsPendingErrorsAndSurvivesAnUninstalledManager) {
    ScopedErrorManager manager;
    {
        DeferredErrorReporter reporter;
        RaiseNumbered(1);
    }
    EXPECT_EQ(manager->mCalls.size(), 1u);
    EXPECT_FALSE(manager->IsErrorReportingDeferred());

    auto* reporter = new DeferredErrorReporter;
    ErrorManager::Set(nullptr);
    delete reporter;  // must not throw although no manager is installed
    manager->RemoveDeferredErrorReporter(reporter);  // the stale entry, dropped by hand
    manager->AddDeferredErrorReporter(nullptr);       // ignored
    EXPECT_FALSE(manager->IsErrorReportingDeferred());
}

TEST(ReplacementValue, WidensAndTagsEachKind) {
    typedef ReplacementValue RV;
    UTF16String const text(3, 'x');
    struct Case { RV mValue; RV::Kind mKind; std::int64_t mSigned; std::uint64_t mUnsigned; } const cases[] = {
        {RV(), RV::kKind_None, 0, 0}, {RV(2.5), RV::kKind_Double, 0, 0}, {RV(text), RV::kKind_Text, 0, 0},
        {RV(std::int32_t{-1}), RV::kKind_Signed, -1, 0}, {RV(-5000000000LL), RV::kKind_Signed, -5000000000LL, 0},
        {RV(std::uint32_t{0xFFFFFFFFu}), RV::kKind_Unsigned, 0, 0xFFFFFFFFu}, {RV(~0ull), RV::kKind_Unsigned, 0, ~0ull},
    };
    for (Case const& c : cases) {
        RV const& v = c.mValue;
        EXPECT_TRUE(v.GetKind() == c.mKind && v.GetSigned() == c.mSigned && v.GetUnsigned() == c.mUnsigned) << c.mKind;
        RV copy(v);
        copy.Init();  // zeroes the numbers; the kind and the text stay
        EXPECT_TRUE(copy.GetKind() == c.mKind && copy.GetSigned() == 0 && copy.GetUnsigned() == 0);
        EXPECT_TRUE(copy.GetDouble() == 0.0 && copy.GetText() == v.GetText());
    }
    EXPECT_TRUE(cases[1].mValue.GetDouble() == 2.5 && cases[2].mValue.GetText() == text);
}
