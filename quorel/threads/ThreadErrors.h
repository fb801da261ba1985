// The error translation of the thread primitives.
//
// Boost.Thread reports its failures with exceptions of its own.  Every thread
// primitive of quorel runs its Boost call through CallTranslatingThreadErrors,
// which first reports the two failures a host can meet at run time through the
// library's one road of errors (ThrowError) and then lets the original Boost
// exception continue, so that a host sees the error both ways:
//
//   boost::thread_resource_error  ->  module 106, number 20, "Not enough thread resources."
//   boost::lock_error             ->  module 106, number 21, "Failure to acquire thread lock."
//
// Both are reported at the non-fatal level and as deferrable.  Every other
// exception (std::invalid_argument, std::bad_alloc, the exceptions of a
// caller's function, other boost::thread_exception kinds) passes unchanged and
// unreported.  When the host's error manager throws, its exception leaves the
// operation instead of the Boost one.
#ifndef QUOREL_THREADS_THREADERRORS_H
#define QUOREL_THREADS_THREADERRORS_H

#include <quorel/utility/Export.h>

#include <boost/thread/exceptions.hpp>

#include <utility>

namespace quorel {
namespace threads {

/// Reports that the system ran out of thread resources: ThrowError at the
/// non-fatal level with kErrorMessage_NotEnoughThreadResources, module 106,
/// number 20, deferrable, four empty replacement values.  Returns when the
/// host's manager returns.
QRL_EXPORT void ReportNotEnoughThreadResources();

/// Reports that a lock was refused: as above with
/// kErrorMessage_FailedToAcquireThreadLock and number 21.
QRL_EXPORT void ReportFailedToAcquireThreadLock();

/// Calls inOperation and returns its result.  A boost::thread_resource_error
/// or boost::lock_error leaving it is reported (see above) and then rethrown
/// as it was; anything else passes through untouched.
template <typename Operation>
decltype(auto) CallTranslatingThreadErrors(Operation&& inOperation) {
    try {
        return std::forward<Operation>(inOperation)();
    } catch (boost::thread_resource_error const&) {
        ReportNotEnoughThreadResources();
        throw;
    } catch (boost::lock_error const&) {
        ReportFailedToAcquireThreadLock();
        throw;
    }
}

}  // namespace threads
}  // namespace quorel

#endif
