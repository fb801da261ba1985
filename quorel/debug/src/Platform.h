// What the diagnostics need of the operating system, behind one small
// internal interface so that each platform supplies its own.
#ifndef QUOREL_DEBUG_SRC_PLATFORM_H
#define QUOREL_DEBUG_SRC_PLATFORM_H

namespace quorel {
namespace debug {
namespace platform {

/// Whether a debugger is attached to the process now.
bool IsDebuggerAttached() noexcept;

/// Traps into the attached debugger; returns when it continues.
void TrapToDebugger() noexcept;

}  // namespace platform
}  // namespace debug
}  // namespace quorel

#endif
