// A small host application of quorel: it starts up the way a host does
// (installs an error manager, names itself), works with text, collects errors
// with a deferred reporter and lets a failed contract reach its manager.
#include <quorel/quorel.h>

#include "Executors.h"
#include "Files.h"
#include "Layout.h"
#include "MediaTime.h"
#include "NumbersAndText.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace cfg = quorel::config;
namespace util = quorel::utility;

namespace {

std::string Narrow(quorel::UTF16String const& inText) {
    quorel::UTF8String const utf8 = util::UTF16to8(inText);
    return std::string(utf8.begin(), utf8.end());
}

std::string Describe(cfg::ReplacementValue const& inValue) {
    switch (inValue.GetKind()) {
        case cfg::ReplacementValue::kKind_Signed:
            return std::to_string(inValue.GetSigned());
        case cfg::ReplacementValue::kKind_Unsigned:
            return std::to_string(inValue.GetUnsigned());
        case cfg::ReplacementValue::kKind_Double:
            return std::to_string(inValue.GetDouble());
        case cfg::ReplacementValue::kKind_Text:
            return Narrow(inValue.GetText());
        default:
            return "";
    }
}

// The message with "^1".."^4" filled in, as a host's manager would show it.
std::string Expand(char const* inMessage, cfg::ReplacementValue const* const inValues[4]) {
    std::string text = Narrow(cfg::GetLocalizedText(inMessage));
    for (int i = 0; i < 4; ++i) {
        std::string const placeholder = "^" + std::to_string(i + 1);
        for (std::size_t at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder, at)) {
            std::string const value = Describe(*inValues[i]);
            text.replace(at, placeholder.size(), value);
            at += value.size();
        }
    }
    return text;
}

struct FatalError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Prints every error; fatal ones (contract violations) end the operation by
// throwing, non-fatal ones are reported and the library goes on.
class HostErrorManager : public cfg::ErrorManager {
public:
    void HandleError(cfg::ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                     std::int32_t inErrorNumber, bool /*inDeferrable*/, cfg::ReplacementValue const& inValue1,
                     cfg::ReplacementValue const& inValue2, cfg::ReplacementValue const& inValue3,
                     cfg::ReplacementValue const& inValue4) const override {
        cfg::ReplacementValue const* const values[4] = {&inValue1, &inValue2, &inValue3, &inValue4};
        std::string const text = Expand(inMessage, values);
        std::printf("  HandleError: %s error %u/%d%s: %s\n", inLevel == cfg::kErrorLevel_Fatal ? "fatal" : "non-fatal",
                    inModuleID, inErrorNumber, IsErrorReportingDeferred() ? " (a reporter is collecting)" : "",
                    text.c_str());
        if (inLevel == cfg::kErrorLevel_Fatal) {
            throw FatalError(text);
        }
    }
};

void ShowText() {
    std::printf("Text:\n");
    quorel::UTF16String const greeting = util::AsciiToUTF16("Stra\xC3\x9F" "e \xCE\xA3\xCE\xBF\xCF\x86\xCE\xAF\xCE\xB1");
    std::printf("  original   %s (%zu UTF-16 units)\n", Narrow(greeting).c_str(), greeting.size());
    std::printf("  upper case %s\n", Narrow(util::UpperCase(greeting)).c_str());
    std::printf("  lower case %s\n", Narrow(util::LowerCase(greeting)).c_str());
    std::printf("  folded     %s\n", Narrow(util::FoldCase(greeting)).c_str());
    quorel::UTF16String const empty;
    quorel::UTF16String const message = util::ReplaceInString(
        util::AsciiToUTF16("@0 opened '@1' (@@ marks stay)"), cfg::GetClientName(),
        util::AsciiToUTF16("Intro.mov"), empty, empty, empty, empty, empty, empty, empty, empty);
    std::printf("  template   %s\n", Narrow(message).c_str());
}

void CollectDeferredErrors() {
    std::printf("Deferred errors:\n");
    cfg::DeferredErrorReporter reporter(false);
    cfg::TestThrowError(false);
    cfg::TestThrowError(false);
    std::printf("  reporter holds %d pending errors, last %u/%d; finishing it now\n", reporter.GetPendingErrorCount(),
                reporter.GetModuleID(), reporter.GetErrorNumber());
    reporter.SetReportErrorWhenFinished(true);
    reporter.Finish();
}

void FailContract() {
    std::printf("A failed contract (an empty address range):\n");
    char buffer[4] = {};
    try {
        quorel::debug::IsValidAddressRange(buffer, buffer, false);
        std::printf("  the manager returned\n");
    } catch (FatalError const& error) {
        std::printf("  the operation was stopped by the manager: %s\n", error.what());
    }
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);  // keep our lines in order with the dialog's on stderr
    HostErrorManager manager;
    cfg::ErrorManager::Set(&manager);
    cfg::SetClientName(util::AsciiToUTF16("Example Host"));
    cfg::SetClientVersion(util::AsciiToUTF16("1.0"));
    cfg::SetCompanyName(util::AsciiToUTF16("Example Company"));
    std::printf("quorel %s in %s %s\n", Narrow(cfg::GetVersionString()).c_str(), Narrow(cfg::GetClientName()).c_str(),
                Narrow(cfg::GetClientVersion()).c_str());

    ShowText();
    ShowNumbersAndText();
    ShowMediaTime();
    ShowLayout();
    ShowFiles();
    ShowExecutors();
    CollectDeferredErrors();
    std::fflush(stdout);
    FailContract();

    cfg::ErrorManager::Set(nullptr);
    return 0;
}
