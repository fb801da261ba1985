// The platform queue beneath the executors: an unbounded first-in-first-out
// queue of pointers that any number of threads post to and wait on.
#ifndef QUOREL_THREADS_SRC_POINTERQUEUE_H
#define QUOREL_THREADS_SRC_POINTERQUEUE_H

#include <cstdint>

namespace quorel {
namespace threads {
namespace platform {

/// Time-out of GetPointer that waits for ever.
constexpr std::uint32_t kWaitForever = 0xFFFFFFFFu;

class PointerQueue;

/// An empty queue without a capacity limit; null when the system has no
/// resources for one.
PointerQueue* CreatePointerQueue() noexcept;

/// Appends inPointer (null included) without waiting for any getter, from any
/// thread, and wakes one thread that waits in GetPointer.  False when the entry
/// could not be stored; the caller keeps it.
bool PostPointer(PointerQueue* inQueue, void* inPointer) noexcept;

/// Takes the oldest pointer, each to exactly one getter.  Waits up to
/// inTimeoutMilliseconds for one (0 polls, kWaitForever waits without limit).
/// True and the pointer (which may be null: a wake-up) when one came; false and
/// null on time-out.
bool GetPointer(PointerQueue* inQueue, void*& outPointer, std::uint32_t inTimeoutMilliseconds) noexcept;

/// Ends the queue.  Pointers still in it are dropped, not destroyed: their
/// owner empties the queue first if they need freeing.  No thread may use the
/// queue during or after the call.
void ClosePointerQueue(PointerQueue* inQueue) noexcept;

}  // namespace platform
}  // namespace threads
}  // namespace quorel

#endif
