// The size-class pools behind the small-block allocator's entry points.
#ifndef QUOREL_UTILITY_ALLOCATORINTERFACE_H
#define QUOREL_UTILITY_ALLOCATORINTERFACE_H

#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace utility {

/// A snapshot of one pool, for diagnostics and tests.  The counters may be in
/// transition while other threads allocate from the pool.
struct PoolStatistics {
    unsigned int mBlockSize = 0;
    unsigned int mChunkCount = 0;
    unsigned int mTotalBytes = 0;  ///< sum of the sizes of the pool's chunks
    std::int32_t mFreeBlocks = 0;  ///< free blocks over all chunks
    bool mKeepsLastChunk = false;
};

/// One pool of fixed-size blocks.  Pools are built when the allocator starts
/// and live for the rest of the process.  All operations are free-threaded.
class QRL_EXPORT AllocatorInterface {
public:
    /// A block of BlockSize() bytes; inSize must not exceed BlockSize() (an
    /// input contract).  Throws std::bad_alloc ("bad allocation") when no new
    /// chunk can be had; the pool stays usable.
    virtual void* Allocate(unsigned int inSize) = 0;
    /// Gives a block back; false (and nothing done) if it is not this pool's.
    virtual bool Dispose(void* inBlock, unsigned int inSize) = 0;
    /// The pool's block size.
    virtual unsigned int BlockSize() const = 0;
    /// Reads the pool's counters under its mutex.
    virtual PoolStatistics GetStatistics() = 0;

protected:
    ~AllocatorInterface() = default;
};

namespace SmallBlockAllocator {

/// The pool that serves requests of inSize bytes, as Allocate selects it
/// (4128 and 66080 bytes have pools of their own), or null for sizes that go
/// to the aligned allocation.  Starts the allocator if it isn't running yet;
/// null while it is starting.
QRL_EXPORT AllocatorInterface* GetPool(unsigned int inSize);

}  // namespace SmallBlockAllocator
}  // namespace utility
}  // namespace quorel

#endif
