// Adapting a thread's event loop as an executor: immediate calls wait in a
// queue and are fetched by wake-up messages to a window of the adapted thread;
// delayed calls, and immediate calls from the adapted thread itself, go
// through the shared timer thread.
#include "AllocatedFunction.h"
#include "MessageTarget.h"
#include "ThreadSafeQueue.h"
#include "ThreadSafeSharedPtr.h"

#include <quorel/threads/AsyncEventLoopExecutor.h>
#include <quorel/threads/ThreadID.h>

#include <boost/bind/bind.hpp>
#include <boost/core/noncopyable.hpp>
#include <boost/make_shared.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/weak_ptr.hpp>

#include <exception>

namespace quorel {
namespace threads {

AsyncEventLoopAdaptor::~AsyncEventLoopAdaptor() = default;

namespace {

/// The one-worker pool that supplies delays to every adaptor.  It exists
/// exactly as long as an adaptor holds it; the next adaptor after the last
/// one went makes a new one.
boost::shared_ptr<AsyncThreadedExecutor> GetSharedTimerExecutor() {
    struct Shared {
        boost::mutex mutex;
        boost::weak_ptr<AsyncThreadedExecutor> timer;
    };
    static Shared* const shared = new Shared();  // never destroyed: adaptors may end after static destruction
    boost::mutex::scoped_lock lock(shared->mutex);
    boost::shared_ptr<AsyncThreadedExecutor> timer = shared->timer.lock();
    if (!timer) {
        timer = CreateAsyncThreadedExecutor("SharedTimerThread", 1, kThreadPriority_Normal);
        shared->timer = timer;
    }
    return timer;
}

/// Calls an entry that arrived at its window, swallowing what it throws.
void DeliverEntry(void* inPayload) {
    AllocatedFunctionHolder entry(static_cast<AllocatedFunction*>(inPayload));
    if (entry.Get() != nullptr && !entry.Get()->IsEmpty()) {
        try {
            entry.Get()->Call();
        } catch (std::exception const&) {
        } catch (...) {
        }
    }
}

void DropEntry(void* inPayload) { AllocatedFunction::Destroy(static_cast<AllocatedFunction*>(inPayload)); }

/// An entry on its way through the timer to a window.  Whatever does not
/// reach the window (the window has gone, or the timer was ended first) is
/// destroyed with the last copy of the delivery function.
struct PendingEntry {
    explicit PendingEntry(AllocatedFunction* inEntry) : entry(inEntry) {}
    ~PendingEntry() { AllocatedFunction::Destroy(entry); }
    AllocatedFunction* entry;
};

struct DeliverLater {
    boost::shared_ptr<platform::MessageWindow> window;
    boost::shared_ptr<PendingEntry> pending;

    void operator()() const {
        if (platform::SendNotifyMessage(*window, pending->entry)) {
            pending->entry = nullptr;
        }
    }
};

/// Reaches the hidden window of the adapted thread.
class WindowPoster {
public:
    WindowPoster()
        : mTimer(GetSharedTimerExecutor()),
          mWindow(platform::CreateMessageWindow(&DeliverEntry, &DropEntry)),
          mWindowThreadID(GetCurrentThreadID()) {}

    /// Ends the window (on its own thread); entries that wait for it are dropped.
    void DestroyWindow() noexcept { platform::DestroyMessageWindow(*mWindow); }
    void ReleaseTimer() noexcept { mTimer.reset(); }

    /// Sends inEntry to the window, after inDelayMilliseconds.  True when the
    /// entry has gone; on false the caller keeps it.  Only a call from another
    /// thread without delay is sent directly: the adapted thread's own calls
    /// take the timer's way too, so that none runs inside CallAsync.
    bool Post(AllocatedFunction* inEntry, std::uint32_t inDelayMilliseconds) {
        if (inDelayMilliseconds == 0 && GetCurrentThreadID() != mWindowThreadID) {
            return platform::SendNotifyMessage(*mWindow, inEntry);
        }
        DeliverLater const delivery = {mWindow, boost::make_shared<PendingEntry>(inEntry)};
        bool taken = false;
        try {
            taken = mTimer->CallAsync(delivery, inDelayMilliseconds);
        } catch (...) {
            delivery.pending->entry = nullptr;
            throw;
        }
        if (!taken) {
            delivery.pending->entry = nullptr;
        }
        return taken;
    }

private:
    boost::shared_ptr<AsyncThreadedExecutor> mTimer;
    boost::shared_ptr<platform::MessageWindow> const mWindow;
    std::uint32_t const mWindowThreadID;
};

class EventLoopAdaptor : public AsyncEventLoopAdaptor, private boost::noncopyable {
public:
    EventLoopAdaptor()
        : mThreadID(GetCurrentThreadID()), mQueue(boost::make_shared<ThreadSafeQueue<AllocatedFunction>>()) {}

    ~EventLoopAdaptor() override {
        mPoster.DestroyWindow();
        mPoster.ReleaseTimer();
        mQueue.MoveOut();
    }

    bool CallAsync(boost::function0<void> const& inFunction, std::uint32_t inDelayMilliseconds) override;
    bool IsCurrentThreadExecutorThread() override { return GetCurrentThreadID() == mThreadID; }
    std::int32_t GetThreadCount() override { return 1; }
    void ProcessPendingCalls() override {
        while (ProcessOneCall(true)) {
        }
    }

private:
    /// Runs the next immediate call, if there is one; with no lock held, so
    /// that it may end the executor.  An exception passes on.
    bool ProcessOneCall(bool inDraining);

    std::uint32_t const mThreadID;
    ThreadSafeSharedPtr<ThreadSafeQueue<AllocatedFunction>> mQueue;
    WindowPoster mPoster;
};

bool EventLoopAdaptor::CallAsync(boost::function0<void> const& inFunction, std::uint32_t inDelayMilliseconds) {
    AllocatedFunctionHolder entry(AllocatedFunction::Create(inFunction));
    if (inDelayMilliseconds != 0) {
        bool const posted = mPoster.Post(entry.Get(), inDelayMilliseconds);
        if (posted) {
            entry.Release();
        }
        return posted;
    }
    // Made before the call goes in, so that a call in the queue always has
    // its wake-up on the way.
    AllocatedFunctionHolder wakeUp(
        AllocatedFunction::Create(boost::bind(&EventLoopAdaptor::ProcessOneCall, this, false)));
    ThreadSafeSharedPtr<ThreadSafeQueue<AllocatedFunction>>::Reader queue(mQueue, false);
    if (queue.Get() == nullptr || !queue.Get()->Push(entry.Get())) {
        return false;
    }
    entry.Release();
    bool const posted = mPoster.Post(wakeUp.Get(), 0);
    if (posted) {
        wakeUp.Release();
    }
    return posted;
}

bool EventLoopAdaptor::ProcessOneCall(bool /*inDraining*/) {
    AllocatedFunctionHolder entry;
    bool got = false;
    {
        ThreadSafeSharedPtr<ThreadSafeQueue<AllocatedFunction>>::Reader queue(mQueue, false);
        if (queue.Get() != nullptr) {
            got = queue.Get()->TryPop(entry.Slot());
        }
    }
    if (got && entry.Get() != nullptr && !entry.Get()->IsEmpty()) {
        entry.Get()->Call();
    }
    return got;
}

}  // namespace

boost::shared_ptr<AsyncEventLoopAdaptor> AdaptCurrentEventLoopAsExecutor() {
    return boost::make_shared<EventLoopAdaptor>();
}

}  // namespace threads
}  // namespace quorel
