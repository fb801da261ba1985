// The one road of reported errors.
//
// Every failure that quorel reports with a localisable message goes through
// ThrowError, which hands it to the ErrorManager that the host installed.  The
// library never decides what an error means to the user: the host's
// HandleError throws, shows or logs it, or returns, in which case the library
// goes on soundly behind the call.
//
// Start-up: derive from ErrorManager, implement HandleError, create one
// instance and call ErrorManager::Set before the first call that can fail.
// Without a manager, the first error ends in std::logic_error.
#ifndef QUOREL_CONFIG_ERRORS_H
#define QUOREL_CONFIG_ERRORS_H

#include <quorel/config/ErrorMessages.h>
#include <quorel/config/ReplacementValue.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/RefCountedObject.h>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <boost/noncopyable.hpp>

#include <cstdint>
#include <list>
#include <string>

namespace quorel {
namespace config {

/// Severity of a reported error.
enum ErrorLevel : std::int32_t {
    kErrorLevel_Fatal = 0,    ///< contract violations: programming errors
    kErrorLevel_NonFatal = 1  ///< run-time failures of the library
};

class DeferredErrorReporter;

/// The host's error handler.  Abstract: the host implements HandleError.
///
/// The manager keeps a stack of DeferredErrorReporter pointers (the newest
/// first, not owned).  ThrowErrorDispatch gives a deferrable error to the newest
/// reporter and then always calls HandleError.  The list has no lock: creating
/// or destroying reporters while another thread raises an error is the host's
/// to serialise.
class QRL_EXPORT ErrorManager : private boost::noncopyable {
public:
    /// The installed manager.  Throws std::logic_error when none is installed.
    static ErrorManager* Get();
    /// Installs a manager (no ownership taken); null uninstalls.
    static void Set(ErrorManager* inManager);

    ErrorManager();
    /// Frees the list's nodes; the reporters themselves are left alone.
    virtual ~ErrorManager();

    /// Hands the error to the newest reporter (when inDeferrable and one exists),
    /// then calls HandleError with all nine arguments.
    void ThrowErrorDispatch(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                            std::int32_t inErrorNumber, bool inDeferrable, ReplacementValue const& inValue1,
                            ReplacementValue const& inValue2, ReplacementValue const& inValue3,
                            ReplacementValue const& inValue4) const;

    /// True while at least one reporter is registered.
    bool IsErrorReportingDeferred() const;

    /// Asks the host to free memory.  Default: does nothing and returns false.
    virtual bool PurgeMemory(unsigned int inBytesWanted);
    /// Default: does nothing.
    virtual void IncrementLazilyDisplayErrors();
    /// Default: does nothing.
    virtual void DecrementLazilyDisplayErrors();
    /// Calls inFunction and returns its result; anything it throws (including
    /// boost::bad_function_call of an empty function) is swallowed and gives 1.
    virtual std::int32_t ExecuteFunctionWithTopLevelExceptionHandler(boost::function0<std::int32_t> inFunction);
    /// Makes a new reporter on the heap, registered with the installed manager.
    virtual boost::intrusive_ptr<DeferredErrorReporter> NewDeferredErrorReporter(bool inReportErrorWhenFinished);

    /// The host's reaction to an error, called on the failing thread.  The
    /// message is a constant "$$$/key=default text"; "^1".."^4" stand for the
    /// four replacement values.  May throw or return.
    virtual void HandleError(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                             std::int32_t inErrorNumber, bool inDeferrable, ReplacementValue const& inValue1,
                             ReplacementValue const& inValue2, ReplacementValue const& inValue3,
                             ReplacementValue const& inValue4) const = 0;

protected:
    /// Puts a reporter at the front of the list; null is ignored.
    void AddDeferredErrorReporter(DeferredErrorReporter* inReporter);
    /// Removes the first entry equal to inReporter; absent pointers are ignored.
    void RemoveDeferredErrorReporter(DeferredErrorReporter* inReporter);

private:
    friend class DeferredErrorReporter;

    static ErrorManager* S_managerP;
    std::list<DeferredErrorReporter*> mReporters;
};

/// Collects the errors raised while it is the newest registered reporter and
/// can hand the last of them to the manager later, with Finish.
///
/// Reporters nest like a stack: an inner one takes the errors while it exists.
/// Destroying a reporter drops a pending error without reporting it.
class QRL_EXPORT DeferredErrorReporter : public utility::RefCountedObject {
public:
    /// Registers the new reporter with the installed manager (std::logic_error
    /// without one, and then it is in no list).
    explicit DeferredErrorReporter(bool inReportErrorWhenFinished = true);
    /// Copies the kept error and both counters; the copy is not registered.
    DeferredErrorReporter(DeferredErrorReporter const& inOther);
    DeferredErrorReporter& operator=(DeferredErrorReporter const&) = delete;
    /// Unregisters from the installed manager; does not call Finish.
    ~DeferredErrorReporter() override;

    /// Counts the call; when reporting is on and errors are pending, resets the
    /// pending count and calls the manager's HandleError with the kept error.
    virtual void Finish();

    bool GetReportErrorWhenFinished() const noexcept { return mReportErrorWhenFinished; }
    void SetReportErrorWhenFinished(bool inReport) noexcept { mReportErrorWhenFinished = inReport; }

    /// The kept error: level -1 and module 110 until one arrives.
    ErrorLevel GetLevel() const noexcept { return mLevel; }
    std::string const& GetMessage() const noexcept { return mMessage; }
    std::uint32_t GetModuleID() const noexcept { return mModuleID; }
    std::int32_t GetErrorNumber() const noexcept { return mErrorNumber; }
    /// inIndex 0 to 3.
    ReplacementValue const& GetReplacementValue(int inIndex) const { return mValues[inIndex]; }
    /// Errors received since the last hand-on.
    std::int32_t GetPendingErrorCount() const noexcept { return mPendingErrors; }
    /// How often Finish was called.
    std::int32_t GetFinishCount() const noexcept { return mFinishCount; }

private:
    friend class ErrorManager;

    void SetLastError(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID, std::int32_t inErrorNumber,
                      ReplacementValue const& inValue1, ReplacementValue const& inValue2,
                      ReplacementValue const& inValue3, ReplacementValue const& inValue4);

    bool mReportErrorWhenFinished;
    ErrorLevel mLevel;
    std::string mMessage;
    std::uint32_t mModuleID;
    std::int32_t mErrorNumber;
    ReplacementValue mValues[4];
    std::int32_t mPendingErrors;
    std::int32_t mFinishCount;
};

/// Reports an error: ErrorManager::Get()->ThrowErrorDispatch with the same
/// arguments.  Returns if the host's HandleError returns.
QRL_EXPORT void ThrowError(ErrorLevel inLevel, char const* inMessage, std::uint32_t inModuleID,
                           std::int32_t inErrorNumber, bool inDeferrable = true,
                           ReplacementValue const& inValue1 = ReplacementValue(),
                           ReplacementValue const& inValue2 = ReplacementValue(),
                           ReplacementValue const& inValue3 = ReplacementValue(),
                           ReplacementValue const& inValue4 = ReplacementValue());

/// Raises a test error so that a host can exercise its manager: with true the
/// fatal test error (module 100, number 21), with false the non-fatal one
/// (module 100, number 20) with the values -2147483648, 4294967295 and 29.2334.
QRL_EXPORT void TestThrowError(bool inFatal);

}  // namespace config
}  // namespace quorel

#endif
