// Running an initialisation once, whichever thread gets there first.
#ifndef QUOREL_THREADS_CALLONCE_H
#define QUOREL_THREADS_CALLONCE_H

#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace threads {

/// The value a CallOnce flag must start with.  Give the flag static storage
/// duration or initialise it before any thread can call CallOnce with it:
///     static std::int32_t sInitOnce = kCallOnce_Init;
constexpr std::int32_t kCallOnce_Init = 0;
/// The value of a flag whose function has returned.
constexpr std::int32_t kCallOnce_Done = 1;

/// Calls inFunction exactly once for the flag ioFlag, however many threads
/// call at the same time, and returns only when it has completed: every caller
/// that returns normally sees all that the function did.
///
/// The flag is a plain 32-bit word of the caller's and carries the whole state:
/// kCallOnce_Init before the first call, kCallOnce_Done once the function has
/// returned, and a third value while it runs.  The first caller marks the flag
/// as running and calls the function outside any lock; the others wait on one
/// process-wide monitor until the flag is done (a caller that comes later
/// costs one atomic read).  When the function throws, the flag goes back to
/// kCallOnce_Init, the exception leaves the caller that ran it, and the next
/// caller (a waiting one, or a later one) runs the function again.  Read or
/// write the flag only through CallOnce while threads may use it.
///
/// The function must not call CallOnce with the same flag (that waits for
/// ever).  A null function is a contract violation and does nothing.  Runs
/// through the error translation of the thread primitives (ThreadErrors.h), so
/// that a failure of the monitor's mutex or condition variable is reported
/// before its Boost exception continues.
QRL_EXPORT void CallOnce(void (*inFunction)(), std::int32_t& ioFlag);

}  // namespace threads
}  // namespace quorel

#endif
