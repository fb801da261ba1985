// What a thread started by Thread or ThreadGroup runs.
#ifndef QUOREL_THREADS_SRC_THREADBODY_H
#define QUOREL_THREADS_SRC_THREADBODY_H

#include <boost/function.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/thread/condition_variable.hpp>
#include <boost/thread/locks.hpp>
#include <boost/thread/mutex.hpp>

#include <string>
#include <utility>

namespace quorel {
namespace threads {
namespace detail {

/// Lets the creator of a thread wait until the thread runs.  Shared between
/// the two, so that neither depends on how long the other keeps it.
class StartSignal {
public:
    /// Called by the new thread.
    void SetRunning() {
        boost::lock_guard<boost::mutex> lock(mMutex);
        mRunning = true;
        mStarted.notify_all();
    }

    /// Called by the creator.
    void WaitUntilRunning() {
        boost::unique_lock<boost::mutex> lock(mMutex);
        while (!mRunning) {
            mStarted.wait(lock);
        }
    }

private:
    boost::mutex mMutex;
    boost::condition_variable mStarted;
    bool mRunning = false;
};

/// The body of a thread: its own copies of the thread's name and function, and
/// optionally the signal to raise before the function runs.  The name is kept
/// with the running thread so that a debugger or core dump shows it.
class ThreadBody {
public:
    ThreadBody(std::string inName, boost::function0<void> inFunction, boost::shared_ptr<StartSignal> inSignal)
        : mName(std::move(inName)), mFunction(std::move(inFunction)), mSignal(std::move(inSignal)) {}

    void operator()() {
        if (mSignal) {
            mSignal->SetRunning();
            mSignal.reset();
        }
        if (!mFunction.empty()) {
            mFunction();
        }
    }

private:
    std::string mName;
    boost::function0<void> mFunction;
    boost::shared_ptr<StartSignal> mSignal;
};

}  // namespace detail
}  // namespace threads
}  // namespace quorel

#endif
