#include <quorel/config/Localizer.h>
#include <quorel/debug/Debug.h>
#include <quorel/debug/Dialogs.h>
#include <quorel/utility/UnicodeConversion.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using namespace quorel;
using namespace quorel::debug;
using namespace quorel::testing;
using quorel::utility::AsciiToUTF16;
typedef std::vector<std::string> Texts;

namespace {

// Installed for its lifetime: keeps the last dialog it is given, the title and item texts of
// every dialog (ASCII in these tests), and clicks mClick.  Dialogs come one at a time, on a
// thread the caller joins, so no lock is needed.  As a procedure it ends any dialog.
struct CapturingPresenter : DialogPresenter, DialogProcedure {
    CapturingPresenter() { SetDialogPresenter(this); }
    ~CapturingPresenter() override { SetDialogPresenter(nullptr); }
    std::int32_t Present(DialogDescription const& inDialog, DialogProcedure& inProcedure) override {
        mDialog = inDialog;
        mTexts.push_back(Texts(1, std::string(inDialog.mTitle.begin(), inDialog.mTitle.end())));
        for (DialogItem const& item : inDialog.mItems) mTexts.back().emplace_back(item.mText.begin(), item.mText.end());
        mThread = std::this_thread::get_id();
        mEnded = inProcedure.Command(mClick, mControlKey, mResult = -1);
        return mResult;
    }
    bool Command(std::int32_t, bool, std::int32_t&) override { return true; }
    DialogDescription mDialog;
    std::vector<Texts> mTexts;
    std::thread::id mThread;
    std::int32_t mClick = 14200, mResult = -2;
    bool mControlKey = false, mEnded = false;
};

constexpr int kCheckLine = __LINE__ + 2;
int CheckedHalf(int inValue) {
    QRL_INPUT_CONTRACT(inValue % 2 == 0);
    return inValue / 2;
}

}  // namespace

TEST(InputContract, AFailedCheckShowsTheDialogThenRaisesTheFatalError) {
    ScopedErrorManager manager;
    CapturingPresenter presenter;
    config::SetClientName(AsciiToUTF16("Mixer"));
    EnableContractDialog();
    EXPECT_TRUE(CheckedHalf(4) == 2 && CheckedHalf(5) == 2);  // the manager returned: the operation goes on

    RecordedCall const call = manager->mCalls.at(0);
    EXPECT_TRUE(call.mLevel == config::kErrorLevel_Fatal && call.mModuleID == 105u && call.mErrorNumber == 25);
    EXPECT_EQ(call.mMessage, "$$$/qrl/utility/Error/Contract/InputContractViolation="
                             "An input contract violation has occurred!");
    EXPECT_TRUE(call.mDeferrable && call.mValues[0].GetKind() == config::ReplacementValue::kKind_None);

    // The dialog came up on a thread of its own, fully described, and Continue ended it with 0.
    EXPECT_TRUE(presenter.mThread != std::this_thread::get_id() && presenter.mEnded && presenter.mResult == 0);
    EXPECT_EQ(presenter.mTexts.at(0), Texts({"Mixer Debug Event", "Continue", "Mixer has encountered an error.",
                                             "[" __FILE__ "-" + std::to_string(kCheckLine) + "]\r\n"}));
    DialogDescription const& dialog = presenter.mDialog;  // Continue is 14200, the id that was clicked
    EXPECT_TRUE(dialog.mWidth == 300 && dialog.mHeight == 100 && dialog.mItems[0].IsDefaultButton() &&
                dialog.mItems[1].mID == -1 && dialog.mItems[2].mID == 14251);

    // Switched off: no dialog.  A throwing manager stops the operation.
    DisableContractDialog();
    manager->mReaction = RecordingErrorManager::kThrow;
    EXPECT_THROW(CheckedHalf(3), RecordedError);
    EXPECT_TRUE(!BreakAfterContractDialog("x", "f", 1) && manager->mCalls.size() == 2u && presenter.mTexts.size() == 1);

    // The address tests: only null is invalid, unless allowed, and a null range start is not
    // checked for order.  An empty or reversed range fails the contract; the answer goes on.
    manager->mReaction = RecordingErrorManager::kReturn;
    char b[8];
    EXPECT_TRUE(IsValidAddress(b, false) && IsValidAddress(nullptr, true) && IsValidAddressRange(b, 0u, false));
    EXPECT_TRUE(IsValidAddressRange(nullptr, 16u, true) && IsValidAddressRange(b, b + 8, false));
    EXPECT_TRUE(IsValidAddressRange(nullptr, nullptr, true) && IsValidAddressRange(nullptr, b, true));
    EXPECT_FALSE(IsValidAddress(nullptr, false) || IsValidAddressRange(nullptr, 16u, false));
    EXPECT_FALSE(IsValidAddressRange(nullptr, b, false));
    EXPECT_TRUE(IsValidAddressRange(b, b, false) && IsValidAddressRange(b + 8, b, true));
    EXPECT_TRUE(manager->mCalls.size() == 4u && manager->mCalls[3].mErrorNumber == 25);

    // Without a manager the check ends in a logic error.
    config::ErrorManager::Set(nullptr);
    std::string what;
    try { CheckedHalf(1); } catch (std::logic_error const& error) { what = error.what(); }
    EXPECT_EQ(what, "qrl::config::ErrorManager not initialized. Check qrl/config/Errors.");
    EnableContractDialog();
}

TEST(MessageDialog, TextsComeThroughTheLocalizerAndOnlyContinueEndsIt) {
    struct Translator : config::Localizer {
        UTF16String Localize(char const* inText) override {
            return AsciiToUTF16(std::string(inText).find("Title") != std::string::npos ? "@0!" : "Weiter");
        }
    } translator;
    config::Localizer::Set(&translator);
    config::SetClientName(AsciiToUTF16("Host"));
    CapturingPresenter presenter;
    presenter.mControlKey = true;
    utility::ThreadSafeMessageDialog("hello");
    EXPECT_EQ(presenter.mTexts, std::vector<Texts>({{"Host!", "Weiter", "Weiter", "hello"}}));
    EXPECT_EQ(presenter.mResult, 1);  // Continue with the Control key
    presenter.mClick = 14205;
    utility::ThreadSafeMessageDialog("again");
    EXPECT_FALSE(presenter.mEnded);
    SetDialogPresenter(nullptr);
    config::Localizer::Set(nullptr);

    // The default presenter writes a one-button dialog to standard error and presses the button.
    ::testing::internal::CaptureStderr();
    utility::ThreadSafeMessageDialog("[here-1]\r\n");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Host Debug Event\nHost has encountered an error.\n[here-1]\n");
    // A choice needs a real window: two buttons cannot be presented there.
    DialogDescription twoButtons;
    twoButtons.mItems.assign(2, {1, kDialogItemClass_Button, kDialogStyle_Button, 0, 0, 1, 1, UTF16String()});
    EXPECT_EQ(GetDefaultDialogPresenter().Present(twoButtons, presenter), -1);
}
