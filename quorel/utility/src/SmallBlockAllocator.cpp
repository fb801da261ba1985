#include <quorel/utility/AllocatorInterface.h>
#include <quorel/utility/SmallBlockAllocator.h>

#include "PlatformMemory.h"
#include "Pool.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <new>
#include <utility>

namespace quorel {
namespace utility {

namespace {

constexpr std::size_t kAlignment = 16;
constexpr unsigned int kLargestTableSize = 8192;
constexpr unsigned int kSmallChunk = 4128;
constexpr unsigned int kMediumChunk = 66080;
constexpr unsigned int kLargeChunk = 925152;

// One row of the size-class table.
struct PoolRow {
    unsigned int mBlockSize;
    unsigned int mFirstChunk;
    unsigned int mSecondChunk;
    int mKeepsLastChunk;
};

constexpr std::size_t kPoolCount = 73;

// The rows in ascending block size: 71 classes for requests up to 8192 bytes,
// and the two pools of 4128 and 66080 bytes that serve chunks.
constexpr std::array<PoolRow, kPoolCount> MakePoolRows() {
    std::array<PoolRow, kPoolCount> rows{};
    std::size_t n = 0;
    auto const add = [&rows, &n](unsigned int inBlock, unsigned int inFirst, unsigned int inSecond, int inKeep) {
        rows[n++] = PoolRow{inBlock, inFirst, inSecond, inKeep};
    };
    for (unsigned int size : {4u, 8u, 16u, 24u, 32u}) add(size, kSmallChunk, kMediumChunk, 1);
    for (unsigned int size = 48; size <= 128; size += 16) add(size, kSmallChunk, kMediumChunk, 1);
    for (unsigned int size = 144; size <= 256; size += 16) add(size, kSmallChunk, kMediumChunk, 0);
    for (unsigned int size = 288; size <= 512; size += 32) add(size, kSmallChunk, kMediumChunk, 0);
    for (unsigned int size = 640; size <= 896; size += 128) add(size, kSmallChunk, kMediumChunk, 0);
    add(1024, kSmallChunk, kMediumChunk, 1);
    for (unsigned int size = 1152; size <= 4096; size += 128) add(size, kMediumChunk, kLargeChunk, 0);
    add(kSmallChunk, kMediumChunk, kLargeChunk, 1);
    for (unsigned int size = 4352; size <= 8192; size += 256) add(size, kMediumChunk, kLargeChunk, 0);
    add(kMediumChunk, kLargeChunk, kLargeChunk, 1);
    return rows;
}

constexpr std::array<PoolRow, kPoolCount> kPoolRows = MakePoolRows();
static_assert(kPoolRows[kPoolCount - 1].mBlockSize == kMediumChunk, "the table has 73 rows");

// The block size that serves a request of inSize bytes (up to 8192).
constexpr unsigned int ClassSize(unsigned int inSize) {
    if (inSize <= 4) return 4;
    if (inSize <= 8) return 8;
    if (inSize <= 16) return 16;
    if (inSize <= 24) return 24;
    if (inSize <= 32) return 32;
    if (inSize <= 256) return (inSize + 15) / 16 * 16;
    if (inSize <= 512) return (inSize + 31) / 32 * 32;
    if (inSize <= 4096) return (inSize + 127) / 128 * 128;
    return (inSize + 255) / 256 * 256;
}

// The pools live in static storage that is never destroyed, so a string with
// static storage duration can be released at any time, also at process end.
template <std::size_t I>
Pool* ConstructPool() {
    using Manager = AllocatorManager<kPoolRows[I].mBlockSize, kPoolRows[I].mFirstChunk, kPoolRows[I].mSecondChunk,
                                     kPoolRows[I].mKeepsLastChunk>;
    alignas(Manager) static unsigned char storage[sizeof(Manager)];
    return new (storage) Manager;
}

template <std::size_t... I>
std::array<Pool*, kPoolCount> ConstructPools(std::index_sequence<I...>) {
    return {ConstructPool<I>()...};
}

enum StartState { kNotStarted = 0, kStarting = 1, kRunning = 2 };

std::atomic<int> sState{kNotStarted};
Pool* sTable[kLargestTableSize + 1];
Pool* sPool4128;
Pool* sPool66080;

void BuildPools() {
    std::array<Pool*, kPoolCount> const pools = ConstructPools(std::make_index_sequence<kPoolCount>());
    std::size_t row = 0;
    for (unsigned int size = 0; size <= kLargestTableSize; ++size) {
        while (pools[row]->BlockSize() != ClassSize(size) || pools[row]->BlockSize() == kSmallChunk) {
            ++row;
        }
        sTable[size] = pools[row];
    }
    for (Pool* pool : pools) {
        if (pool->BlockSize() == kSmallChunk) {
            sPool4128 = pool;
        } else if (pool->BlockSize() == kMediumChunk) {
            sPool66080 = pool;
        }
    }
}

// Starts the allocator at its first use.  While one thread builds the pools,
// every allocation (of that thread and of others, which don't wait) goes to
// the aligned allocation; no pool claims those blocks later.
QUOREL_POOL_COLD bool StartOrAskAgain() {
    int state = sState.load(std::memory_order_acquire);
    if (state == kRunning) {
        return true;
    }
    if (!sState.compare_exchange_strong(state, kStarting, std::memory_order_acq_rel)) {
        return state == kRunning;
    }
    BuildPools();
    sState.store(kRunning, std::memory_order_release);
    return true;
}

// Once the allocator runs, the test is one acquire load (which pairs with the
// store that ended the start, so the table and the pools are seen complete).
inline bool IsRunning() {
    if (QUOREL_POOL_LIKELY(sState.load(std::memory_order_acquire) == kRunning)) {
        return true;
    }
    return StartOrAskAgain();
}

// The pool that Allocate and Dispose select for a size, or null.
inline Pool* SelectPool(unsigned int inSize) {
    if (inSize <= kLargestTableSize) {
        return inSize == kSmallChunk ? sPool4128 : sTable[inSize];
    }
    return inSize == kMediumChunk ? sPool66080 : nullptr;
}

}  // namespace

namespace SmallBlockAllocator {

// The entry points call the pools' inline fast paths directly, not through
// the virtual functions of AllocatorInterface.
void* Allocate(unsigned int inSize) {
    if (QUOREL_POOL_LIKELY(IsRunning())) {
        if (Pool* const pool = SelectPool(inSize)) {
            return pool->AllocateBlock(inSize);
        }
    }
    return platform::AlignedAllocate(inSize, kAlignment);
}

void Dispose(void* inBlock, unsigned int inSize) {
    if (inBlock == nullptr) {
        return;
    }
    if (QUOREL_POOL_LIKELY(IsRunning())) {
        if (Pool* const pool = SelectPool(inSize)) {
            if (QUOREL_POOL_LIKELY(pool->DisposeBlock(inBlock, inSize))) {
                return;
            }
        }
    }
    platform::AlignedFree(inBlock);
}

unsigned int GetActualAllocationSize(unsigned int inSize) {
    if (inSize > kLargestTableSize || !IsRunning()) {
        return inSize;
    }
    return sTable[inSize]->BlockBytes();
}

bool Metrics::GetSnapshot(Snapshot& /*outSnapshot*/) { return false; }

AllocatorInterface* GetPool(unsigned int inSize) { return IsRunning() ? SelectPool(inSize) : nullptr; }

}  // namespace SmallBlockAllocator
}  // namespace utility
}  // namespace quorel
