#include "Gate.h"

#include "PointerQueue.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace quorel {
namespace threads {

Gate::Gate(bool inOpen) : mOpen(inOpen ? 1 : 0), mGeneration(0), mWaiters(0) {}

Gate::~Gate() { Open(); }

void Gate::Open() {
    std::int32_t closed = 0;
    if (!mOpen.compare_exchange_strong(closed, 1)) {
        return;
    }
    boost::mutex::scoped_lock lock(mMutex);
    if (mWaiters > 0) {
        ++mGeneration;
        mCondition.notify_all();
    }
}

bool Gate::Wait(std::uint32_t inTimeoutMilliseconds) {
    if (mOpen.load() != 0) {
        return true;
    }
    if (inTimeoutMilliseconds == 0) {
        return false;
    }
    boost::mutex::scoped_lock lock(mMutex);
    if (mOpen.load() != 0) {
        return true;
    }
    ++mWaiters;
    std::int32_t const generation = mGeneration;
    bool timedOut = false;
    while (mGeneration == generation && !timedOut) {
        if (inTimeoutMilliseconds == platform::kWaitForever) {
            mCondition.wait(lock);
        } else {
            timedOut = !mCondition.timed_wait(lock, boost::posix_time::milliseconds(inTimeoutMilliseconds));
        }
    }
    --mWaiters;
    return mGeneration != generation;
}

}  // namespace threads
}  // namespace quorel
