// A gate that threads wait at until it opens: the executors' pause and
// start-up signal.
#ifndef QUOREL_THREADS_SRC_GATE_H
#define QUOREL_THREADS_SRC_GATE_H

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>

#include <atomic>
#include <cstdint>

namespace quorel {
namespace threads {

/// Open or closed.  Waiters look at a generation count, not at the open flag:
/// a gate that was opened and at once closed again has still let its waiters
/// go.  Open on an open gate and Wait on an open gate take no lock.
class Gate {
public:
    explicit Gate(bool inOpen);
    /// Opens the gate, so that no waiter stays behind.  Like any object, the
    /// gate must outlive the calls made on it: share it (boost::shared_ptr)
    /// with threads that may still be inside Open or Wait.
    ~Gate();
    Gate(Gate const&) = delete;
    Gate& operator=(Gate const&) = delete;

    /// Opens the gate and lets every waiter go.
    void Open();
    /// Closes the gate; nothing else.
    void Close() noexcept { mOpen.exchange(0); }
    /// Waits until the gate is opened: 0 does not wait, 0xFFFFFFFF waits
    /// without limit.  True if the gate is or was opened, false on time-out.
    bool Wait(std::uint32_t inTimeoutMilliseconds);

private:
    std::atomic<std::int32_t> mOpen;
    boost::mutex mMutex;
    boost::condition_variable mCondition;
    std::int32_t mGeneration;  // guarded by mMutex
    std::int32_t mWaiters;     // guarded by mMutex
};

}  // namespace threads
}  // namespace quorel

#endif
