// Per-thread message queues on Linux.  Each thread that has a message window
// gets a queue: a list of messages under a mutex.  The library's own loop
// waits for it on a condition variable, after spinning for a moment.  Once a
// host asks for the thread's descriptor, an eventfd that is readable exactly
// while the list is not empty lets any event loop (GLib, Qt, libuv, epoll)
// wait for it too.
#include "../MessageTarget.h"

#include <quorel/threads/ThreadID.h>
#include <quorel/threads/ThreadMessages.h>

#include "../CpuRelax.h"

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <new>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>
#include <unordered_map>

namespace quorel {
namespace threads {
namespace platform {

namespace {

class ThreadMessageQueue;

}  // namespace

class MessageWindow {
public:
    MessageWindow(boost::shared_ptr<ThreadMessageQueue> const& inQueue, MessageProcedure inDeliver,
                  MessageProcedure inDrop)
        : mQueue(inQueue), mDeliver(inDeliver), mDrop(inDrop) {}

    boost::shared_ptr<ThreadMessageQueue> const mQueue;
    MessageProcedure const mDeliver;
    MessageProcedure const mDrop;
    bool mAlive = true;  // guarded by the queue's mutex
};

namespace {

/// A message: a payload for a window, or (window null) a quit message.
struct Message {
    MessageWindow* window;
    void* payload;
};

class ThreadMessageQueue {
public:
    explicit ThreadMessageQueue(std::uint32_t inThreadID) : mThreadID(inThreadID) {}
    ~ThreadMessageQueue() {
        if (mEventDescriptor >= 0) ::close(mEventDescriptor);
    }
    ThreadMessageQueue(ThreadMessageQueue const&) = delete;
    ThreadMessageQueue& operator=(ThreadMessageQueue const&) = delete;

    /// The eventfd, made on first use and signalled if messages wait already.
    int Descriptor();
    std::uint32_t ThreadID() const noexcept { return mThreadID; }

    /// Appends a message; for a window, only while it lives.
    bool Append(Message const& inMessage) noexcept;
    /// Takes the oldest message; false when there is none.
    bool Take(Message& outMessage) noexcept;
    /// Marks inWindow dead and hands its waiting payloads to its drop procedure.
    void Forget(MessageWindow& inWindow) noexcept;
    std::size_t Count() const noexcept { return mCount.load(std::memory_order_relaxed); }
    /// Waits until a message is there.
    void WaitForMessage() noexcept;

private:
    /// Sets or clears the eventfd's signal, if there is one; mMutex is held.
    void SetSignalled(bool inSignalled) noexcept;
    void Counted() noexcept { mCount.store(mMessages.size(), std::memory_order_relaxed); }

    std::uint32_t const mThreadID;
    std::mutex mMutex;
    std::condition_variable mWake;
    std::deque<Message> mMessages;
    std::atomic<std::size_t> mCount{0};  // mMessages.size(), readable without the mutex
    int mEventDescriptor = -1;           // under mMutex
    bool mSleeping = false;              // the thread waits on mWake; under mMutex
};

/// How often the library's loop looks at an empty queue before it sleeps.
constexpr int kSpinRounds = 200;

int ThreadMessageQueue::Descriptor() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mEventDescriptor < 0) {
        mEventDescriptor = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
        if (mEventDescriptor < 0) {
            throw std::system_error(errno, std::generic_category(), "eventfd");
        }
        SetSignalled(!mMessages.empty());
    }
    return mEventDescriptor;
}

void ThreadMessageQueue::SetSignalled(bool inSignalled) noexcept {
    if (mEventDescriptor < 0) return;
    std::uint64_t value = 1;
    ssize_t result;
    do {
        result = inSignalled ? ::write(mEventDescriptor, &value, sizeof value)
                             : ::read(mEventDescriptor, &value, sizeof value);
    } while (result < 0 && errno == EINTR);
}

bool ThreadMessageQueue::Append(Message const& inMessage) noexcept {
    std::lock_guard<std::mutex> lock(mMutex);
    if (inMessage.window != nullptr && !inMessage.window->mAlive) {
        return false;
    }
    try {
        mMessages.push_back(inMessage);
    } catch (std::bad_alloc const&) {
        return false;
    }
    Counted();
    if (mMessages.size() == 1) {
        SetSignalled(true);
        if (mSleeping) mWake.notify_one();
    }
    return true;
}

bool ThreadMessageQueue::Take(Message& outMessage) noexcept {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mMessages.empty()) {
        return false;
    }
    outMessage = mMessages.front();
    mMessages.pop_front();
    Counted();
    if (mMessages.empty()) {
        SetSignalled(false);
    }
    return true;
}

void ThreadMessageQueue::Forget(MessageWindow& inWindow) noexcept {
    std::deque<Message> dropped;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        inWindow.mAlive = false;
        std::deque<Message> kept;
        for (Message const& message : mMessages) {
            (message.window == &inWindow ? dropped : kept).push_back(message);
        }
        mMessages.swap(kept);
        Counted();
        if (mMessages.empty() && !dropped.empty()) {
            SetSignalled(false);
        }
    }
    for (Message const& message : dropped) {
        inWindow.mDrop(message.payload);
    }
}

