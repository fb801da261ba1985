#include <quorel/config/Localizer.h>
#include <quorel/debug/Debug.h>
#include <quorel/debug/Dialogs.h>
#include <quorel/utility/UnicodeConversion.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

using namespace quorel;
using namespace quorel::debug;
using quorel::testing::RecordingErrorManager;
using quorel::testing::ScopedErrorManager;
using quorel::utility::AsciiToUTF16;

namespace {

std::string Narrow(UTF16String const& inText) {
    UTF8String const utf8 = utility::UTF16to8(inText);
    return std::string(utf8.begin(), utf8.end());
}

// Keeps every dialog it is given and clicks a chosen button.
class CapturingPresenter : public DialogPresenter {
public:
    std::int32_t Present(DialogDescription const& inDialog, DialogProcedure& inProcedure) override {
        std::lock_guard<std::mutex> lock(mMutex);
        mDialogs.push_back(inDialog);
        mThreads.push_back(std::this_thread::get_id());
        std::int32_t result = -1;
        mEnded = inProcedure.Command(mClick, mControlKey, result);
        mResult = result;
        return result;
    }
    std::mutex mMutex;
    std::vector<DialogDescription> mDialogs;
    std::vector<std::thread::id> mThreads;
    std::int32_t mClick = 14200;
    bool mControlKey = false;
    bool mEnded = false;
    std::int32_t mResult = -2;
};

class ScopedPresenter {
public:
    ScopedPresenter() { SetDialogPresenter(&mPresenter); }
    ~ScopedPresenter() { SetDialogPresenter(nullptr); }
    CapturingPresenter* operator->() { return &mPresenter; }

private:
    CapturingPresenter mPresenter;
};

constexpr int kCheckLine = __LINE__ + 2;
int CheckedHalf(int inValue) {
    QRL_INPUT_CONTRACT(inValue % 2 == 0);
    return inValue / 2;
}

}  // namespace

TEST(InputContract, AFailedCheckShowsTheDialogThenRaisesTheFatalError) {
    ScopedErrorManager manager;
    ScopedPresenter presenter;
    config::SetClientName(AsciiToUTF16("Mixer"));
    EnableContractDialog();

    EXPECT_EQ(CheckedHalf(4), 2);
    EXPECT_TRUE(manager->mCalls.empty());
    EXPECT_TRUE(presenter->mDialogs.empty());

    EXPECT_EQ(CheckedHalf(5), 2);  // the manager returned: the operation goes on
    ASSERT_EQ(manager->mCalls.size(), 1u);
    auto const& call = manager->mCalls[0];
    EXPECT_EQ(call.mLevel, config::kErrorLevel_Fatal);
    EXPECT_EQ(call.mModuleID, 105u);
    EXPECT_EQ(call.mErrorNumber, 25);
    EXPECT_EQ(call.mMessage, "$$$/qrl/utility/Error/Contract/InputContractViolation=An input contract violation has occurred!");
    EXPECT_TRUE(call.mDeferrable);
    for (auto const& value : call.mValues) EXPECT_EQ(value.GetKind(), config::ReplacementValue::kKind_None);

    // The dialog came up on a thread of its own, fully described.
    ASSERT_EQ(presenter->mDialogs.size(), 1u);
    EXPECT_NE(presenter->mThreads[0], std::this_thread::get_id());
    DialogDescription const& dialog = presenter->mDialogs[0];
    EXPECT_EQ(Narrow(dialog.mTitle), "Mixer Debug Event");
    EXPECT_EQ(dialog.mWidth, 300);
    EXPECT_EQ(dialog.mHeight, 100);
    EXPECT_EQ(dialog.mStyle, 0x80C008CCu);
    ASSERT_EQ(dialog.mItems.size(), 3u);
    EXPECT_EQ(dialog.mItems[0].mID, 14200);
    EXPECT_TRUE(dialog.mItems[0].IsDefaultButton());
    EXPECT_EQ(Narrow(dialog.mItems[0].mText), "Continue");
    EXPECT_EQ(dialog.mItems[0].mX, 225);
    EXPECT_EQ(dialog.mItems[0].mY, 75);
    EXPECT_EQ(dialog.mItems[1].mID, -1);
    EXPECT_EQ(Narrow(dialog.mItems[1].mText), "Mixer has encountered an error.");
    EXPECT_EQ(dialog.mItems[2].mID, 14251);
    EXPECT_EQ(Narrow(dialog.mItems[2].mText), "[" + std::string(__FILE__) + "-" + std::to_string(kCheckLine) + "]\r\n");
    EXPECT_TRUE(presenter->mEnded);
    EXPECT_EQ(presenter->mResult, 0);
}

