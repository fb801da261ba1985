// The identifier of the calling thread.
#ifndef QUOREL_THREADS_THREADID_H
#define QUOREL_THREADS_THREADID_H

#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace threads {

/// The operating system's identifier of the calling thread: on Linux the
/// kernel thread id (gettid), the number that ps, top, /proc and debuggers
/// show.  It stays the same for the life of the thread and differs from that of
/// every other living thread of the system; an ended thread's number may be
/// given again later.  Used in every trace line and as the identity of
/// event-loop threads.
QRL_EXPORT std::uint32_t GetCurrentThreadID() noexcept;

}  // namespace threads
}  // namespace quorel

#endif