void ThreadMessageQueue::WaitForMessage() noexcept {
    for (int round = 0; round < kSpinRounds && Count() == 0; ++round) {
        CpuRelax();
    }
    std::unique_lock<std::mutex> lock(mMutex);
    if (mEventDescriptor >= 0) {
        // A host loop watches the descriptor; wait the same way.
        lock.unlock();
        pollfd descriptor = {mEventDescriptor, POLLIN, 0};
        while (Count() == 0 && ::poll(&descriptor, 1, -1) < 0 && errno == EINTR) {
        }
        return;
    }
    mSleeping = true;
    mWake.wait(lock, [this] { return !mMessages.empty(); });
    mSleeping = false;
}

/// The queues of living threads by thread identifier, for PostQuitMessage.
struct QueueRegistry {
    std::mutex mutex;
    std::unordered_map<std::uint32_t, boost::weak_ptr<ThreadMessageQueue>> queues;
};

QueueRegistry& Registry() {
    static QueueRegistry* const registry = new QueueRegistry();  // outlives every thread's queue
    return *registry;
}

/// Removes the thread's entry from the registry when the thread ends.
struct CurrentQueueHolder {
    boost::shared_ptr<ThreadMessageQueue> queue;
    ~CurrentQueueHolder() {
        if (queue) {
            QueueRegistry& registry = Registry();
            std::lock_guard<std::mutex> lock(registry.mutex);
            auto const found = registry.queues.find(queue->ThreadID());
            if (found != registry.queues.end() && found->second.lock() == queue) {
                registry.queues.erase(found);
            }
        }
    }
};

thread_local CurrentQueueHolder tCurrentQueue;

ThreadMessageQueue& CurrentQueue() {
    if (!tCurrentQueue.queue) {
        std::uint32_t const threadID = GetCurrentThreadID();
        boost::shared_ptr<ThreadMessageQueue> queue = boost::make_shared<ThreadMessageQueue>(threadID);
        QueueRegistry& registry = Registry();
        std::lock_guard<std::mutex> lock(registry.mutex);
        registry.queues[threadID] = queue;
        tCurrentQueue.queue = queue;
    }
    return *tCurrentQueue.queue;
}

/// Delivers inMessage; false for a quit message.
bool Deliver(Message const& inMessage) {
    if (inMessage.window == nullptr) {
        return false;
    }
    inMessage.window->mDeliver(inMessage.payload);
    return true;
}

}  // namespace

boost::shared_ptr<MessageWindow> CreateMessageWindow(MessageProcedure inDeliver, MessageProcedure inDrop) {
    CurrentQueue();
    return boost::make_shared<MessageWindow>(tCurrentQueue.queue, inDeliver, inDrop);
}

void DestroyMessageWindow(MessageWindow& inWindow) noexcept { inWindow.mQueue->Forget(inWindow); }

bool SendNotifyMessage(MessageWindow& inWindow, void* inPayload) noexcept {
    return inWindow.mQueue->Append(Message{&inWindow, inPayload});
}

bool GetAndDispatchMessage() {
    ThreadMessageQueue& queue = CurrentQueue();
    Message message;
    while (!queue.Take(message)) {
        queue.WaitForMessage();
    }
    return Deliver(message);
}

bool PostQuitMessage(std::uint32_t inThreadID) noexcept {
    boost::shared_ptr<ThreadMessageQueue> queue;
    {
        QueueRegistry& registry = Registry();
        std::lock_guard<std::mutex> lock(registry.mutex);
        auto const found = registry.queues.find(inThreadID);
        if (found != registry.queues.end()) {
            queue = found->second.lock();
        }
    }
    return queue && queue->Append(Message{nullptr, nullptr});
}

}  // namespace platform

int GetCurrentThreadMessageDescriptor() { return platform::CurrentQueue().Descriptor(); }

std::size_t DispatchCurrentThreadMessages() {
    platform::ThreadMessageQueue& queue = platform::CurrentQueue();
    std::size_t delivered = 0;
    // Quit messages belong to the library's own loops; a host's loop skips them.
    for (std::size_t waiting = queue.Count(); waiting > 0; --waiting) {
        platform::Message message;
        if (!queue.Take(message)) {
            break;
        }
        delivered += platform::Deliver(message) ? 1 : 0;
    }
    return delivered;
}

}  // namespace threads
}  // namespace quorel
