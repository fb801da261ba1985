// Input contract checks, the debugger break and the address tests.
//
// An operation states the contract on its arguments with QRL_INPUT_CONTRACT.
// A failed check is a programming error of the caller: it first offers the
// developer a dialog (unless switched off) and a stop in the debugger, then
// reports a fatal error through ThrowError (module 105, number 25).  If the
// host's error manager returns, the operation goes on behind the check.
// Checks are part of every build, optimised ones included.
#ifndef QUOREL_DEBUG_DEBUG_H
#define QUOREL_DEBUG_DEBUG_H

#include <quorel/utility/Export.h>

#include <cstdint>

#if defined(__GNUC__) || defined(__clang__)
#define QRL_UNLIKELY(condition) __builtin_expect(!!(condition), 0)
#else
#define QRL_UNLIKELY(condition) (condition)
#endif

/// Checks an input contract.  The passing path costs the condition and one branch.
#define QRL_INPUT_CONTRACT(condition)                                                             \
    do {                                                                                          \
        if (QRL_UNLIKELY(!(condition))) {                                                         \
            if (::quorel::debug::BreakAfterContractDialog(#condition, __FILE__, __LINE__)) {      \
                ::quorel::debug::QRL_DebugBreak();                                                \
            }                                                                                     \
            ::quorel::debug::ReportInputContractViolation();                                      \
        }                                                                                         \
    } while (false)

namespace quorel {
namespace debug {

/// Shows the contract dialog with the location "[file-line]" when the contract
/// dialog switch is on, and waits until it is dismissed.  Always returns false.
QRL_EXPORT bool BreakAfterContractDialog(char const* inExpression, char const* inFile, std::int32_t inLine);

/// Raises the fatal input contract error through ThrowError: level fatal,
/// module 105, number 25, deferrable, four empty replacement values.
QRL_EXPORT void ReportInputContractViolation();

/// A breakpoint trap: stops in an attached debugger and returns when it goes
/// on.  Without a debugger it does nothing.
QRL_EXPORT void QRL_DebugBreak();

/// Turn the contract dialog on (the state at load) or off.  The library never
/// changes the switch itself.
QRL_EXPORT void EnableContractDialog();
QRL_EXPORT void DisableContractDialog();
QRL_EXPORT bool IsContractDialogEnabled();

/// True for a non-null address; for null, inAllowNull.  Memory is not touched.
QRL_EXPORT bool IsValidAddress(void const* inAddress, bool inAllowNull);

/// The same test on inAddress; inSize is not looked at.
QRL_EXPORT bool IsValidAddressRange(void const* inAddress, unsigned int inSize, bool inAllowNull);

/// A null begin with inAllowNull is valid.  Otherwise the range must not be
/// empty (begin below end, or the contract "inBegin < inEnd" fails) and is
/// valid when begin is not null.
QRL_EXPORT bool IsValidAddressRange(void const* inBegin, void const* inEnd, bool inAllowNull);

}  // namespace debug
}  // namespace quorel

#endif
