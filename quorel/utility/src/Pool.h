// One size-class pool of the small-block allocator.
#ifndef QUOREL_UTILITY_SRC_POOL_H
#define QUOREL_UTILITY_SRC_POOL_H

#include <quorel/threads/ReaderWriterLock.h>
#include <quorel/utility/AllocatorInterface.h>

#include "ChunkFreeList.h"

#include <boost/thread/recursive_mutex.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#if defined(__GNUC__) || defined(__clang__)
#define QUOREL_POOL_INLINE inline __attribute__((always_inline))
#define QUOREL_POOL_COLD __attribute__((noinline, cold))
#define QUOREL_POOL_LIKELY(condition) __builtin_expect(!!(condition), 1)
#define QUOREL_POOL_UNLIKELY(condition) __builtin_expect(!!(condition), 0)
#else
#define QUOREL_POOL_INLINE inline
#define QUOREL_POOL_COLD
#define QUOREL_POOL_LIKELY(condition) (condition)
#define QUOREL_POOL_UNLIKELY(condition) (condition)
#endif

namespace quorel {
namespace utility {

/// A pool of blocks of one size, carved out of chunks.
///
/// Three levels work together.  The chunks' lock-free free lists take the
/// contention: the fast paths pop or push one block with no lock that blocks.
/// The state lock keeps chunks alive: a thread touches a chunk only while it
/// holds the read side, which it only tries to take, never waits for.  The
/// mutex orders every change of the chunk collections, which happens while
/// the published state is null, so that fast paths stay out meanwhile.
///
/// The fast paths (AllocateBlock, DisposeBlock) are inline, so that the
/// allocator's entry points reach them without a virtual call; whatever needs
/// the mutex is out of line.  Their whole cost is one try of the read lock,
/// one list operation, two counter updates and the release of the read lock:
/// five atomic read-modify-writes.
///
/// Data layout.  Every fast path writes the state lock's word and the free
/// block counter, and reads the published state, the current chunk and the
/// block size.  The words that are read stay together on the first cache line
/// and are written only by the slow path, so that they stay shared in every
/// core's cache; the state lock and the free block counter each have a cache
/// line of their own, so that writing one doesn't take the other away from a
/// core that is about to write it.  The mutex and the collections, which only
/// the slow path touches, come after them.
class alignas(64) Pool : public AllocatorInterface {
public:
    Pool(unsigned int inBlockSize, unsigned int inFirstChunkSize, unsigned int inSecondChunkSize,
         bool inKeepsLastChunk);

    void* Allocate(unsigned int inSize) override;
    bool Dispose(void* inBlock, unsigned int inSize) override;
    unsigned int BlockSize() const override { return mBlockSize; }
    PoolStatistics GetStatistics() override;

    /// Allocate and Dispose without the virtual call: the entry points' road.
    QUOREL_POOL_INLINE void* AllocateBlock(unsigned int inSize);
    QUOREL_POOL_INLINE bool DisposeBlock(void* inBlock, unsigned int inSize);
    unsigned int BlockBytes() const noexcept { return mBlockSize; }

private:
    enum ReleaseOutcome { kReleaseNotEntered, kReleaseNotMine, kReleased, kReleasedEmptiedChunk };

    QUOREL_POOL_INLINE void* TryFastAllocate();
    QUOREL_POOL_INLINE ReleaseOutcome TryFastRelease(void* inBlock);
    QUOREL_POOL_INLINE ReleaseOutcome ReleaseInto(ChunkHeader* inChunk, void* inBlock);
    QUOREL_POOL_INLINE ChunkHeader* FindChunk(void const* inBlock) const;
    QUOREL_POOL_INLINE void* PopCounted(ChunkHeader* inChunk);

    QUOREL_POOL_COLD void ReportOversizedRequest(unsigned int inSize);
    QUOREL_POOL_COLD void* AllocateSlow();
    QUOREL_POOL_COLD bool DisposeSlow(void* inBlock, ReleaseOutcome inOutcome);
    QUOREL_POOL_INLINE ReleaseOutcome ReleaseIntoEmptied() const;
    ChunkHeader* FindChunkByAddress(void const* inBlock) const;
    void* AllocateLocked();
    void SetPublished(bool inPublished);
    void SortByLoad();
    std::size_t ChunksToKeep() const { return mKeepsLastChunk ? 1 : 0; }
    unsigned int NextChunkSize() const;
    ChunkHeader* MakeChunk();
    void Reclaim();

    // Read by the fast paths, written only under the mutex (with the state
    // unpublished) or at construction.  The virtual table pointer is here too.
    unsigned int const mBlockSize;
    unsigned int const mFirstChunkSize;
    unsigned int const mSecondChunkSize;
    bool const mKeepsLastChunk;
    std::atomic<Pool*> mPublished;  // this pool while fast paths may enter; null while changing
    std::atomic<ChunkHeader*> mCurrentChunk;

    // Written by every fast path, one cache line each.
    alignas(64) threads::ReaderWriterLock mStateLock;
    alignas(64) std::atomic<std::int32_t> mFreeBlocks;

