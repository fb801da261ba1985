#include "Pool.h"

#include <quorel/debug/Debug.h>
#include <quorel/utility/SmallBlockAllocator.h>

#include <boost/thread/lock_guard.hpp>

#include <algorithm>
#include <new>

namespace quorel {
namespace utility {

namespace {

constexpr unsigned int kSmallChunk = 4128;
constexpr unsigned int kMediumChunk = 66080;
constexpr unsigned int kLargeChunk = 925152;

// The allocator's failure to find memory for a chunk.
class BadAllocation : public std::bad_alloc {
public:
    char const* what() const noexcept override { return "bad allocation"; }
};

}  // namespace

Pool::Pool(unsigned int inBlockSize, unsigned int inFirstChunkSize, unsigned int inSecondChunkSize,
           bool inKeepsLastChunk)
    : mBlockSize(inBlockSize),
      mFirstChunkSize(inFirstChunkSize),
      mSecondChunkSize(inSecondChunkSize),
      mKeepsLastChunk(inKeepsLastChunk),
      mPublished(this),
      mCurrentChunk(nullptr),
      mFreeBlocks(0),
      mTotalBytes(0) {
    mChunksByLoad.reserve(256);
}

void* Pool::Allocate(unsigned int inSize) { return AllocateBlock(inSize); }

bool Pool::Dispose(void* inBlock, unsigned int inSize) { return DisposeBlock(inBlock, inSize); }

// The fast paths check "inSize <= BlockSize()" with a single compare and come
// here only when it fails; the report names the contract as it is written.
// If the report returns, the operation goes on.
void Pool::ReportOversizedRequest(unsigned int inSize) { QRL_INPUT_CONTRACT(inSize <= BlockSize()); }

// The fast path found no block: lock the mutex and try once more, then change
// the collections with the state unpublished.
void* Pool::AllocateSlow() {
    boost::lock_guard<boost::recursive_mutex> lock(mMutex);
    if (void* block = TryFastAllocate()) {
        return block;
    }
    SetPublished(false);
    void* block = nullptr;
    try {
        block = AllocateLocked();
    } catch (...) {
        SetPublished(true);
        throw;
    }
    SetPublished(true);
    return block;
}

// Under the mutex, with the state unpublished: serve from the least used chunk
// if any block is free, else from a new chunk.
void* Pool::AllocateLocked() {
    if (mFreeBlocks.load(std::memory_order_relaxed) > 0) {
        SortByLoad();
        ChunkHeader* const leastUsed = mChunksByLoad.empty() ? nullptr : mChunksByLoad.back();
        mCurrentChunk.store(leastUsed, std::memory_order_relaxed);
        if (leastUsed != nullptr) {
            if (void* block = PopCounted(leastUsed)) {
                return block;
            }
        }
    }
    ChunkHeader* const chunk = MakeChunk();
    mCurrentChunk.store(chunk, std::memory_order_relaxed);
    return PopCounted(chunk);
}

// The fast release couldn't get in, or it emptied a chunk that may go back.
bool Pool::DisposeSlow(void* inBlock, ReleaseOutcome inOutcome) {
    ReleaseOutcome outcome = inOutcome;
    if (outcome == kReleaseNotEntered) {
        // Every change of the collections happens under the mutex, so holding
        // it keeps them and the chunks steady without the read lock.
        boost::lock_guard<boost::recursive_mutex> lock(mMutex);
        ChunkHeader* const chunk = FindChunk(inBlock);
        outcome = chunk != nullptr ? ReleaseInto(chunk, inBlock) : kReleaseNotMine;
    }
    if (outcome == kReleasedEmptiedChunk) {
        boost::lock_guard<boost::recursive_mutex> lock(mMutex);
        SetPublished(false);
        Reclaim();
        SetPublished(true);
    }
    return outcome != kReleaseNotMine;
}

// The chunk with the greatest address below the block, if the block lies within it.
ChunkHeader* Pool::FindChunkByAddress(void const* inBlock) const {
    auto above = mChunksByAddress.upper_bound(reinterpret_cast<std::uintptr_t>(inBlock));
    if (above == mChunksByAddress.begin()) {
        return nullptr;
    }
    auto* const below = reinterpret_cast<ChunkHeader*>(*--above);
    return below->Contains(inBlock) ? below : nullptr;
}

void Pool::SetPublished(bool inPublished) {
    threads::WriteLockHolder writeLock(mStateLock);
    writeLock.Acquire(false);
    mPublished.store(inPublished ? this : nullptr, std::memory_order_release);
}

// Most used first, so the least used chunk is the last.
void Pool::SortByLoad() {
    std::stable_sort(mChunksByLoad.begin(), mChunksByLoad.end(), [](ChunkHeader* inA, ChunkHeader* inB) {
        return inA->mUsedBlocks.load(std::memory_order_relaxed) > inB->mUsedBlocks.load(std::memory_order_relaxed);
    });
}

// Small pools take 17 chunks of 4128 bytes, then chunks of 66080 bytes, then
// of 925152 bytes; the larger pools start further up the same ladder.
unsigned int Pool::NextChunkSize() const {
    if (mFirstChunkSize == kSmallChunk) {
        if (mTotalBytes < kMediumChunk) {
            return kSmallChunk;
        }
        return mTotalBytes < kLargeChunk ? kMediumChunk : kLargeChunk;
    }
    if (mFirstChunkSize == kMediumChunk) {
        return mTotalBytes < kLargeChunk ? kMediumChunk : kLargeChunk;
    }
    return kLargeChunk;
}

ChunkHeader* Pool::MakeChunk() {
    unsigned int const chunkSize = NextChunkSize();
    void* const memory = SmallBlockAllocator::Allocate(chunkSize);
    if (memory == nullptr) {
        throw BadAllocation();
    }
    auto* const chunk = static_cast<ChunkHeader*>(memory);
    chunk->mStart = chunk;
    chunk->mChunkSize = chunkSize;
    chunk->mBlockSize = mBlockSize;
    chunk->mBlockCount = (chunkSize - ChunkHeader::kHeaderSize) / mBlockSize;
    new (&chunk->mUsedBlocks) std::atomic<std::uint32_t>(0);
    new (&chunk->mFreeHead) std::atomic<std::uint64_t>(0);
    // Lowest address first, so that the highest comes out first.
    auto* const firstBlock = reinterpret_cast<unsigned char*>(chunk) + ChunkHeader::kHeaderSize;
    for (std::uint32_t i = 0; i < chunk->mBlockCount; ++i) {
        chunk->Push(firstBlock + static_cast<std::size_t>(i) * mBlockSize);
    }
    try {
        mChunksByLoad.push_back(chunk);
        mChunksByAddress.insert(reinterpret_cast<std::uintptr_t>(chunk));
    } catch (...) {
        mChunksByLoad.erase(std::remove(mChunksByLoad.begin(), mChunksByLoad.end(), chunk), mChunksByLoad.end());
        SmallBlockAllocator::Dispose(chunk, chunkSize);
        throw;
    }
    mTotalBytes += chunkSize;
    mFreeBlocks.fetch_add(static_cast<std::int32_t>(chunk->mBlockCount), std::memory_order_relaxed);
    return chunk;
}

// Gives empty chunks back, least used first, down to the chunks a pool keeps.
// Releasing a chunk can empty a chunk of a larger pool in turn, which then
// reclaims by the same road.
void Pool::Reclaim() {
    SortByLoad();
    while (mChunksByLoad.size() > ChunksToKeep()) {
        ChunkHeader* const chunk = mChunksByLoad.back();
        if (chunk->mUsedBlocks.load(std::memory_order_acquire) != 0) {
            return;
        }
        mChunksByLoad.pop_back();
        mChunksByAddress.erase(reinterpret_cast<std::uintptr_t>(chunk));
        mFreeBlocks.fetch_sub(static_cast<std::int32_t>(chunk->mBlockCount), std::memory_order_relaxed);
        if (mCurrentChunk.load(std::memory_order_relaxed) == chunk) {
            mCurrentChunk.store(nullptr, std::memory_order_relaxed);
        }
        unsigned int const chunkSize = chunk->mChunkSize;
        mTotalBytes -= chunkSize;
        SmallBlockAllocator::Dispose(chunk, chunkSize);
    }
}

PoolStatistics Pool::GetStatistics() {
    boost::lock_guard<boost::recursive_mutex> lock(mMutex);
    PoolStatistics statistics;
    statistics.mBlockSize = mBlockSize;
    statistics.mChunkCount = static_cast<unsigned int>(mChunksByLoad.size());
    statistics.mTotalBytes = mTotalBytes;
    statistics.mFreeBlocks = mFreeBlocks.load(std::memory_order_relaxed);
    statistics.mKeepsLastChunk = mKeepsLastChunk;
    return statistics;
}

}  // namespace utility
}  // namespace quorel
