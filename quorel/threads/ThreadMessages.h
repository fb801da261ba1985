// Each thread's message queue: how an event-loop adaptor (AsyncEventLoopExecutor.h)
// reaches the thread that it adapts.
//
// Another thread appends a message to the queue of a given thread and wakes
// it; the thread delivers its messages from its own event loop.  A host that
// runs its own loop on an adapted thread hooks that loop up with the two calls
// below; for example with GLib:
//
//     g_unix_fd_add(quorel::threads::GetCurrentThreadMessageDescriptor(), G_IO_IN,
//                   [](int, GIOCondition, gpointer) -> gboolean {
//                       quorel::threads::DispatchCurrentThreadMessages();
//                       return G_SOURCE_CONTINUE;
//                   }, nullptr);
#ifndef QUOREL_THREADS_THREADMESSAGES_H
#define QUOREL_THREADS_THREADMESSAGES_H

#include <quorel/utility/Export.h>

#include <cstddef>

namespace quorel {
namespace threads {

/// A file descriptor that is readable (POLLIN) exactly while messages wait
/// for the calling thread.  It belongs to the library and stays open as long
/// as the thread lives: poll it, never read, write or close it.  Made on first
/// use; throws std::system_error when the system has no descriptor to give.
QRL_EXPORT int GetCurrentThreadMessageDescriptor();

/// Delivers, on the calling thread, the messages that wait for it when the
/// call starts (messages that arrive meanwhile wait for the next call).
/// Returns how many were delivered.  Safe to call when nothing waits.
QRL_EXPORT std::size_t DispatchCurrentThreadMessages();

}  // namespace threads
}  // namespace quorel

#endif