    // The slow path's.
    alignas(64) boost::recursive_mutex mMutex;
    std::vector<ChunkHeader*> mChunksByLoad;    // on the ordinary heap
    std::set<std::uintptr_t> mChunksByAddress;  // on the ordinary heap
    std::uint32_t mTotalBytes;
};

/// The pool of one row of the size-class table, a distinct type per row.
template <unsigned int BlockSizeT, unsigned int FirstChunkT, unsigned int SecondChunkT, int KeepsLastChunkT>
class AllocatorManager final : public Pool {
public:
    AllocatorManager() : Pool(BlockSizeT, FirstChunkT, SecondChunkT, KeepsLastChunkT != 0) {}
};

// ---------------------------------------------------------------------------
// The fast paths.

// The contract check's passing path is one compare; the report is out of line.
QUOREL_POOL_INLINE void* Pool::AllocateBlock(unsigned int inSize) {
    if (QUOREL_POOL_UNLIKELY(inSize > mBlockSize)) {
        ReportOversizedRequest(inSize);
    }
    if (void* const block = TryFastAllocate()) {
        return block;
    }
    return AllocateSlow();
}

QUOREL_POOL_INLINE bool Pool::DisposeBlock(void* inBlock, unsigned int inSize) {
    if (QUOREL_POOL_UNLIKELY(inSize > mBlockSize)) {
        ReportOversizedRequest(inSize);
    }
    ReleaseOutcome const outcome = TryFastRelease(inBlock);
    if (QUOREL_POOL_LIKELY(outcome == kReleased)) {
        return true;
    }
    return DisposeSlow(inBlock, outcome);
}

// One try of the read lock, one pop and two counter updates.  The published
// state and the current chunk are read only under the read lock, and the
// published state changes only under the write side, so no reader is inside
// while it changes; the read lock's acquiring exchange orders both reads after
// the last change.  Relaxed loads therefore do.  While the state is
// unpublished the slow path changes the current chunk without the write side,
// but then no fast path reads it.
QUOREL_POOL_INLINE void* Pool::TryFastAllocate() {
    if (QUOREL_POOL_UNLIKELY(!mStateLock.AcquireRead(true))) {
        return nullptr;
    }
    void* block = nullptr;
    if (QUOREL_POOL_LIKELY(mPublished.load(std::memory_order_relaxed) != nullptr)) {
        ChunkHeader* const chunk = mCurrentChunk.load(std::memory_order_relaxed);
        if (QUOREL_POOL_LIKELY(chunk != nullptr)) {
            block = PopCounted(chunk);
        }
    }
    mStateLock.ReleaseRead();
    return block;
}

// Counters after the pop: used blocks up, free blocks down.  They are hints
// that the slow path reads under the published-null regime, so relaxed
// updates do; the list itself carries the ordering of the block's memory.
QUOREL_POOL_INLINE void* Pool::PopCounted(ChunkHeader* inChunk) {
    void* const block = inChunk->Pop();
    if (QUOREL_POOL_LIKELY(block != nullptr)) {
        inChunk->mUsedBlocks.fetch_add(1, std::memory_order_relaxed);
        mFreeBlocks.fetch_sub(1, std::memory_order_relaxed);
    }
    return block;
}

QUOREL_POOL_INLINE Pool::ReleaseOutcome Pool::TryFastRelease(void* inBlock) {
    if (QUOREL_POOL_UNLIKELY(!mStateLock.AcquireRead(true))) {
        return kReleaseNotEntered;
    }
    ReleaseOutcome outcome = kReleaseNotEntered;
    if (QUOREL_POOL_LIKELY(mPublished.load(std::memory_order_relaxed) != nullptr)) {
        ChunkHeader* const chunk = FindChunk(inBlock);
        outcome = QUOREL_POOL_LIKELY(chunk != nullptr) ? ReleaseInto(chunk, inBlock) : kReleaseNotMine;
    }
    mStateLock.ReleaseRead();
    return outcome;
}

// Free blocks up, push, used blocks down, in this order.  The chunk that
// empties asks for a reclaim; the count of chunks is read while the read lock
// (or the mutex) still keeps the collections steady.
QUOREL_POOL_INLINE Pool::ReleaseOutcome Pool::ReleaseInto(ChunkHeader* inChunk, void* inBlock) {
    mFreeBlocks.fetch_add(1, std::memory_order_relaxed);
    inChunk->Push(inBlock);
    if (QUOREL_POOL_LIKELY(inChunk->mUsedBlocks.fetch_sub(1, std::memory_order_relaxed) != 1)) {
        return kReleased;
    }
    return ReleaseIntoEmptied();
}

// A chunk has emptied: a reclaim is due if the pool holds more chunks than it keeps.
QUOREL_POOL_INLINE Pool::ReleaseOutcome Pool::ReleaseIntoEmptied() const {
    return mChunksByLoad.size() > ChunksToKeep() ? kReleasedEmptiedChunk : kReleased;
}

// The current chunk first, else the chunk with the greatest address below the block.
QUOREL_POOL_INLINE ChunkHeader* Pool::FindChunk(void const* inBlock) const {
    ChunkHeader* const current = mCurrentChunk.load(std::memory_order_relaxed);
    if (QUOREL_POOL_LIKELY(current != nullptr && current->Contains(inBlock))) {
        return current;
    }
    return FindChunkByAddress(inBlock);
}

}  // namespace utility
}  // namespace quorel

#endif
