#include <quorel/config/Errors.h>

#include <algorithm>
#include <stdexcept>

namespace quorel {
namespace config {

ErrorManager* ErrorManager::S_managerP = nullptr;

ErrorManager* ErrorManager::Get() {
    if (S_managerP == nullptr) {
        throw std::logic_error("qrl::config::ErrorManager not initialized. Check qrl/config/Errors.");
    }
    return S_managerP;
}

void ErrorManager::Set(ErrorManager* inManager) { S_managerP = inManager; }

ErrorManager::ErrorManager() = default;
ErrorManager::~ErrorManager() = default;

void ErrorManager::ThrowErrorDispatch(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                                      std::int32_t inErrorNumber, bool inDeferrable,
                                      ReplacementValue const& inValue1, ReplacementValue const& inValue2,
                                      ReplacementValue const& inValue3, ReplacementValue const& inValue4) const {
    if (inDeferrable && !mReporters.empty()) {
        mReporters.front()->SetLastError(inLevel, inMessage, inModuleID, inErrorNumber, inValue1, inValue2,
                                         inValue3, inValue4);
    }
    HandleError(inLevel, inMessage, inModuleID, inErrorNumber, inDeferrable, inValue1, inValue2, inValue3,
                inValue4);
}

bool ErrorManager::IsErrorReportingDeferred() const { return !mReporters.empty(); }

bool ErrorManager::PurgeMemory(unsigned int /*inBytesWanted*/) { return false; }
void ErrorManager::IncrementLazilyDisplayErrors() {}
void ErrorManager::DecrementLazilyDisplayErrors() {}

std::int32_t ErrorManager::ExecuteFunctionWithTopLevelExceptionHandler(boost::function0<std::int32_t> inFunction) {
    try {
        return inFunction();
    } catch (...) {
        return 1;
    }
}

boost::intrusive_ptr<DeferredErrorReporter> ErrorManager::NewDeferredErrorReporter(bool inReportErrorWhenFinished) {
    return boost::intrusive_ptr<DeferredErrorReporter>(new DeferredErrorReporter(inReportErrorWhenFinished));
}

void ErrorManager::AddDeferredErrorReporter(DeferredErrorReporter* inReporter) {
    if (inReporter != nullptr) {
        mReporters.push_front(inReporter);
    }
}

void ErrorManager::RemoveDeferredErrorReporter(DeferredErrorReporter* inReporter) {
    auto const found = std::find(mReporters.begin(), mReporters.end(), inReporter);
    if (found != mReporters.end()) {
        mReporters.erase(found);
    }
}

void ThrowError(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID, std::int32_t inErrorNumber,
                bool inDeferrable, ReplacementValue const& inValue1, ReplacementValue const& inValue2,
                ReplacementValue const& inValue3, ReplacementValue const& inValue4) {
    ErrorManager::Get()->ThrowErrorDispatch(inLevel, inMessage, inModuleID, inErrorNumber, inDeferrable, inValue1,
                                            inValue2, inValue3, inValue4);
}

void TestThrowError(bool inFatal) {
    if (inFatal) {
        ThrowError(kErrorLevel_Fatal, kErrorMessage_FatalTest, kErrorModule_Config, kErrorNumber_FatalTest, true);
        return;
    }
    ThrowError(kErrorLevel_NonFatal, kErrorMessage_NonFatalTest, kErrorModule_Config, kErrorNumber_NonFatalTest,
               true, ReplacementValue(static_cast<std::int32_t>(-2147483647 - 1)),
               ReplacementValue(static_cast<std::uint32_t>(4294967295u)), ReplacementValue(29.2334),
               ReplacementValue());
}

}  // namespace config
}  // namespace quorel
