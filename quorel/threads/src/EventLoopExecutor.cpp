// An event-loop executor with a thread and a loop of its own.
#include "Gate.h"
#include "MessageTarget.h"
#include "PointerQueue.h"
#include "ThreadSafeSharedPtr.h"

#include <quorel/threads/AsyncEventLoopExecutor.h>
#include <quorel/threads/Thread.h>
#include <quorel/threads/ThreadID.h>

#include <boost/bind/bind.hpp>
#include <boost/core/noncopyable.hpp>
#include <boost/make_shared.hpp>
#include <boost/thread/mutex.hpp>

namespace quorel {
namespace threads {

AsyncEventLoopExecutor::~AsyncEventLoopExecutor() = default;

namespace {

/// The identity of the thread that pumps.
struct MessageLoop {
    std::uint32_t threadID;
};

/// What the executor and its loop thread share.  The thread holds its own
/// reference, so that the executor may go while the thread runs out.
struct LoopState {
    Gate started{false};                                // opens when the thread has its adaptor
    ThreadSafeSharedPtr<AsyncEventLoopAdaptor> adaptor;  // null until started, and from Terminate on
    boost::shared_ptr<MessageLoop> messageLoop;          // set before started opens, then read-only
};

class EventLoopExecutor : public AsyncEventLoopExecutor, private boost::noncopyable {
public:
    explicit EventLoopExecutor(std::string const& inName)
        : mState(boost::make_shared<LoopState>()), mThread(inName, boost::bind(&RunLoop, mState)) {}

    ~EventLoopExecutor() override { EventLoopExecutor::Terminate(); }

    bool CallAsync(boost::function0<void> const& inFunction, std::uint32_t inDelayMilliseconds) override {
        return Forward(false, [&](AsyncEventLoopAdaptor& inAdaptor) {
            return inAdaptor.CallAsync(inFunction, inDelayMilliseconds);
        });
    }
    bool IsCurrentThreadExecutorThread() override {
        return Forward(false, [](AsyncEventLoopAdaptor& inAdaptor) { return inAdaptor.IsCurrentThreadExecutorThread(); });
    }
    std::int32_t GetThreadCount() override { return 1; }
    void ProcessPendingCalls() override;
    void Terminate() override;
    bool IsTerminated() override {
        return Forward(true, [](AsyncEventLoopAdaptor&) { return false; });
    }
    void Join() override {
        boost::mutex::scoped_lock lock(mJoinMutex);
        mThread.Join();
    }

private:
    /// Takes its reference by value, so that it goes when the loop returns.
    static void RunLoop(boost::shared_ptr<LoopState> inState);

    /// Calls inCall on the adaptor under the read lock, once the thread has
    /// started; inIfEnded when the executor has ended.
    template <class Call>
    bool Forward(bool inIfEnded, Call inCall);

    boost::shared_ptr<LoopState> const mState;
    boost::mutex mJoinMutex;
    Thread mThread;
};

void EventLoopExecutor::RunLoop(boost::shared_ptr<LoopState> inState) {
    boost::shared_ptr<AsyncEventLoopAdaptor> adaptor;
    try {
        adaptor = AdaptCurrentEventLoopAsExecutor();
        inState->messageLoop = boost::make_shared<MessageLoop>(MessageLoop{GetCurrentThreadID()});
        inState->adaptor.Store(adaptor);
    } catch (...) {
        // Without resources for a loop the executor starts as ended.
        inState->started.Open();
        return;
    }
    inState->started.Open();
    while (platform::GetAndDispatchMessage()) {
    }
    // What was queued before the end still runs.  Unlike the loop, draining
    // lets exceptions out; this thread has nobody to pass them to, so it goes
    // on with the rest.
    for (;;) {
        try {
            adaptor->ProcessPendingCalls();
            break;
        } catch (...) {
        }
    }
}

template <class Call>
bool EventLoopExecutor::Forward(bool inIfEnded, Call inCall) {
    {
        ThreadSafeSharedPtr<AsyncEventLoopAdaptor>::Reader adaptor(mState->adaptor, false);
        if (adaptor.Get() != nullptr) {
            return inCall(*adaptor.Get());
        }
    }
    mState->started.Wait(platform::kWaitForever);
    ThreadSafeSharedPtr<AsyncEventLoopAdaptor>::Reader adaptor(mState->adaptor, false);
    return adaptor.Get() != nullptr ? inCall(*adaptor.Get()) : inIfEnded;
}

void EventLoopExecutor::ProcessPendingCalls() {
    // The calls run with no lock of the executor held, so that one of them
    // may terminate it.
    mState->started.Wait(platform::kWaitForever);
    boost::shared_ptr<AsyncEventLoopAdaptor> const adaptor =
        ThreadSafeSharedPtr<AsyncEventLoopAdaptor>::Reader(mState->adaptor, false).Copy();
    if (adaptor) {
        adaptor->ProcessPendingCalls();
    }
}

void EventLoopExecutor::Terminate() {
    mState->started.Wait(platform::kWaitForever);
    if (mState->adaptor.MoveOut()) {
        platform::PostQuitMessage(mState->messageLoop->threadID);
    }
}

}  // namespace

boost::shared_ptr<AsyncEventLoopExecutor> CreateAsyncEventLoopExecutor(std::string const& inName) {
    return boost::make_shared<EventLoopExecutor>(inName);
}

}  // namespace threads
}  // namespace quorel
