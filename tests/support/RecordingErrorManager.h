// An error manager for tests: it records every HandleError call and, when
// asked to, throws RecordedError afterwards so that tests can see what an
// operation leaves behind when the host's manager throws.
#ifndef QUOREL_TESTS_SUPPORT_RECORDINGERRORMANAGER_H
#define QUOREL_TESTS_SUPPORT_RECORDINGERRORMANAGER_H

#include <quorel/config/Errors.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quorel {
namespace testing {

struct RecordedCall {
    config::ErrorLevel mLevel;
    std::string mMessage;
    std::uint32_t mModuleID;
    std::int32_t mErrorNumber;
    bool mDeferrable;
    config::ReplacementValue mValues[4];
};

struct RecordedError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class RecordingErrorManager : public config::ErrorManager {
public:
    enum Reaction { kReturn, kThrow };

    explicit RecordingErrorManager(Reaction inReaction = kReturn) : mReaction(inReaction) {}

    void HandleError(config::ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                     std::int32_t inErrorNumber, bool inDeferrable, config::ReplacementValue const& inValue1,
                     config::ReplacementValue const& inValue2, config::ReplacementValue const& inValue3,
                     config::ReplacementValue const& inValue4) const override {
        mCalls.push_back({inLevel, inMessage, inModuleID, inErrorNumber, inDeferrable,
                          {inValue1, inValue2, inValue3, inValue4}});
        if (mReaction == kThrow) {
            throw RecordedError(inMessage);
        }
    }

    using config::ErrorManager::AddDeferredErrorReporter;
    using config::ErrorManager::RemoveDeferredErrorReporter;

    Reaction mReaction;
    mutable std::vector<RecordedCall> mCalls;
};

// Installs a manager for the lifetime of a test and uninstalls it afterwards.
class ScopedErrorManager {
public:
    explicit ScopedErrorManager(RecordingErrorManager::Reaction inReaction = RecordingErrorManager::kReturn)
        : mManager(inReaction) {
        config::ErrorManager::Set(&mManager);
    }
    ~ScopedErrorManager() { config::ErrorManager::Set(nullptr); }
    RecordingErrorManager* operator->() { return &mManager; }
    RecordingErrorManager& operator*() { return mManager; }

private:
    RecordingErrorManager mManager;
};

}  // namespace testing
}  // namespace quorel

#endif
