// Holding a RecursiveMutex for the length of a scope.
#ifndef QUOREL_THREADS_SCOPEDLOCK_H
#define QUOREL_THREADS_SCOPEDLOCK_H

#include <quorel/debug/Debug.h>
#include <quorel/threads/RecursiveMutex.h>
#include <quorel/threads/ThreadErrors.h>

#include <boost/thread/lock_types.hpp>

namespace quorel {
namespace threads {

/// A lock on a mutex wrapper of this library, held by one scope on one thread.
///
/// Mutex is the wrapper (RecursiveMutex) and BoostMutex the Boost mutex it
/// holds; the library uses ScopedLock<RecursiveMutex, boost::recursive_mutex>,
/// also spelled RecursiveMutexLock.  The lock does not own the mutex, which
/// must outlive it.  Construction, Lock and Unlock run through the error
/// translation (ThreadErrors.h): a lock that Boost refuses is reported as error
/// 21 and its boost::lock_error continues.
///
///     RecursiveMutexLock lock(mMutex, true);   // held until the scope ends
///
/// Not copyable; belongs to the thread that made it.
template <typename Mutex = RecursiveMutex, typename BoostMutex = boost::recursive_mutex>
class ScopedLock {
public:
    /// Locks inMutex at once when inLockNow is true (what the library always
    /// does), waiting while another thread holds it; otherwise leaves it
    /// unlocked for a later Lock.  An emptied (transferred) mutex is a contract
    /// violation and leaves the lock without a mutex.
    ScopedLock(Mutex& inMutex, bool inLockNow) {
        BoostMutex* const mutex = inMutex.GetMutex();
        QRL_INPUT_CONTRACT(mutex != nullptr);
        if (mutex == nullptr) {
            return;
        }
        CallTranslatingThreadErrors([&] {
            mLock = inLockNow ? boost::unique_lock<BoostMutex>(*mutex)
                              : boost::unique_lock<BoostMutex>(*mutex, boost::defer_lock);
        });
    }

    /// Unlocks if this lock holds the mutex.
    virtual ~ScopedLock() = default;

    ScopedLock(ScopedLock const&) = delete;
    ScopedLock& operator=(ScopedLock const&) = delete;

    /// Takes the mutex, waiting.  Locking again through the same ScopedLock, or
    /// a lock without a mutex, is refused with error 21 and boost::lock_error.
    void Lock() {
        CallTranslatingThreadErrors([&] { mLock.lock(); });
    }

    /// Lets the mutex go.  A lock that does not hold it is refused with error
    /// 21 and boost::lock_error.
    void Unlock() {
        CallTranslatingThreadErrors([&] { mLock.unlock(); });
    }

    /// Whether this lock holds its mutex now.
    bool IsLocked() const noexcept { return mLock.owns_lock(); }

private:
    boost::unique_lock<BoostMutex> mLock;
};

/// The lock on a RecursiveMutex.
using RecursiveMutexLock = ScopedLock<RecursiveMutex, boost::recursive_mutex>;

}  // namespace threads
}  // namespace quorel

#endif
