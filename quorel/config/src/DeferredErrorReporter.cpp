#include <quorel/config/Errors.h>

namespace quorel {
namespace config {

DeferredErrorReporter::DeferredErrorReporter(bool inReportErrorWhenFinished)
    : mReportErrorWhenFinished(inReportErrorWhenFinished),
      mLevel(static_cast<ErrorLevel>(-1)),
      mModuleID(kErrorModule_NoError),
      mErrorNumber(0),
      mPendingErrors(0),
      mFinishCount(0) {
    ErrorManager::Get()->AddDeferredErrorReporter(this);
}

DeferredErrorReporter::DeferredErrorReporter(DeferredErrorReporter const& inOther)
    : utility::RefCountedObject(inOther),
      mReportErrorWhenFinished(inOther.mReportErrorWhenFinished),
      mLevel(inOther.mLevel),
      mMessage(inOther.mMessage),
      mModuleID(inOther.mModuleID),
      mErrorNumber(inOther.mErrorNumber),
      mValues{inOther.mValues[0], inOther.mValues[1], inOther.mValues[2], inOther.mValues[3]},
      mPendingErrors(inOther.mPendingErrors),
      mFinishCount(inOther.mFinishCount) {}

DeferredErrorReporter::~DeferredErrorReporter() {
    // Not through Get(): a destructor must not throw when the host has already
    // uninstalled its manager.
    if (ErrorManager::S_managerP != nullptr) {
        ErrorManager::S_managerP->RemoveDeferredErrorReporter(this);
    }
}

void DeferredErrorReporter::Finish() {
    ++mFinishCount;
    if (!mReportErrorWhenFinished || mPendingErrors < 1) {
        return;
    }
    mPendingErrors = 0;
    ErrorManager::Get()->HandleError(mLevel, mMessage.c_str(), mModuleID, mErrorNumber, true, mValues[0], mValues[1],
                                     mValues[2], mValues[3]);
}

void DeferredErrorReporter::SetLastError(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                                         std::int32_t inErrorNumber, ReplacementValue const& inValue1,
                                         ReplacementValue const& inValue2, ReplacementValue const& inValue3,
                                         ReplacementValue const& inValue4) {
    ++mPendingErrors;
    mLevel = inLevel;
    mMessage = inMessage != nullptr ? inMessage : "";
    mModuleID = inModuleID;
    mErrorNumber = inErrorNumber;
    mValues[0] = inValue1;
    mValues[1] = inValue2;
    mValues[2] = inValue3;
    mValues[3] = inValue4;
}

}  // namespace config
}  // namespace quorel
