// A barrier shared by value.
#ifndef QUOREL_THREADS_SYNCPOINT_H
#define QUOREL_THREADS_SYNCPOINT_H

#include <quorel/threads/Barrier.h>
#include <quorel/utility/Export.h>

#include <boost/shared_ptr.hpp>

#include <string>

namespace quorel {
namespace threads {

/// A handle on a shared Barrier.  Copies and assignments share one barrier,
/// which the last handle destroys, so each thread can hold its own copy:
///
///     SyncPoint ready(3);
///     Thread worker("Worker", boost::bind(&Run, ready));   // a copy per worker
///
/// A SyncPoint is a value: one object belongs to one thread at a time, while
/// any number of copies may be used and destroyed on different threads at once.
class QRL_EXPORT SyncPoint {
public:
    /// A new barrier for inCount threads, unnamed or named.  A count of 0 throws
    /// std::invalid_argument with the text "count cannot be zero.".
    explicit SyncPoint(unsigned int inCount);
    SyncPoint(std::string const& inName, unsigned int inCount);

    SyncPoint(SyncPoint const& inOther) = default;
    SyncPoint& operator=(SyncPoint const& inOther) = default;
    virtual ~SyncPoint();

    /// Barrier::Wait on the shared barrier.  Keeps the barrier alive while it
    /// blocks, so the other copies may be destroyed meanwhile.
    bool Wait();

private:
    boost::shared_ptr<Barrier> mBarrier;
};

}  // namespace threads
}  // namespace quorel

#endif
