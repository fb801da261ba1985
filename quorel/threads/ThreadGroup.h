// A named group of threads that can be joined together.
#ifndef QUOREL_THREADS_THREADGROUP_H
#define QUOREL_THREADS_THREADGROUP_H

#include <quorel/threads/Thread.h>
#include <quorel/utility/Export.h>

#include <boost/function.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace quorel {
namespace threads {

/// A list of threads, for starting several and joining them all.
///
/// The group shares the ownership of each boost::thread with the Thread
/// objects that stand for it: a Thread returned by CreateThread or given to
/// AddThread may be destroyed at any time, before or after RemoveThread, and
/// the group may be destroyed before its Threads.  A thread is let go (and
/// detached, if it was not joined) when its last owner is.
///
/// The list has a mutex of its own: CreateThread, AddThread, RemoveThread,
/// JoinAll and Size may be called from any threads, threads of the group
/// included.  The group object itself must not be transferred while another
/// thread uses it.  Copying transfers: the constructor and assignment that
/// take a non-const reference (and their move forms) take the list over, copy
/// the name and the count of threads created, and leave the source empty; an
/// empty group may only be destroyed or assigned to.
class QRL_EXPORT ThreadGroup {
public:
    /// An empty group.
    explicit ThreadGroup(std::string const& inName);

    /// Transfer: see above.
    ThreadGroup(ThreadGroup& inOther) noexcept;
    ThreadGroup(ThreadGroup&& inOther) noexcept;
    /// Transfer: lets the list held so far go (unless inOther is this object),
    /// then takes inOther's over.
    ThreadGroup& operator=(ThreadGroup& inOther) noexcept;
    ThreadGroup& operator=(ThreadGroup&& inOther) noexcept;

    /// Lets every thread of the group go; threads not joined run on, detached,
    /// unless a Thread still holds them.
    virtual ~ThreadGroup();

    /// Starts a thread that calls inFunction (if it is not empty), adds it to
    /// the group, and returns a new Thread for it, which the caller owns
    /// (delete it whenever convenient).  The Thread is named "<group name>
    /// created thread #<n>", where n counts the threads this group has created,
    /// from 1; removing threads does not lower it.  Unlike the Thread
    /// constructor, it does not wait until the thread runs.  Out of resources:
    /// error 20, then boost::thread_resource_error, and no thread is added.
    Thread* CreateThread(boost::function0<void> const& inFunction);

    /// Adds inThread's thread to the group.  Adding a thread that is in the
    /// group already changes nothing; so does null, or a Thread that owns no
    /// thread (made by name alone, or emptied).
    void AddThread(Thread* inThread);

    /// Takes inThread's thread out of the group; one that is not in the group,
    /// and null, are ignored.  The Thread keeps its thread.
    void RemoveThread(Thread* inThread);

    /// Joins every thread of the group that is still joinable, in the order in
    /// which they were added.  Threads added while JoinAll runs are not waited
    /// for.  A thread of the group that calls JoinAll gets error 20 and
    /// boost::thread_resource_error before anything is joined.  Two JoinAll
    /// calls at once are served one after the other.
    void JoinAll();

    /// The number of threads in the group, joined ones included.
    std::int32_t Size() const;

    std::string const& GetName() const noexcept { return mName; }

private:
    class ThreadList;

    std::atomic<std::int32_t> mCreatedCount;
    std::string mName;
    std::unique_ptr<ThreadList> mThreads;
};

}  // namespace threads
}  // namespace quorel

#endif
