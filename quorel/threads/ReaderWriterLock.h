// A reader-writer lock whose read side never blocks when asked not to.
#ifndef QUOREL_THREADS_READERWRITERLOCK_H
#define QUOREL_THREADS_READERWRITERLOCK_H

#include <quorel/utility/Export.h>

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>

#include <atomic>
#include <cstdint>

namespace quorel {
namespace threads {

/// A lock for many readers or one writer that favours writers.
///
/// The state word counts the readers inside in its low 16 bits; every writer
/// that has announced itself adds 0x10000.  Once a writer is about, no new
/// reader gets in until it is done, and a reader that must not wait learns
/// that at once: AcquireRead(true) is a single compare-and-exchange that fails
/// instead of blocking.  With no writer about, entering the read side is one
/// compare-and-exchange, leaving it one atomic subtraction, and neither takes
/// a mutex.
///
/// The writer mutex is always taken before the drain mutex.  A thread must not
/// ask for the write side while it holds the read side of the same lock: the
/// drain would never end.
struct QRL_EXPORT ReaderWriterLock {
    ReaderWriterLock();
    ReaderWriterLock(ReaderWriterLock const&) = delete;
    ReaderWriterLock& operator=(ReaderWriterLock const&) = delete;

    /// Enters the read side.  With inTryOnly, returns false at once (state
    /// unchanged) while a writer is about; otherwise waits for the writers.
    bool AcquireRead(bool inTryOnly) {
        std::uint32_t state = mState.load(std::memory_order_relaxed);
        while (state < kWriterUnit) {
            if (mState.compare_exchange_weak(state, state + 1, std::memory_order_acquire,
                                             std::memory_order_relaxed)) {
                return true;
            }
        }
        return inTryOnly ? false : AcquireReadBehindWriters();
    }

    /// Leaves the read side; the last reader wakes a writer that waits to drain.
    /// One atomic subtraction; only the last reader out while a writer is
    /// about goes on to the drain mutex.
    void ReleaseRead() {
        std::uint32_t const before = mState.fetch_sub(1, std::memory_order_release);
        if (before >= kWriterUnit && (before & kReaderMask) == 1) {
            WakeDrainingWriter();
        }
    }

    /// Enters the write side once all readers inside have left.  With
    /// inTryOnly, returns false instead of waiting for a writer or for readers.
    bool AcquireWrite(bool inTryOnly);
    /// Leaves the write side.  Throws boost::lock_error when no writer holds it.
    void ReleaseWrite();

    /// The slow paths of the read side, out of line.
    bool AcquireReadBehindWriters();
    /// Wakes a writer that waits for the readers to drain, after the last
    /// reader has left.
    void WakeDrainingWriter();

    static constexpr std::uint32_t kWriterUnit = 0x10000;
    static constexpr std::uint32_t kReaderMask = 0xFFFF;

    std::atomic<std::uint32_t> mState;
    boost::condition_variable mCondition;
    boost::mutex mDrainMutex;
    boost::try_mutex mWriterMutex;
    std::int32_t mWaitingWriters;  // guarded by mDrainMutex
    std::atomic<bool> mWriterHeld;  // whether a writer holds mWriterMutex as the write side
};

/// Holds the read side for a scope, if it could be taken.
class ReadLockHolder {
public:
    ReadLockHolder(ReaderWriterLock& inLock, bool inTryOnly) : mLock(inLock), mHeld(inLock.AcquireRead(inTryOnly)) {}
    ~ReadLockHolder() {
        if (mHeld) {
            mLock.ReleaseRead();
        }
    }
    ReadLockHolder(ReadLockHolder const&) = delete;
    ReadLockHolder& operator=(ReadLockHolder const&) = delete;
    bool Held() const noexcept { return mHeld; }

private:
    ReaderWriterLock& mLock;
    bool const mHeld;
};

/// A write-side holder on the stack: it remembers whether it holds the write
/// side and releases it at its end.  One acquisition at a time: acquiring
/// again while holding, or releasing while not holding, throws boost::lock_error.
class QRL_EXPORT WriteLockHolder {
public:
    explicit WriteLockHolder(ReaderWriterLock& inLock) noexcept : mLock(inLock), mHeld(false) {}
    ~WriteLockHolder();
    WriteLockHolder(WriteLockHolder const&) = delete;
    WriteLockHolder& operator=(WriteLockHolder const&) = delete;

    bool Acquire(bool inTryOnly);
    void Release();
    bool Held() const noexcept { return mHeld; }

private:
    ReaderWriterLock& mLock;
    bool mHeld;
};

}  // namespace threads
}  // namespace quorel

#endif
