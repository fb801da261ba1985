// A named thread.
#ifndef QUOREL_THREADS_THREAD_H
#define QUOREL_THREADS_THREAD_H

#include <quorel/utility/Export.h>

// boost::xtime belongs to Boost.Thread's date-time interface, which versions 4
// and later of Boost.Thread leave out unless it is asked for.
#if !defined(BOOST_THREAD_USES_DATETIME) && !defined(BOOST_THREAD_DONT_USE_DATETIME)
#define BOOST_THREAD_USES_DATETIME
#endif
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/thread/thread_only.hpp>
#include <boost/thread/xtime.hpp>
#if !defined(BOOST_THREAD_USES_DATETIME)
#error "quorel::threads::Thread::Sleep takes a boost::xtime: do not define BOOST_THREAD_DONT_USE_DATETIME"
#endif

#include <string>

namespace quorel {
namespace threads {

class ThreadGroup;

/// A named handle on a thread: either a thread that it started, or the thread
/// that made it, for comparison.
///
/// Identity.  Two Thread objects are equal when they stand for the same
/// platform thread, whatever their names: a Thread made by name alone on a
/// worker compares equal to the Thread that started that worker.  The identity
/// is taken when the object is made and kept after Join.
///
/// Ownership.  A Thread that started a thread owns its boost::thread, shared
/// with a ThreadGroup it was added to (ThreadGroup.h): the boost::thread lives
/// until the last of them lets it go, so the Thread and the group may be
/// destroyed in any order.  Destroying the last owner of a thread that was not
/// joined detaches it; it runs on to its end.  Copying transfers: the
/// constructor and assignment that take a non-const reference (and their move
/// forms) take the thread and its identity over, copy the name, and leave the
/// source empty; an empty Thread may only be destroyed or assigned to.
///
/// One Thread object belongs to one thread at a time; join a thread from one
/// place at a time (not through two handles, or a handle and its group, at
/// once).
class QRL_EXPORT Thread {
public:
    /// A handle on the calling thread.  It starts nothing, owns no
    /// boost::thread, and serves only for comparison; Join on it returns at
    /// once.
    explicit Thread(std::string const& inName);

    /// Starts a new thread at once and returns when it runs.  The thread keeps
    /// its own copies of the name and of inFunction, calls the function if it
    /// is not empty, and ends.  It catches nothing: an exception leaving the
    /// function ends the process (std::terminate).  The name is not given to
    /// the operating system.  Out of resources: error 20, then
    /// boost::thread_resource_error, and no object results.
    Thread(std::string const& inName, boost::function0<void> const& inFunction);

    /// Transfer: see above.
    Thread(Thread& inOther) noexcept;
    Thread(Thread&& inOther) noexcept;
    /// Transfer: lets the thread held so far go (unless inOther is this object),
    /// then takes inOther's over.
    Thread& operator=(Thread& inOther) noexcept;
    Thread& operator=(Thread&& inOther) noexcept;

    virtual ~Thread();

    /// Waits until the thread has ended.  Once only: afterwards the thread is
    /// no longer joinable, and a second Join (or a Join on a handle made by name
    /// alone, or on an emptied object) returns at once.  A thread that joins
    /// itself gets error 20 and boost::thread_resource_error.
    void Join();

    /// Sleeps until the absolute time inUntil on the UTC clock (as from
    /// boost::xtime_get with TIME_UTC_).  A time that has passed returns at once.
    static void Sleep(boost::xtime const& inUntil);

    /// Gives up the rest of the calling thread's time slice.
    static void YieldTime();

    /// Compare the platform thread identities (see above), not the names.
    bool operator==(Thread const& inOther) const;
    bool operator!=(Thread const& inOther) const;

    /// The name given at construction (or copied by a transfer).
    std::string const& GetName() const noexcept { return mName; }

protected:
    /// Takes inThread over (null: a Thread that owns nothing).  The identity is
    /// that of inThread, which must not have been joined or detached.
    Thread(std::string const& inName, boost::thread* inThread);

    /// The boost::thread; null for a handle made by name alone and for an
    /// emptied object.
    boost::thread* GetThread() const noexcept { return mThread.get(); }

private:
    friend class ThreadGroup;

    /// A thread that a ThreadGroup started, shared with the group.
    Thread(std::string const& inName, boost::shared_ptr<boost::thread> const& inThread);

    std::string mName;
    boost::shared_ptr<boost::thread> mThread;
    boost::thread::id mID;
};

}  // namespace threads
}  // namespace quorel

#endif
