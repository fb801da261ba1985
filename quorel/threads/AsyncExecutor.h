// Executors: objects to which any thread hands a function to be called later,
// on the executor's own thread or threads, at once or after a delay.
#ifndef QUOREL_THREADS_ASYNCEXECUTOR_H
#define QUOREL_THREADS_ASYNCEXECUTOR_H

#include <quorel/threads/ThreadPriority.h>
#include <quorel/utility/Export.h>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <string>

namespace quorel {
namespace threads {

/// Something that calls functions for its callers, later and on threads of its
/// own.  Every operation may be called from any thread while the caller holds
/// a reference to the executor.
class QRL_EXPORT AsyncExecutor {
public:
    virtual ~AsyncExecutor();

    /// Hands over a copy of inFunction, to be called once on one of the
    /// executor's threads: as soon as one is free when inDelayMilliseconds is 0,
    /// otherwise when the delay (an unsigned count of milliseconds) has passed.
    /// Returns whether the executor took the function; a function that was not
    /// taken is never called.  The function is never called inside CallAsync
    /// itself.  An empty function is taken and skipped.  An exception leaving
    /// the function is swallowed on the executor's thread.  Throws
    /// std::bad_alloc when no memory can be had for the copy.
    virtual bool CallAsync(boost::function0<void> const& inFunction, std::uint32_t inDelayMilliseconds) = 0;

    /// True when the calling thread is one of the executor's threads.
    virtual bool IsCurrentThreadExecutorThread() = 0;

    /// The number of the executor's threads.
    virtual std::int32_t GetThreadCount() = 0;
};

/// An executor with a pool of identical worker threads of its own.
///
/// Shut-down: an owner that wants all queued work finished and the threads
/// gone calls Terminate, then Join, then releases its last reference.
/// Releasing the last reference without Join leaves the workers to run out
/// what lies in the queue and end by themselves; this also holds when the last
/// reference is released by a function running on one of the pool's own
/// workers.
class QRL_EXPORT AsyncThreadedExecutor : public AsyncExecutor {
public:
    ~AsyncThreadedExecutor() override;

    /// Ends the pool without waiting: from here on CallAsync returns false and
    /// IsTerminated true; delayed functions that are not yet due are destroyed
    /// uncalled; functions queued for immediate call before still run; then
    /// every worker ends.  A second call does nothing; so does a call from a
    /// worker of this pool.
    virtual void Terminate() = 0;

    /// True from the moment Terminate starts to cut the queue off.
    virtual bool IsTerminated() = 0;

    /// While the pool runs: blocks until every function queued for immediate
    /// call before this call has finished (and, on a paused pool, until
    /// Resume).  After Terminate: blocks until all workers have ended; later
    /// calls return at once.  Does nothing on a worker of this pool.
    virtual void Join() = 0;

    /// Holds the workers at their next function: running functions finish,
    /// no worker starts another until Resume.  CallAsync still takes functions.
    virtual void Pause() = 0;

    /// Lets paused workers go on.
    virtual void Resume() = 0;

    /// Blocks until the pool is not paused.
    ///
    /// Pause, Resume and WaitWhilePaused do nothing once the pool is terminated.
    virtual void WaitWhilePaused() = 0;
};

/// Starts a pool of inThreadCount workers, each a Thread named inName that
/// runs at inPriority (best effort, see SetCurrentThreadPriority).  -1 makes as
/// many workers as there are processors that the process may run on; zero or
/// less otherwise makes none: such an executor takes functions and never calls
/// them.  No worker calls a function before all of them exist.  Failure to
/// start a thread is reported as Thread reports it (error 20, then
/// boost::thread_resource_error), and no executor results.
QRL_EXPORT boost::shared_ptr<AsyncThreadedExecutor> CreateAsyncThreadedExecutor(std::string const& inName,
                                                                                int inThreadCount,
                                                                                ThreadPriority inPriority);

}  // namespace threads
}  // namespace quorel

#endif
