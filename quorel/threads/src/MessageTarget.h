// What the event-loop executors need of the platform: a per-thread task
// target.  Another thread sends a message to a window of a given thread; that
// thread's event loop delivers it, later, to the window's procedure.  A quit
// message ends a loop of the library's own.
#ifndef QUOREL_THREADS_SRC_MESSAGETARGET_H
#define QUOREL_THREADS_SRC_MESSAGETARGET_H

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>

namespace quorel {
namespace threads {
namespace platform {

class MessageWindow;

/// Called with a message's payload: to deliver it, on the window's thread, or
/// to drop it, when its window goes before the message was delivered.
using MessageProcedure = void (*)(void* inPayload);

/// A window bound to the calling thread.  Throws std::bad_alloc or
/// std::system_error when the system has no resources for it.
boost::shared_ptr<MessageWindow> CreateMessageWindow(MessageProcedure inDeliver, MessageProcedure inDrop);

/// Ends the window, on its own thread: later sends fail, and messages that
/// still wait for it are dropped.  The object itself lives on while shared.
void DestroyMessageWindow(MessageWindow& inWindow) noexcept;

/// Appends a message with inPayload for the window from any thread, without
/// waiting, and wakes the window's thread.  False (the caller keeps the
/// payload) when the window has been destroyed or memory ran out.
bool SendNotifyMessage(MessageWindow& inWindow, void* inPayload) noexcept;

/// Blocks until the calling thread has a message, then delivers it.  False
/// when it was a quit message.
bool GetAndDispatchMessage();

/// Appends a quit message to the queue of the thread with the identifier
/// inThreadID (GetCurrentThreadID).  False when that thread has no queue.
bool PostQuitMessage(std::uint32_t inThreadID) noexcept;

}  // namespace platform
}  // namespace threads
}  // namespace quorel

#endif
