#include <quorel/config/Localizer.h>
#include <quorel/debug/Debug.h>
#include <quorel/debug/Dialogs.h>
#include <quorel/utility/TextUtils.h>
#include <quorel/utility/UnicodeConversion.h>

#include <thread>

namespace quorel {
namespace debug {

namespace {

constexpr std::int32_t kContinueButtonID = 14200;
constexpr std::int32_t kMessageLineID = -1;
constexpr std::int32_t kTextID = 14251;

// A localised text with "@0" replaced by the client name.
UTF16String WithClientName(char const* inConstant) {
    UTF16String const none;
    return utility::ReplaceInString(config::GetLocalizedText(inConstant), config::GetClientName(), none, none, none,
                                    none, none, none, none, none, none);
}

DialogDescription DescribeMessageDialog(UTF16String const& inText) {
    DialogDescription dialog;
    dialog.mTitle = WithClientName(config::kMessage_ContractDialogTitle);
    dialog.mWidth = 300;
    dialog.mHeight = 100;
    dialog.mItems.push_back({kContinueButtonID, kDialogItemClass_Button, kDialogStyle_DefaultButton, 225, 75, 60, 14,
                             config::GetLocalizedText(config::kMessage_ContractContinueButton)});
    dialog.mItems.push_back({kMessageLineID, kDialogItemClass_Static, kDialogStyle_Static, 42, 12, 294, 12,
                             WithClientName(config::kMessage_ContractErrorMessage)});
    dialog.mItems.push_back({kTextID, kDialogItemClass_Static, kDialogStyle_Static, 42, 30, 250, 30, inText});
    return dialog;
}

// Continue ends the dialog, with 1 when the Control key is held, else 0.
class MessageDialogProcedure : public DialogProcedure {
public:
    bool Command(std::int32_t inItemID, bool inControlKeyDown, std::int32_t& outResult) override {
        if (inItemID != kContinueButtonID) {
            return false;
        }
        outResult = inControlKeyDown ? 1 : 0;
        return true;
    }
};

// The body of the dialog thread.  Nothing may leave a thread's body.
void RunMessageDialog(UTF16String const& inText) noexcept {
    try {
        MessageDialogProcedure procedure;
        GetDialogPresenter().Present(DescribeMessageDialog(inText), procedure);
    } catch (...) {
        QRL_DebugBreak();
    }
}

}  // namespace

}  // namespace debug

namespace utility {

void ThreadSafeMessageDialog(char const* inText) {
    try {
        try {
            UTF16String const text = AsciiToUTF16(inText);
            std::thread dialogThread;
            try {
                dialogThread = std::thread([&text] { debug::RunMessageDialog(text); });
            } catch (...) {
                debug::QRL_DebugBreak();  // no thread could be started
            }
            if (dialogThread.joinable()) {
                dialogThread.join();
            }
        } catch (...) {
            debug::QRL_DebugBreak();
        }
        debug::QRL_DebugBreak();
    } catch (...) {
        debug::QRL_DebugBreak();
    }
}

}  // namespace utility
}  // namespace quorel
