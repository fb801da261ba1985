// A named recursive mutex.
#ifndef QUOREL_THREADS_RECURSIVEMUTEX_H
#define QUOREL_THREADS_RECURSIVEMUTEX_H

#include <quorel/utility/Export.h>

#include <boost/thread/recursive_mutex.hpp>

#include <memory>
#include <string>

namespace quorel {
namespace threads {

template <typename Mutex, typename BoostMutex>
class ScopedLock;

/// A mutex that the thread holding it may lock again; it is free again when
/// every lock has been released.  It is locked and unlocked only through a
/// ScopedLock (ScopedLock.h), so that no path can leave it locked.
///
/// The object owns its boost::recursive_mutex alone.  Copying transfers: the
/// constructor and assignment that take a non-const reference (and their move
/// forms) take the mutex over and leave the source empty, and an empty
/// RecursiveMutex may only be destroyed or assigned to.  Do not transfer a
/// mutex while it is locked or while another thread uses it.  Destroying a
/// locked mutex is undefined.
///
/// Safe for any number of threads.
class QRL_EXPORT RecursiveMutex {
public:
    /// Creates the mutex.  Out of resources: error 20, then
    /// boost::thread_resource_error (see ThreadErrors.h).
    RecursiveMutex();
    /// The same; the name serves the trace scope of the constructor and is not
    /// kept.
    explicit RecursiveMutex(std::string const& inName);

    /// Transfer: takes inOther's mutex over and leaves inOther empty.
    RecursiveMutex(RecursiveMutex& inOther) noexcept;
    RecursiveMutex(RecursiveMutex&& inOther) noexcept;
    /// Transfer: destroys the mutex held so far (unless inOther is this
    /// object), takes inOther's over and leaves inOther empty.
    RecursiveMutex& operator=(RecursiveMutex& inOther) noexcept;
    RecursiveMutex& operator=(RecursiveMutex&& inOther) noexcept;

    virtual ~RecursiveMutex();

protected:
    /// The Boost mutex; null once the object was emptied by a transfer.
    boost::recursive_mutex* GetMutex() const noexcept { return mMutex.get(); }

private:
    template <typename Mutex, typename BoostMutex>
    friend class ScopedLock;

    std::unique_ptr<boost::recursive_mutex> mMutex;
};

}  // namespace threads
}  // namespace quorel

#endif
