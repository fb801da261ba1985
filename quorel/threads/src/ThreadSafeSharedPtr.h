// A shared pointer that many threads read and, rarely, one replaces.
#ifndef QUOREL_THREADS_SRC_THREADSAFESHAREDPTR_H
#define QUOREL_THREADS_SRC_THREADSAFESHAREDPTR_H

#include <quorel/threads/ReaderWriterLock.h>

#include <boost/shared_ptr.hpp>

namespace quorel {
namespace threads {

/// A boost::shared_ptr guarded by a ReaderWriterLock.  Readers use or copy the
/// pointer through a Reader on the stack; the writers (storing the pointer at
/// start-up, moving it out at shut-down) hold the write side only for the
/// exchange itself.
template <class T>
class ThreadSafeSharedPtr {
public:
    ThreadSafeSharedPtr() = default;
    explicit ThreadSafeSharedPtr(boost::shared_ptr<T> const& inPointer) : mPointer(inPointer) {}
    ThreadSafeSharedPtr(ThreadSafeSharedPtr const&) = delete;
    ThreadSafeSharedPtr& operator=(ThreadSafeSharedPtr const&) = delete;

    /// Holds the read side for a scope, if it could be had.
    class Reader {
    public:
        /// With inTryOnly, gives up at once while a writer is about.
        Reader(ThreadSafeSharedPtr& inOwner, bool inTryOnly) : mOwner(inOwner), mLock(inOwner.mLock, inTryOnly) {}
        bool Held() const noexcept { return mLock.Held(); }
        /// The pointer, or null when the read side is not held.
        T* Get() const noexcept { return mLock.Held() ? mOwner.mPointer.get() : nullptr; }
        boost::shared_ptr<T> Copy() const { return mLock.Held() ? mOwner.mPointer : boost::shared_ptr<T>(); }

    private:
        ThreadSafeSharedPtr& mOwner;
        ReadLockHolder mLock;
    };

    /// Puts inPointer in place under the write lock and returns the former
    /// pointer, which the caller releases after the lock.
    boost::shared_ptr<T> Exchange(boost::shared_ptr<T> inPointer) {
        WriteLockHolder lock(mLock);
        lock.Acquire(false);
        mPointer.swap(inPointer);
        return inPointer;
    }

    void Store(boost::shared_ptr<T> const& inPointer) { Exchange(inPointer); }

    /// Moves the pointer out and leaves null.
    boost::shared_ptr<T> MoveOut() { return Exchange(boost::shared_ptr<T>()); }

private:
    ReaderWriterLock mLock;
    boost::shared_ptr<T> mPointer;
};

}  // namespace threads
}  // namespace quorel

#endif
