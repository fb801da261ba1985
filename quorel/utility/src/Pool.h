// One size-class pool of the small-block allocator.
#ifndef QUOREL_UTILITY_SRC_POOL_H
#define QUOREL_UTILITY_SRC_POOL_H

#include <quorel/threads/ReaderWriterLock.h>
#include <quorel/utility/AllocatorInterface.h>

#include "ChunkFreeList.h"

#include <boost/thread/recursive_mutex.hpp>

#include <atomic>
#include <cstdint>
#include <set>
#include <vector>

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
class Pool : public AllocatorInterface {
public:
    Pool(unsigned int inBlockSize, unsigned int inFirstChunkSize, unsigned int inSecondChunkSize,
         bool inKeepsLastChunk);

    void* Allocate(unsigned int inSize) override;
    bool Dispose(void* inBlock, unsigned int inSize) override;
    unsigned int BlockSize() const override { return mBlockSize; }
    PoolStatistics GetStatistics() override;

private:
    enum ReleaseOutcome { kReleaseNotEntered, kReleaseNotMine, kReleased, kReleasedEmptiedChunk };

    void* TryFastAllocate();
    void* AllocateLocked();
    ReleaseOutcome TryFastRelease(void* inBlock);
    ReleaseOutcome ReleaseInto(ChunkHeader* inChunk, void* inBlock);
    ChunkHeader* FindChunk(void const* inBlock) const;
    void* PopCounted(ChunkHeader* inChunk);
    void SetPublished(bool inPublished);
    void SortByLoad();
    std::size_t ChunksToKeep() const { return mKeepsLastChunk ? 1 : 0; }
    unsigned int NextChunkSize() const;
    ChunkHeader* MakeChunk();
    void Reclaim();

    unsigned int const mBlockSize;
    unsigned int const mFirstChunkSize;
    unsigned int const mSecondChunkSize;
    bool const mKeepsLastChunk;

    boost::recursive_mutex mMutex;
    std::atomic<Pool*> mPublished;  // this pool while fast paths may enter; null while changing
    threads::ReaderWriterLock mStateLock;
    std::atomic<ChunkHeader*> mCurrentChunk;
    std::atomic<std::int32_t> mFreeBlocks;
    std::vector<ChunkHeader*> mChunksByLoad;         // on the ordinary heap
    std::set<std::uintptr_t> mChunksByAddress;       // on the ordinary heap
    std::uint32_t mTotalBytes;
};

/// The pool of one row of the size-class table, a distinct type per row.
template <unsigned int BlockSizeT, unsigned int FirstChunkT, unsigned int SecondChunkT, int KeepsLastChunkT>
class AllocatorManager final : public Pool {
public:
    AllocatorManager() : Pool(BlockSizeT, FirstChunkT, SecondChunkT, KeepsLastChunkT != 0) {}
};

}  // namespace utility
}  // namespace quorel

#endif
