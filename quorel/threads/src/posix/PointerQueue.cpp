// The executors' pointer queue on POSIX: a growable ring of pointers under one
// mutex, with a condition variable for the threads that wait on it.
//
// Getters that find the queue empty spin for a moment before they sleep: under
// steady load a worker then picks the next entry up without the cost of going
// to sleep and being woken, and the poster skips the wake-up call altogether
// when nobody sleeps.
#include "../PointerQueue.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <new>

#include "../CpuRelax.h"

namespace quorel {
namespace threads {
namespace platform {

namespace {

/// How often a getter looks at an empty queue before it sleeps.
constexpr int kSpinRounds = 200;

}  // namespace

class PointerQueue {
public:
    bool Post(void* inPointer) noexcept;
    bool Get(void*& outPointer, std::uint32_t inTimeoutMilliseconds) noexcept;

private:
    /// Takes the oldest entry; the mutex is held and the ring is not empty.
    void* TakeFront() noexcept;
    bool Grow() noexcept;
    bool SpinForEntry() const noexcept;

    std::mutex mMutex;
    std::condition_variable mCondition;
    std::unique_ptr<void*[]> mRing;
    std::size_t mCapacity = 0;  // a power of two, or 0
    std::size_t mHead = 0;
    std::atomic<std::size_t> mCount{0};  // written under mMutex, read outside it to spin
    int mSleepers = 0;                    // getters blocked on mCondition
};

bool PointerQueue::Grow() noexcept {
    std::size_t const capacity = mCapacity == 0 ? 64 : mCapacity * 2;
    std::unique_ptr<void*[]> ring(new (std::nothrow) void*[capacity]);
    if (!ring) {
        return false;
    }
    std::size_t const count = mCount.load(std::memory_order_relaxed);
    for (std::size_t i = 0; i < count; ++i) {
        ring[i] = mRing[(mHead + i) & (mCapacity - 1)];
    }
    mRing = std::move(ring);
    mCapacity = capacity;
    mHead = 0;
    return true;
}

void* PointerQueue::TakeFront() noexcept {
    void* const pointer = mRing[mHead];
    mHead = (mHead + 1) & (mCapacity - 1);
    mCount.store(mCount.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
    return pointer;
}

bool PointerQueue::Post(void* inPointer) noexcept {
    bool wake;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        std::size_t const count = mCount.load(std::memory_order_relaxed);
        if (count == mCapacity && !Grow()) {
            return false;
        }
        mRing[(mHead + count) & (mCapacity - 1)] = inPointer;
        mCount.store(count + 1, std::memory_order_relaxed);
        wake = mSleepers > 0;
    }
    if (wake) {
        mCondition.notify_one();
    }
    return true;
}

bool PointerQueue::SpinForEntry() const noexcept {
    for (int round = 0; round < kSpinRounds; ++round) {
        if (mCount.load(std::memory_order_relaxed) != 0) {
            return true;
        }
        CpuRelax();
    }
    return false;
}

bool PointerQueue::Get(void*& outPointer, std::uint32_t inTimeoutMilliseconds) noexcept {
    outPointer = nullptr;
    if (inTimeoutMilliseconds != 0) {
        SpinForEntry();
    }
    std::unique_lock<std::mutex> lock(mMutex);
    if (mCount.load(std::memory_order_relaxed) == 0) {
        if (inTimeoutMilliseconds == 0) {
            return false;
        }
        auto const hasEntry = [this] { return mCount.load(std::memory_order_relaxed) != 0; };
        ++mSleepers;
        if (inTimeoutMilliseconds == kWaitForever) {
            mCondition.wait(lock, hasEntry);
        } else {
            mCondition.wait_for(lock, std::chrono::milliseconds(inTimeoutMilliseconds), hasEntry);
        }
        --mSleepers;
        if (mCount.load(std::memory_order_relaxed) == 0) {
            return false;
        }
    }
    outPointer = TakeFront();
    return true;
}

PointerQueue* CreatePointerQueue() noexcept { return new (std::nothrow) PointerQueue(); }

bool PostPointer(PointerQueue* inQueue, void* inPointer) noexcept { return inQueue->Post(inPointer); }

bool GetPointer(PointerQueue* inQueue, void*& outPointer, std::uint32_t inTimeoutMilliseconds) noexcept {
    return inQueue->Get(outPointer, inTimeoutMilliseconds);
}

void ClosePointerQueue(PointerQueue* inQueue) noexcept { delete inQueue; }

}  // namespace platform
}  // namespace threads
}  // namespace quorel
