#include <quorel/debug/Dialogs.h>
#include <quorel/utility/TextUtils.h>
#include <quorel/utility/UnicodeConversion.h>

#include <atomic>
#include <cstdio>

namespace quorel {
namespace debug {

namespace {

// Appends inText as UTF-8 with its line endings as LF, ending it with one LF.
void AppendLine(UTF8String& ioOut, UTF16String inText) {
    utility::ConvertLineEndings(utility::kLineEnding_LF, inText);
    while (!inText.empty() && inText.back() == 0x000A) {
        inText.pop_back();
    }
    ioOut += utility::UTF16to8(inText);
    ioOut.push_back('\n');
}

class StandardErrorPresenter : public DialogPresenter {
public:
    std::int32_t Present(DialogDescription const& inDialog, DialogProcedure& inProcedure) override {
        if (inDialog.ButtonCount() != 1) {
            return -1;  // a choice needs a real window
        }
        UTF8String text;
        AppendLine(text, inDialog.mTitle);
        DialogItem const* button = nullptr;
        for (DialogItem const& item : inDialog.mItems) {
            if (item.IsButton()) {
                button = &item;
            } else {
                AppendLine(text, item.mText);
            }
        }
        // One write, so that dialogs of several threads don't interleave.
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::fflush(stderr);
        std::int32_t result = -1;
        return inProcedure.Command(button->mID, false, result) ? result : -1;
    }
};

StandardErrorPresenter sDefaultPresenter;
std::atomic<DialogPresenter*> sInstalledPresenter{nullptr};

}  // namespace

std::size_t DialogDescription::ButtonCount() const noexcept {
    std::size_t count = 0;
    for (DialogItem const& item : mItems) {
        count += item.IsButton() ? 1 : 0;
    }
    return count;
}

DialogProcedure::~DialogProcedure() = default;
DialogPresenter::~DialogPresenter() = default;

void SetDialogPresenter(DialogPresenter* inPresenter) { sInstalledPresenter.store(inPresenter); }

DialogPresenter& GetDialogPresenter() {
    DialogPresenter* const installed = sInstalledPresenter.load();
    return installed != nullptr ? *installed : sDefaultPresenter;
}

DialogPresenter& GetDefaultDialogPresenter() { return sDefaultPresenter; }

}  // namespace debug
}  // namespace quorel
