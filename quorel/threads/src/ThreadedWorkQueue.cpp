// The pool of worker threads behind CreateAsyncThreadedExecutor.
#include "AllocatedFunction.h"
#include "Gate.h"
#include "ThreadPlatform.h"
#include "ThreadSafeDelayQueue.h"
#include "ThreadSafeSharedPtr.h"

#include <quorel/threads/AsyncExecutor.h>
#include <quorel/threads/SyncPoint.h>
#include <quorel/threads/Thread.h>

#include <boost/bind/bind.hpp>
#include <boost/core/noncopyable.hpp>
#include <boost/core/ref.hpp>
#include <boost/make_shared.hpp>
#include <boost/thread/mutex.hpp>

#include <algorithm>
#include <exception>
#include <memory>
#include <new>
#include <vector>

namespace quorel {
namespace threads {

AsyncExecutor::~AsyncExecutor() = default;
AsyncThreadedExecutor::~AsyncThreadedExecutor() = default;

namespace {

char const kCurrentThreadName[] = "quorel/threads/ThreadedWorkQueue/IsCurrentThreadExecutorThread/currentThread";

/// A pool of identical workers that block on one delay queue.  Callers reach
/// the queue through a guarded pointer, so that Terminate cuts them all off at
/// one stroke, while each worker holds its own references to the queue and
/// the gate and runs out in its own time.
class ThreadedWorkQueue : public AsyncThreadedExecutor, private boost::noncopyable {
public:
    /// Thrown by the functions that Terminate queues, to end a worker.
    struct TerminateThreadException {};

    ThreadedWorkQueue(std::string const& inName, int inThreadCount, ThreadPriority inPriority);
    ~ThreadedWorkQueue() override;

    bool CallAsync(boost::function0<void> const& inFunction, std::uint32_t inDelayMilliseconds) override;
    bool IsCurrentThreadExecutorThread() override;
    std::int32_t GetThreadCount() override { return static_cast<std::int32_t>(mThreads.size()); }
    void Terminate() override;
    bool IsTerminated() override;
    void Join() override;
    void Pause() override {
        WithGate([](Gate& inGate) { inGate.Close(); });
    }
    void Resume() override {
        WithGate([](Gate& inGate) { inGate.Open(); });
    }
    void WaitWhilePaused() override {
        WithGate([](Gate& inGate) { inGate.Wait(platform::kWaitForever); });
    }

private:
    /// Takes its references by value: they go when the worker returns, not
    /// when whichever thread drops the last handle on the ended thread.
    static void RunWorker(boost::shared_ptr<ThreadSafeDelayQueue> inQueue, ThreadPriority inPriority,
                          boost::shared_ptr<Gate> inGate);
    static void ThrowTerminate() { throw TerminateThreadException(); }

    /// The steps of Terminate after the check for a worker of this pool.
    void CutOff();
    /// Queues one call of inFunction per worker, for immediate call.
    void QueueForEveryWorker(ThreadSafeDelayQueue& ioQueue, boost::function0<void> const& inFunction) const;
    /// Calls inOperation on the gate while the pool is not terminated.
    template <class Operation>
    void WithGate(Operation inOperation);

