// What the thread primitives need of the operating system, behind one small
// internal interface so that each platform supplies its own.
#ifndef QUOREL_THREADS_SRC_THREADPLATFORM_H
#define QUOREL_THREADS_SRC_THREADPLATFORM_H

#include <quorel/threads/ThreadPriority.h>

#include <cstdint>

namespace quorel {
namespace threads {
namespace platform {

/// The system's identifier of the calling thread.
std::uint32_t CurrentThreadID() noexcept;

/// Moves the calling thread to inPriority, one of the six levels (never another
/// value).  True when the thread runs at that level afterwards.
bool ApplyCurrentThreadPriority(ThreadPriority inPriority) noexcept;

/// The number of processors that the calling process may run on (at least 1).
int ProcessorCount() noexcept;
/// Atomic access to a caller's plain 32-bit word (the CallOnce flag): a load
/// with acquire order and a store with release order.  The word must be
/// naturally aligned and accessed only through these two while threads share it.
std::int32_t LoadAcquire(std::int32_t const& inWord) noexcept;
void StoreRelease(std::int32_t& outWord, std::int32_t inValue) noexcept;

}  // namespace platform
}  // namespace threads
}  // namespace quorel

#endif
