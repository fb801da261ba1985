// A named barrier: a meeting point for a fixed number of threads.
#ifndef QUOREL_THREADS_BARRIER_H
#define QUOREL_THREADS_BARRIER_H

#include <quorel/utility/Export.h>

#include <boost/thread/barrier.hpp>

#include <memory>
#include <string>

namespace quorel {
namespace threads {

/// Lets a fixed number of threads wait for each other.  Each Wait blocks until
/// the count of threads have arrived; then all go on together and the barrier
/// is ready for the next generation, so the same object serves round after
/// round.
///
/// The object owns its boost::barrier alone.  Copying transfers: the
/// constructor and assignment that take a non-const reference (and their move
/// forms) take the barrier over, copy the name, and leave the source empty; an
/// empty Barrier may only be destroyed or assigned to.  Do not transfer or
/// destroy a barrier while threads wait on it.  To share a barrier among
/// objects that may go away independently, use SyncPoint.
///
/// Safe for any number of threads.
class QRL_EXPORT Barrier {
public:
    /// A barrier for inCount threads, with an empty name.  A count of 0 throws
    /// std::invalid_argument with the text "count cannot be zero." and no
    /// object results.  Out of resources: error 20, then
    /// boost::thread_resource_error.
    explicit Barrier(unsigned int inCount);
    /// The same, named.
    Barrier(std::string const& inName, unsigned int inCount);

    /// Transfer: see above.
    Barrier(Barrier& inOther) noexcept;
    Barrier(Barrier&& inOther) noexcept;
    /// Transfer: destroys the barrier held so far (unless inOther is this
    /// object), then takes inOther's over.
    Barrier& operator=(Barrier& inOther) noexcept;
    Barrier& operator=(Barrier&& inOther) noexcept;

    virtual ~Barrier();

    /// Blocks until the count of threads have called Wait in this generation.
    /// Returns true for exactly one thread of each generation, the last to
    /// arrive, and false for the others.  On an emptied object: a contract
    /// violation, and false.
    bool Wait();

    std::string const& GetName() const noexcept { return mName; }

private:
    std::string mName;
    std::unique_ptr<boost::barrier> mBarrier;
};

}  // namespace threads
}  // namespace quorel

#endif
