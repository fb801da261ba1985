// A queue of owned entries for any number of threads.
#ifndef QUOREL_THREADS_SRC_THREADSAFEQUEUE_H
#define QUOREL_THREADS_SRC_THREADSAFEQUEUE_H

#include "PointerQueue.h"

#include <new>

namespace quorel {
namespace threads {

/// A first-in-first-out queue of entries of type T (AllocatedFunction), each
/// handed over as a raw pointer that the queue then owns.  Entries left at the
/// end are destroyed uncalled (T::Destroy).
template <class T>
class ThreadSafeQueue {
public:
    /// Throws std::bad_alloc when the system has no queue to give.
    ThreadSafeQueue() : mPort(platform::CreatePointerQueue()) {
        if (mPort == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~ThreadSafeQueue() {
        T* entry = nullptr;
        while (TryPop(entry)) {
            T::Destroy(entry);
        }
        platform::ClosePointerQueue(mPort);
    }
    ThreadSafeQueue(ThreadSafeQueue const&) = delete;
    ThreadSafeQueue& operator=(ThreadSafeQueue const&) = delete;

    /// True if the queue took inEntry; on false the caller keeps it.
    bool Push(T* inEntry) noexcept { return platform::PostPointer(mPort, inEntry); }

    /// True and the oldest entry, if there was one; never waits.
    bool TryPop(T*& outEntry) noexcept {
        void* pointer = nullptr;
        bool const got = platform::GetPointer(mPort, pointer, 0);
        outEntry = static_cast<T*>(pointer);
        return got;
    }

private:
    platform::PointerQueue* const mPort;
};

}  // namespace threads
}  // namespace quorel

#endif
