#include <quorel/config/Errors.h>
#include <quorel/debug/Debug.h>
#include <quorel/debug/Dialogs.h>

#include "Platform.h"

#include <string>

namespace quorel {
namespace debug {

namespace {
// A plain byte: a thread racing with a change sees either value, which is harmless.
bool sContractDialogEnabled = true;
}  // namespace

bool BreakAfterContractDialog(char const* /*inExpression*/, char const* inFile, std::int32_t inLine) {
    if (!sContractDialogEnabled) {
        return false;
    }
    std::string const location =
        "[" + std::string(inFile != nullptr ? inFile : "") + "-" + std::to_string(inLine) + "]\r\n";
    utility::ThreadSafeMessageDialog(location.c_str());
    return false;
}

void ReportInputContractViolation() {
    config::ReplacementValue const value1, value2, value3, value4;
    config::ThrowError(config::kErrorLevel_Fatal, config::kErrorMessage_InputContractViolation,
                       config::kErrorModule_Utility, config::kErrorNumber_InputContractViolation, true, value1,
                       value2, value3, value4);
}

void QRL_DebugBreak() {
    if (platform::IsDebuggerAttached()) {
        platform::TrapToDebugger();
    }
}

void EnableContractDialog() { sContractDialogEnabled = true; }
void DisableContractDialog() { sContractDialogEnabled = false; }
bool IsContractDialogEnabled() { return sContractDialogEnabled; }

bool IsValidAddress(void const* inAddress, bool inAllowNull) { return inAddress != nullptr || inAllowNull; }

bool IsValidAddressRange(void const* inAddress, unsigned int /*inSize*/, bool inAllowNull) {
    return IsValidAddress(inAddress, inAllowNull);
}

bool IsValidAddressRange(void const* inBegin, void const* inEnd, bool inAllowNull) {
    if (inAllowNull && inBegin == nullptr) {
        return true;
    }
    QRL_INPUT_CONTRACT(inBegin < inEnd);
    return inBegin != nullptr;
}

}  // namespace debug
}  // namespace quorel