    ThreadSafeSharedPtr<ThreadSafeDelayQueue> mQueue;
    boost::mutex mJoinMutex;
    bool mJoined;
    std::vector<std::unique_ptr<Thread>> mThreads;
    boost::shared_ptr<Gate> mGate;
};

ThreadedWorkQueue::ThreadedWorkQueue(std::string const& inName, int inThreadCount, ThreadPriority inPriority)
    : mQueue(boost::make_shared<ThreadSafeDelayQueue>()), mJoined(false), mGate(boost::make_shared<Gate>(false)) {
    boost::shared_ptr<ThreadSafeDelayQueue> queue = ThreadSafeSharedPtr<ThreadSafeDelayQueue>::Reader(mQueue, false).Copy();
    try {
        mThreads.reserve(inThreadCount > 0 ? static_cast<std::size_t>(inThreadCount) : 0);
        for (int i = 0; i < inThreadCount; ++i) {
            mThreads.emplace_back(new Thread(inName, boost::bind(&RunWorker, queue, inPriority, mGate)));
        }
    } catch (...) {
        // The workers that did start end on their terminating functions.
        CutOff();
        throw;
    }
    mGate->Open();
}

ThreadedWorkQueue::~ThreadedWorkQueue() {
    // Terminate does nothing on a worker of this pool; when the last reference
    // goes on one, the pool must still be cut off, or its workers would wait
    // for ever.  The worker ends on its terminating function once it is back
    // in its loop.  The Thread destructors detach the workers.  Without
    // memory for the terminating functions the workers stay asleep; the
    // destructor must not throw.
    try {
        CutOff();
    } catch (std::bad_alloc const&) {
    }
}

void ThreadedWorkQueue::RunWorker(boost::shared_ptr<ThreadSafeDelayQueue> inQueue, ThreadPriority inPriority,
                                  boost::shared_ptr<Gate> inGate) {
    if (!inQueue || !inGate) {
        return;
    }
    SetCurrentThreadPriority(inPriority);
    for (;;) {
        AllocatedFunctionHolder entry;
        try {
            if (inQueue->Pop(entry.Slot(), platform::kWaitForever) && !entry.Get()->IsEmpty()) {
                inGate->Wait(platform::kWaitForever);
                entry.Get()->Call();
            }
        } catch (TerminateThreadException const&) {
            return;
        } catch (std::exception const&) {
            // A failing function does not end its worker.
        } catch (...) {
        }
    }
}

bool ThreadedWorkQueue::CallAsync(boost::function0<void> const& inFunction, std::uint32_t inDelayMilliseconds) {
    ThreadSafeSharedPtr<ThreadSafeDelayQueue>::Reader queue(mQueue, true);
    if (queue.Get() == nullptr) {
        return false;
    }
    AllocatedFunctionHolder entry(AllocatedFunction::Create(inFunction));
    if (!queue.Get()->Push(entry.Get(), inDelayMilliseconds)) {
        return false;
    }
    entry.Release();
    return true;
}

bool ThreadedWorkQueue::IsCurrentThreadExecutorThread() {
    Thread const current(kCurrentThreadName);
    for (std::unique_ptr<Thread> const& thread : mThreads) {
        if (*thread == current) {
            return true;
        }
    }
    return false;
}

void ThreadedWorkQueue::Terminate() {
    if (!IsCurrentThreadExecutorThread()) {
        CutOff();
    }
}

void ThreadedWorkQueue::CutOff() {
    boost::shared_ptr<ThreadSafeDelayQueue> const queue = mQueue.MoveOut();
    if (!queue) {
        return;
    }
    queue->Clear();
    QueueForEveryWorker(*queue, &ThrowTerminate);
    mGate->Open();
}

void ThreadedWorkQueue::QueueForEveryWorker(ThreadSafeDelayQueue& ioQueue,
                                            boost::function0<void> const& inFunction) const {
    // Each worker takes exactly one of these (it waits in a barrier, or ends),
    // so a worker left without one would wait for ever: all entries are made
    // before the first goes in, and a failed allocation queues none.
    std::vector<AllocatedFunction*> entries;
    entries.reserve(mThreads.size());
    try {
        for (std::size_t i = 0; i < mThreads.size(); ++i) {
            entries.push_back(AllocatedFunction::Create(inFunction));
        }
    } catch (...) {
        std::for_each(entries.begin(), entries.end(), &AllocatedFunction::Destroy);
        throw;
    }
    for (AllocatedFunction* const entry : entries) {
        if (!ioQueue.Push(entry, 0)) {
            AllocatedFunction::Destroy(entry);
        }
    }
}

bool ThreadedWorkQueue::IsTerminated() {
    return ThreadSafeSharedPtr<ThreadSafeDelayQueue>::Reader(mQueue, true).Get() == nullptr;
}

void ThreadedWorkQueue::Join() {
    if (IsCurrentThreadExecutorThread()) {
        return;
    }
    boost::mutex::scoped_lock lock(mJoinMutex);
    if (mJoined) {
        return;
    }
    SyncPoint syncPoint(static_cast<unsigned int>(mThreads.size() + 1));
    bool running = false;
    {
        ThreadSafeSharedPtr<ThreadSafeDelayQueue>::Reader queue(mQueue, true);
        if (queue.Get() != nullptr) {
            QueueForEveryWorker(*queue.Get(), boost::bind(&SyncPoint::Wait, boost::ref(syncPoint)));
            running = true;
        }
    }
    if (running) {
        syncPoint.Wait();
        return;
    }
    for (std::unique_ptr<Thread> const& thread : mThreads) {
        thread->Join();
    }
    mJoined = true;
}

template <class Operation>
void ThreadedWorkQueue::WithGate(Operation inOperation) {
    ThreadSafeSharedPtr<ThreadSafeDelayQueue>::Reader queue(mQueue, true);
    if (queue.Get() != nullptr) {
        inOperation(*mGate);
    }
}

}  // namespace

boost::shared_ptr<AsyncThreadedExecutor> CreateAsyncThreadedExecutor(std::string const& inName, int inThreadCount,
                                                                     ThreadPriority inPriority) {
    int const count = inThreadCount == -1 ? platform::ProcessorCount() : inThreadCount;
    return boost::make_shared<ThreadedWorkQueue>(inName, count, inPriority);
}

}  // namespace threads
}  // namespace quorel
