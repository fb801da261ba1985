// Executors that call functions inside a thread's event loop: on the one
// thread that owns a user interface, in the order the functions were handed in.
#ifndef QUOREL_THREADS_ASYNCEVENTLOOPEXECUTOR_H
#define QUOREL_THREADS_ASYNCEVENTLOOPEXECUTOR_H

#include <quorel/threads/AsyncExecutor.h>
#include <quorel/utility/Export.h>

#include <boost/shared_ptr.hpp>

#include <string>

namespace quorel {
namespace threads {

/// An executor that runs functions on one thread, inside that thread's event
/// loop, one at a time.  Immediate calls from one thread run in the order
/// given; delayed calls wait in the library's shared timer thread and may
/// overtake immediate ones.  A function handed in on the loop's own thread
/// runs only after CallAsync has returned and control is back in the loop.
/// GetThreadCount is always 1.
class QRL_EXPORT AsyncEventLoopAdaptor : public AsyncExecutor {
public:
    ~AsyncEventLoopAdaptor() override;

    /// Runs, on the calling thread, every immediate call that waits, until
    /// none is left.  Unlike the loop, it lets an exception out of a function
    /// pass to its caller (the calls after it stay queued).  A host calls it on
    /// the adapted thread when it wants queued calls to run without going
    /// through its loop.
    virtual void ProcessPendingCalls() = 0;
};

/// An event-loop adaptor with a thread and a loop of its own.
class QRL_EXPORT AsyncEventLoopExecutor : public AsyncEventLoopAdaptor {
public:
    ~AsyncEventLoopExecutor() override;

    /// Ends the loop without waiting for it (it first waits for the thread to
    /// have started).  Immediate calls queued before still run, on the loop's
    /// thread, before it ends; delayed calls that are not yet due are lost.
    /// From here on CallAsync returns false and IsCurrentThreadExecutorThread
    /// false, also on the former loop thread.  A second call does nothing.
    virtual void Terminate() = 0;

    /// True once Terminate has cut the loop off.
    virtual bool IsTerminated() = 0;

    /// Blocks until the loop's thread has ended: the one wait for the end.
    virtual void Join() = 0;
};

/// Adapts the calling thread's own event loop, which the host keeps running.
///
/// On Linux the calling thread receives the calls through its thread message
/// queue (ThreadMessages.h): a host loop (GLib, Qt, libuv, epoll...) watches
/// GetCurrentThreadMessageDescriptor for input and then calls
/// DispatchCurrentThreadMessages.
///
/// The adaptor belongs to the calling thread: release its last reference on
/// that thread.  Calls still waiting then are dropped uncalled.
QRL_EXPORT boost::shared_ptr<AsyncEventLoopAdaptor> AdaptCurrentEventLoopAsExecutor();

/// Starts a Thread named inName that runs an event loop of the library's own,
/// and returns at once; operations that need the thread wait for its start by
/// themselves.  Releasing the last reference terminates the loop without
/// waiting for it.
QRL_EXPORT boost::shared_ptr<AsyncEventLoopExecutor> CreateAsyncEventLoopExecutor(std::string const& inName);

}  // namespace threads
}  // namespace quorel

#endif
