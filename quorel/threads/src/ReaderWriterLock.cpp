#include <quorel/threads/ReaderWriterLock.h>

#include <boost/thread/exceptions.hpp>
#include <boost/thread/lock_types.hpp>

namespace quorel {
namespace threads {

ReaderWriterLock::ReaderWriterLock() : mState(0), mWaitingWriters(0), mWriterHeld(false) {}

bool ReaderWriterLock::AcquireReadBehindWriters() {
    // Queue behind the writers: the writer mutex is free again once they are done.
    boost::lock_guard<boost::try_mutex> waitForWriters(mWriterMutex);
    mState.fetch_add(1, std::memory_order_acquire);
    return true;
}

// The last reader out while a writer is about: wake the writer that drains.
// The reader count is already 0.  A writer either waits on the condition
// already (it counted itself under the drain mutex and then found a reader
// inside) and is woken here, or it takes the drain mutex after this and finds
// no reader.
void ReaderWriterLock::WakeDrainingWriter() {
    boost::lock_guard<boost::mutex> drain(mDrainMutex);
    if (mWaitingWriters > 0) {
        mCondition.notify_one();
    }
}

bool ReaderWriterLock::AcquireWrite(bool inTryOnly) {
    mState.fetch_add(kWriterUnit, std::memory_order_acq_rel);
    if (inTryOnly) {
        if (!mWriterMutex.try_lock()) {
            mState.fetch_sub(kWriterUnit, std::memory_order_release);
            return false;
        }
    } else {
        mWriterMutex.lock();
    }
    if ((mState.load(std::memory_order_acquire) & kReaderMask) == 0) {
        mWriterHeld.store(true, std::memory_order_relaxed);
        return true;
    }
    if (inTryOnly) {
        mWriterMutex.unlock();
        mState.fetch_sub(kWriterUnit, std::memory_order_release);
        return false;
    }
    boost::unique_lock<boost::mutex> drain(mDrainMutex);
    ++mWaitingWriters;
    while ((mState.load(std::memory_order_acquire) & kReaderMask) != 0) {
        mCondition.wait(drain);
    }
    --mWaitingWriters;
    mWriterHeld.store(true, std::memory_order_relaxed);
    return true;
}

void ReaderWriterLock::ReleaseWrite() {
    if (!mWriterHeld.exchange(false, std::memory_order_relaxed)) {
        throw boost::lock_error();
    }
    mWriterMutex.unlock();
    mState.fetch_sub(kWriterUnit, std::memory_order_release);
}

WriteLockHolder::~WriteLockHolder() {
    if (mHeld) {
        mLock.ReleaseWrite();
    }
}

bool WriteLockHolder::Acquire(bool inTryOnly) {
    if (mHeld) {
        throw boost::lock_error();
    }
    mHeld = mLock.AcquireWrite(inTryOnly);
    return mHeld;
}

void WriteLockHolder::Release() {
    if (!mHeld) {
        throw boost::lock_error();
    }
    mHeld = false;
    mLock.ReleaseWrite();
}

}  // namespace threads
}  // namespace quorel