TEST(InputContract, WithTheSwitchOffNothingIsShownAndAThrowingManagerStopsTheOperation) {
    ScopedErrorManager manager(RecordingErrorManager::kThrow);
    ScopedPresenter presenter;
    DisableContractDialog();
    EXPECT_FALSE(IsContractDialogEnabled());
    EXPECT_THROW(CheckedHalf(3), quorel::testing::RecordedError);
    EXPECT_EQ(manager->mCalls.size(), 1u);
    EXPECT_TRUE(presenter->mDialogs.empty());
    EXPECT_FALSE(BreakAfterContractDialog("x", "file", 1));
    EnableContractDialog();
    EXPECT_FALSE(BreakAfterContractDialog("x", "file", 1));
    EXPECT_EQ(presenter->mDialogs.size(), 1u);
}

TEST(InputContract, WithoutAManagerTheCheckEndsInALogicError) {
    config::ErrorManager::Set(nullptr);
    DisableContractDialog();
    EXPECT_THROW(CheckedHalf(1), std::logic_error);
    EnableContractDialog();
}

TEST(MessageDialog, ControlKeyEndsWithOneAndTextsComeThroughTheLocalizer) {
    struct Translator : config::Localizer {
        UTF16String Localize(char const* inConstant) override {
            std::string const text(inConstant);
            return AsciiToUTF16(text.find("Title") != std::string::npos ? "@0 - Fehler" : "Weiter");
        }
    } translator;
    config::Localizer::Set(&translator);
    config::SetClientName(AsciiToUTF16("Host"));
    ScopedPresenter presenter;
    presenter->mControlKey = true;
    utility::ThreadSafeMessageDialog("hello");
    config::Localizer::Set(nullptr);

    ASSERT_EQ(presenter->mDialogs.size(), 1u);
    EXPECT_EQ(Narrow(presenter->mDialogs[0].mTitle), "Host - Fehler");
    EXPECT_EQ(Narrow(presenter->mDialogs[0].mItems[0].mText), "Weiter");
    EXPECT_EQ(Narrow(presenter->mDialogs[0].mItems[2].mText), "hello");
    EXPECT_EQ(presenter->mResult, 1);

    // A click on anything but Continue does not end the message dialog.
    presenter->mClick = 14205;
    presenter->mControlKey = false;
    utility::ThreadSafeMessageDialog("again");
    EXPECT_FALSE(presenter->mEnded);
}

TEST(MessageDialog, TheDefaultPresenterWritesToStandardErrorAndContinues) {
    SetDialogPresenter(nullptr);
    EXPECT_EQ(&GetDialogPresenter(), &GetDefaultDialogPresenter());
    config::SetClientName(AsciiToUTF16("Cli"));
    ::testing::internal::CaptureStderr();
    utility::ThreadSafeMessageDialog("[here-1]\r\n");
    std::string const written = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(written, "Cli Debug Event\nCli has encountered an error.\n[here-1]\n");

    struct Procedure : DialogProcedure {
        bool Command(std::int32_t, bool, std::int32_t&) override { return true; }
    } procedure;
    DialogDescription twoButtons;
    twoButtons.mItems.push_back({1, kDialogItemClass_Button, kDialogStyle_Button, 0, 0, 1, 1, UTF16String()});
    twoButtons.mItems.push_back({2, kDialogItemClass_Button, kDialogStyle_Button, 0, 0, 1, 1, UTF16String()});
    EXPECT_EQ(GetDefaultDialogPresenter().Present(twoButtons, procedure), -1);
}

TEST(AddressTests, CompareWithNullOnly) {
    int object = 0;
    EXPECT_TRUE(IsValidAddress(&object, false));
    EXPECT_FALSE(IsValidAddress(nullptr, false));
    EXPECT_TRUE(IsValidAddress(nullptr, true));
    EXPECT_TRUE(IsValidAddressRange(&object, 0u, false));
    EXPECT_FALSE(IsValidAddressRange(nullptr, 16u, false));
    EXPECT_TRUE(IsValidAddressRange(nullptr, 16u, true));
}

TEST(AddressTests, TheRangeFormChecksItsOrder) {
    ScopedErrorManager manager;
    DisableContractDialog();
    char buffer[8];
    EXPECT_TRUE(IsValidAddressRange(buffer, buffer + 8, false));
    EXPECT_TRUE(IsValidAddressRange(nullptr, buffer, true));  // order not checked
    EXPECT_TRUE(IsValidAddressRange(nullptr, nullptr, true));
    EXPECT_FALSE(IsValidAddressRange(nullptr, buffer, false));  // begin below end, but null
    EXPECT_TRUE(manager->mCalls.empty());

    EXPECT_TRUE(IsValidAddressRange(buffer, buffer, false));  // empty: the contract fails
    EXPECT_TRUE(IsValidAddressRange(buffer + 8, buffer, true));
    ASSERT_EQ(manager->mCalls.size(), 2u);
    EXPECT_EQ(manager->mCalls[0].mErrorNumber, 25);
    EnableContractDialog();
}
