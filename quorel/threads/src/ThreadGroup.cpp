#include <quorel/threads/ThreadGroup.h>

#include <quorel/debug/Debug.h>
#include <quorel/threads/ThreadErrors.h>
#include <quorel/threads/ThreadTraceScope.h>

#include "ThreadBody.h"

#include <boost/make_shared.hpp>
#include <boost/system/error_code.hpp>
#include <boost/thread/exceptions.hpp>
#include <boost/thread/locks.hpp>
#include <boost/thread/mutex.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace quorel {
namespace threads {

namespace {

constexpr char kClass[] = "ThreadGroup";

using ThreadPointer = boost::shared_ptr<boost::thread>;

}  // namespace

/// The threads of a group, in the order in which they came in.  The list
/// mutex guards the vector and is held only briefly; joining works on a copy
/// of the list, under a second mutex that lets one JoinAll run at a time (two
/// joins of one boost::thread at once would race inside Boost).
class ThreadGroup::ThreadList {
public:
    ThreadPointer Create(std::string const& inName, boost::function0<void> const& inFunction) {
        boost::lock_guard<boost::mutex> lock(mListMutex);
        // Room first, so that a started thread always gets into the list.
        mThreads.reserve(mThreads.size() + 1);
        auto thread = boost::make_shared<boost::thread>(detail::ThreadBody(inName, inFunction, nullptr));
        mThreads.push_back(thread);
        return thread;
    }

    void Add(ThreadPointer const& inThread) {
        boost::lock_guard<boost::mutex> lock(mListMutex);
        if (std::find(mThreads.begin(), mThreads.end(), inThread) == mThreads.end()) {
            mThreads.push_back(inThread);
        }
    }

    void Remove(ThreadPointer const& inThread) {
        boost::lock_guard<boost::mutex> lock(mListMutex);
        auto const found = std::find(mThreads.begin(), mThreads.end(), inThread);
        if (found != mThreads.end()) {
            mThreads.erase(found);
        }
    }

    void JoinAll() {
        std::vector<ThreadPointer> threads;
        {
            boost::lock_guard<boost::mutex> lock(mListMutex);
            threads = mThreads;
        }
        boost::thread::id const self = boost::this_thread::get_id();
        for (ThreadPointer const& thread : threads) {
            if (thread->get_id() == self) {
                throw boost::thread_resource_error(
                    static_cast<int>(boost::system::errc::resource_deadlock_would_occur),
                    "quorel::threads::ThreadGroup: a thread of the group cannot join the group");
            }
        }
        boost::lock_guard<boost::mutex> joinLock(mJoinMutex);
        for (ThreadPointer const& thread : threads) {
            if (thread->joinable()) {
                thread->join();
            }
        }
    }

    std::size_t Size() const {
        boost::lock_guard<boost::mutex> lock(mListMutex);
        return mThreads.size();
    }

private:
    mutable boost::mutex mListMutex;
    std::vector<ThreadPointer> mThreads;
    boost::mutex mJoinMutex;
};

ThreadGroup::ThreadGroup(std::string const& inName) : mCreatedCount(0), mName(inName) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Default Constructor", false);
    mThreads = CallTranslatingThreadErrors([] { return std::make_unique<ThreadList>(); });
}

ThreadGroup::ThreadGroup(ThreadGroup& inOther) noexcept
    : mCreatedCount(inOther.mCreatedCount.load()), mName(inOther.mName), mThreads(std::move(inOther.mThreads)) {}

ThreadGroup::ThreadGroup(ThreadGroup&& inOther) noexcept : ThreadGroup(inOther) {}

ThreadGroup& ThreadGroup::operator=(ThreadGroup& inOther) noexcept {
    if (this != &inOther) {
        mCreatedCount.store(inOther.mCreatedCount.load());
        mName = inOther.mName;
        mThreads = std::move(inOther.mThreads);
    }
    return *this;
}

ThreadGroup& ThreadGroup::operator=(ThreadGroup&& inOther) noexcept { return *this = inOther; }

ThreadGroup::~ThreadGroup() = default;

Thread* ThreadGroup::CreateThread(boost::function0<void> const& inFunction) {
    QRL_INPUT_CONTRACT(mThreads != nullptr);
    if (!mThreads) {
        return nullptr;
    }
    ThreadPointer thread;
    {
        ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "CreateThread", false);
        thread = CallTranslatingThreadErrors([&] { return mThreads->Create(mName, inFunction); });
    }
    std::int32_t const number = mCreatedCount.fetch_add(1) + 1;
    return new Thread(mName + " created thread #" + std::to_string(number), thread);
}

void ThreadGroup::AddThread(Thread* inThread) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "AddThread", false);
    QRL_INPUT_CONTRACT(mThreads != nullptr);
    if (!mThreads || inThread == nullptr || !inThread->mThread) {
        return;
    }
    CallTranslatingThreadErrors([&] { mThreads->Add(inThread->mThread); });
}

void ThreadGroup::RemoveThread(Thread* inThread) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "RemoveThread", false);
    QRL_INPUT_CONTRACT(mThreads != nullptr);
    if (!mThreads || inThread == nullptr || !inThread->mThread) {
        return;
    }
    CallTranslatingThreadErrors([&] { mThreads->Remove(inThread->mThread); });
}

void ThreadGroup::JoinAll() {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "JoinAll", false);
    QRL_INPUT_CONTRACT(mThreads != nullptr);
    if (!mThreads) {
        return;
    }
    CallTranslatingThreadErrors([&] { mThreads->JoinAll(); });
}

std::int32_t ThreadGroup::Size() const {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Size", false);
    QRL_INPUT_CONTRACT(mThreads != nullptr);
    if (!mThreads) {
        return 0;
    }
    return CallTranslatingThreadErrors([&] { return static_cast<std::int32_t>(mThreads->Size()); });
}

}  // namespace threads
}  // namespace quorel
