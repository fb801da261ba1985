#include <quorel/threads/Thread.h>

#include <quorel/threads/ThreadErrors.h>
#include <quorel/threads/ThreadTraceScope.h>

#include "ThreadBody.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <cstdint>
#include <utility>

namespace quorel {
namespace threads {

namespace {

constexpr char kClass[] = "Thread";
constexpr char kStaticMethod[] = "Static method";
constexpr std::int64_t kNanosecondsPerSecond = 1000000000;

boost::thread::id IdentityOf(boost::thread const* inThread) noexcept {
    return inThread != nullptr ? inThread->get_id() : boost::thread::id();
}

/// inTime with its nanoseconds within 0..999999999.
boost::xtime Normalised(boost::xtime const& inTime) {
    boost::xtime time = inTime;
    std::int64_t nanoseconds = time.nsec;
    std::int64_t carry = nanoseconds / kNanosecondsPerSecond;
    nanoseconds -= carry * kNanosecondsPerSecond;
    if (nanoseconds < 0) {
        nanoseconds += kNanosecondsPerSecond;
        --carry;
    }
    time.sec += carry;
    time.nsec = static_cast<boost::xtime::xtime_nsec_t>(nanoseconds);
    return time;
}

}  // namespace

Thread::Thread(std::string const& inName) : mName(inName) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Default Constructor", false);
    mID = CallTranslatingThreadErrors([] { return boost::this_thread::get_id(); });
}

Thread::Thread(std::string const& inName, boost::function0<void> const& inFunction) : mName(inName) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Function Constructor", false);
    CallTranslatingThreadErrors([&] {
        auto const signal = boost::make_shared<detail::StartSignal>();
        mThread = boost::make_shared<boost::thread>(detail::ThreadBody(inName, inFunction, signal));
        mID = mThread->get_id();
        signal->WaitUntilRunning();
    });
}

Thread::Thread(std::string const& inName, boost::thread* inThread)
    : mName(inName), mThread(inThread), mID(IdentityOf(inThread)) {}

Thread::Thread(std::string const& inName, boost::shared_ptr<boost::thread> const& inThread)
    : mName(inName), mThread(inThread), mID(IdentityOf(inThread.get())) {}

Thread::Thread(Thread& inOther) noexcept
    : mName(inOther.mName), mThread(std::move(inOther.mThread)), mID(std::exchange(inOther.mID, boost::thread::id())) {}

Thread::Thread(Thread&& inOther) noexcept : Thread(inOther) {}

Thread& Thread::operator=(Thread& inOther) noexcept {
    if (this != &inOther) {
        mName = inOther.mName;
        mThread = std::move(inOther.mThread);
        mID = std::exchange(inOther.mID, boost::thread::id());
    }
    return *this;
}

Thread& Thread::operator=(Thread&& inOther) noexcept { return *this = inOther; }

Thread::~Thread() = default;

void Thread::Join() {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Join", false);
    if (!mThread) {
        return;
    }
    CallTranslatingThreadErrors([&] {
        if (mThread->joinable()) {
            mThread->join();
        }
    });
}

void Thread::Sleep(boost::xtime const& inUntil) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, kStaticMethod, kClass, "Sleep", false);
    boost::xtime const until = Normalised(inUntil);
    // Boost sleeps to microseconds: round the deadline up so that the thread
    // never wakes before it, and sleep again after an early wake.
    boost::posix_time::ptime const deadline = boost::posix_time::from_time_t(0) +
                                              boost::posix_time::seconds(static_cast<long>(until.sec)) +
                                              boost::posix_time::microseconds((until.nsec + 999) / 1000);
    CallTranslatingThreadErrors([&] {
        for (;;) {
            boost::xtime now;
            boost::xtime_get(&now, boost::TIME_UTC_);
            if (now.sec > until.sec || (now.sec == until.sec && now.nsec >= until.nsec)) {
                return;
            }
            boost::this_thread::sleep(deadline);
        }
    });
}

void Thread::YieldTime() {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, kStaticMethod, kClass, "Yield", false);
    CallTranslatingThreadErrors([] { boost::this_thread::yield(); });
}

bool Thread::operator==(Thread const& inOther) const {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "operator==", false);
    return CallTranslatingThreadErrors([&] { return mID == inOther.mID; });
}

bool Thread::operator!=(Thread const& inOther) const {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "operator!=", false);
    return CallTranslatingThreadErrors([&] { return mID != inOther.mID; });
}

}  // namespace threads
}  // namespace quorel
