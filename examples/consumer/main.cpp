// The smallest outside user of quorel: converts, case-maps and reports an error.
#include <quorel/quorel.h>

#include <cstdio>

namespace {

class PrintingManager : public quorel::config::ErrorManager {
public:
    void HandleError(quorel::config::ErrorLevel, char const* inMessage, std::uint32_t inModuleID,
                     std::int32_t inErrorNumber, bool, quorel::config::ReplacementValue const&,
                     quorel::config::ReplacementValue const&, quorel::config::ReplacementValue const&,
                     quorel::config::ReplacementValue const&) const override {
        std::printf("error %u/%d: %s\n", inModuleID, inErrorNumber, inMessage);
        ++mErrors;
    }
    mutable int mErrors = 0;
};

}  // namespace

int main() {
    using namespace quorel::utility;
    PrintingManager manager;
    quorel::config::ErrorManager::Set(&manager);
    quorel::UTF8String const upper = UTF16to8(UpperCase(AsciiToUTF16("stra\xC3\x9F" "e")));
    std::printf("%.*s\n", static_cast<int>(upper.size()), reinterpret_cast<char const*>(upper.data()));
    quorel::config::TestThrowError(false);
    quorel::config::ErrorManager::Set(nullptr);
    bool const ok = upper == quorel::UTF8String(AsciiToUTF8("STRASSE")) && manager.mErrors == 1;
    std::printf("consumer %s\n", ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
