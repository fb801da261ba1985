// The small-block allocator: its size classes and chunks, what it gives back,
// and threads that allocate and free at full speed.
#include <quorel/debug/Debug.h>
#include <quorel/utility/AllocatorInterface.h>
#include <quorel/utility/SmallBlockAllocator.h>
#include <quorel/utility/UnicodeString.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <sys/resource.h>

using namespace quorel;
using namespace quorel::utility;
namespace sba = quorel::utility::SmallBlockAllocator;

namespace {

PoolStatistics StatisticsOf(unsigned int inSize) { return sba::GetPool(inSize)->GetStatistics(); }

// The blocks of a pool that are handed out: its chunks' capacity less its free blocks.
std::int32_t BlocksInUse(unsigned int inSize) {
    PoolStatistics const statistics = StatisticsOf(inSize);
    return static_cast<std::int32_t>((statistics.mTotalBytes - 32 * statistics.mChunkCount) / statistics.mBlockSize) -
           statistics.mFreeBlocks;
}

std::uintptr_t Address(void* inBlock) { return reinterpret_cast<std::uintptr_t>(inBlock); }

std::vector<void*> AllocateMany(unsigned int inSize, int inCount) {
    std::vector<void*> blocks;
    for (int i = 0; i < inCount; ++i) blocks.push_back(sba::Allocate(inSize));
    return blocks;
}

void DisposeAll(std::vector<void*> const& inBlocks, unsigned int inSize) {
    for (void* block : inBlocks) sba::Dispose(block, inSize);
}


#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int kRoundsScale = 1;
#else
constexpr int kRoundsScale = 8;
#endif

struct Held {
    void* mBlock;
    unsigned int mSize;
    std::uint64_t mTag;
};

// The tag stands at the start of a block (where a free list keeps its links)
// and at the end of blocks of 16 bytes and more.
char* EndTag(Held const& inHeld) {
    return inHeld.mSize >= 16 ? static_cast<char*>(inHeld.mBlock) + inHeld.mSize - 8 : nullptr;
}

Held Stamped(unsigned int inSize, std::uint64_t inTag) {
    Held const held{sba::Allocate(inSize), inSize, inTag};
    std::memcpy(held.mBlock, &inTag, std::min(inSize, 8u));
    if (char* end = EndTag(held)) std::memcpy(end, &inTag, 8);
    return held;
}

bool Intact(Held const& inHeld) {
    char* const end = EndTag(inHeld);
    return std::memcmp(inHeld.mBlock, &inHeld.mTag, std::min(inHeld.mSize, 8u)) == 0 &&
           (end == nullptr || std::memcmp(end, &inHeld.mTag, 8) == 0);
}

// Frees a block, counting it in ioDamaged if its pattern was changed.
void Release(Held const& inHeld, std::atomic<int>& ioDamaged) {
    if (!Intact(inHeld)) ++ioDamaged;
    sba::Dispose(inHeld.mBlock, inHeld.mSize);
}

template <class Work>
void RunThreads(int inCount, Work const& inWork) {
    std::vector<std::thread> threads;
    for (int t = 0; t < inCount; ++t) threads.emplace_back(inWork, t);
    for (std::thread& thread : threads) thread.join();
}

unsigned int const kSizes[] = {4, 8, 24, 100, 256, 1000, 4000, 8000};

}  // namespace

// Several threads allocate and free at full speed, in the same and in
// different size classes, and free blocks that other threads allocated.
// Every held block carries a tag unique to its allocation, so a block handed
// out twice, or written to while on a free list, is caught.  These run first,
// while the pools hold only what the allocator's start-up left.
TEST(SmallBlockAllocatorStress, ThreadsNeverLoseOrShareABlock) {
    std::mutex exchangeMutex;
    std::vector<Held> exchange;  // blocks that one thread passes to another to free
    std::atomic<int> damaged{0};
    std::atomic<std::uint64_t> nextTag{1};
    RunThreads(4, [&](int inSeed) {
        std::mt19937 random(inSeed);
        std::vector<Held> held;
        for (int round = 0; round < 25000 * kRoundsScale; ++round) {
            unsigned int const choice = random() % 16;
            if (choice < 8 || held.empty()) {
                // Threads 0 and 1 share one class; the others spread over all.
                unsigned int const size = inSeed < 2 ? 24 : kSizes[random() % 8] - random() % 4;
                held.push_back(Stamped(size, nextTag.fetch_add(1)));
            } else if (choice < 14) {
                std::size_t const index = random() % held.size();
                Release(held[index], damaged);
                held[index] = held.back();
                held.pop_back();
            } else {
                std::lock_guard<std::mutex> lock(exchangeMutex);
                if (choice == 14) {
                    exchange.push_back(held.back());
                    held.pop_back();
                } else if (!exchange.empty()) {
                    Release(exchange.back(), damaged);
                    exchange.pop_back();
                }
            }
            if (held.size() > 300 || round + 1 == 25000 * kRoundsScale) {  // keep the working set moving
                for (Held const& block : held) Release(block, damaged);
                held.clear();
            }
        }
    });
    for (Held const& left : exchange) Release(left, damaged);
    EXPECT_EQ(damaged.load(), 0);

    // With every block back, each pool's free blocks fill exactly the chunks it kept.
    for (unsigned int size : kSizes) {
        EXPECT_LE(StatisticsOf(size).mChunkCount, StatisticsOf(size).mKeepsLastChunk ? 1u : 0u) << size;
        EXPECT_EQ(BlocksInUse(size), 0) << size;
    }
}

TEST(SmallBlockAllocatorStress, ManyThreadsCyclingFewBlocksOfOneClass) {
    // More threads than cores, each holding at most two blocks of one class:
    // the same few blocks are popped and pushed again all the time, which is
    // where a free list without ABA protection hands one block out twice.
    std::atomic<int> damaged{0};
    RunThreads(8, [&damaged](int inThread) {
        std::uint64_t tag = static_cast<std::uint64_t>(inThread) << 40;
        for (int round = 0; round < 100000 * kRoundsScale; ++round) {
            Held const first = Stamped(8, ++tag);
            Held const second = Stamped(8, ++tag);
            Release(first, damaged);
            Release(second, damaged);
        }
    });
    EXPECT_EQ(damaged.load(), 0);
    EXPECT_EQ(BlocksInUse(8), 0);
}

TEST(SmallBlockAllocator, SizesMapToTheirClasses) {
    std::pair<unsigned int, unsigned int> const cases[] = {
        {0, 4},       {1, 4},       {5, 8},       {25, 32},     {33, 48},       {257, 288},
        {513, 640},   {4097, 4352}, {8192, 8192}, {8193, 8193}, {4128, 4352},   {100000, 100000},
    };
    for (auto const& [request, actual] : cases) EXPECT_EQ(sba::GetActualAllocationSize(request), actual) << request;
    // Exactly 4128 and 66080 bytes have pools of their own, outside the table.
    EXPECT_TRUE(sba::GetPool(4128)->BlockSize() == 4128u && sba::GetPool(66080)->BlockSize() == 66080u);
    EXPECT_TRUE(sba::GetPool(8193) == nullptr && sba::GetPool(66081) == nullptr);

    std::set<AllocatorInterface*> classes;
    for (unsigned int size = 0; size <= 8192; ++size) {
        unsigned int const block = sba::GetActualAllocationSize(size);
        ASSERT_GE(block, std::max(size, 4u));
        ASSERT_LE(block, size < 256 ? size + 16 : size < 512 ? size + 32 : size < 4096 ? size + 128 : size + 256);
        if (size != 4128) classes.insert(sba::GetPool(size));
    }
    EXPECT_EQ(classes.size(), 71u);
}

TEST(SmallBlockAllocator, BlocksAreAlignedToTheirClass) {
    for (unsigned int size : {0u, 4u, 8u, 24u, 48u, 144u, 1024u, 4128u, 6000u, 66080u, 100000u}) {
        void* block = sba::Allocate(size);
        ASSERT_NE(block, nullptr);
        unsigned int const blockSize = sba::GetPool(size) ? sba::GetPool(size)->BlockSize() : 16;
        unsigned int const alignment = std::min(16u, blockSize & (~blockSize + 1));
        EXPECT_EQ(Address(block) % alignment, 0u) << size;
        std::memset(block, 0x5A, std::max(size, 1u));
        sba::Dispose(block, size);
    }
    sba::Dispose(nullptr, 24);
}

TEST(SmallBlockAllocator, AChunkOf1024FourByteBlocksComesOutFromTheTopDown) {
    std::vector<void*> held;
    // Use up whatever the pool has free already, so the next block opens a chunk.
    while (held.empty() || StatisticsOf(4).mFreeBlocks > 0) held.push_back(sba::Allocate(4));
    unsigned int const chunksBefore = StatisticsOf(4).mChunkCount;
    std::vector<void*> const fresh = AllocateMany(4, 1024);
    EXPECT_TRUE(StatisticsOf(4).mChunkCount == chunksBefore + 1 && StatisticsOf(4).mFreeBlocks == 0);
    for (std::size_t i = 1; i < fresh.size(); ++i) ASSERT_EQ(Address(fresh[i - 1]) - Address(fresh[i]), 4u) << i;
    held.push_back(sba::Allocate(4));
    EXPECT_TRUE(StatisticsOf(4).mChunkCount == chunksBefore + 2 && StatisticsOf(4).mFreeBlocks == 1023);

    // Freed in any order, every block finds its own chunk; the pool keeps one.
    held.insert(held.end(), fresh.begin(), fresh.end());
    std::shuffle(held.begin(), held.end(), std::mt19937(7));
    DisposeAll(held, 4);
    PoolStatistics const after = StatisticsOf(4);
    EXPECT_TRUE(after.mChunkCount == 1u && after.mTotalBytes == 4128u && after.mFreeBlocks == 1024);
}

TEST(SmallBlockAllocator, APoolThatKeepsNoChunkGivesEverythingBack) {
    ASSERT_FALSE(StatisticsOf(144).mKeepsLastChunk);
    std::vector<void*> const held = AllocateMany(140, 100);
    // 28 blocks a chunk
    EXPECT_TRUE(StatisticsOf(144).mChunkCount == 4u && StatisticsOf(144).mTotalBytes == 4u * 4128);
    DisposeAll(held, 140);
    PoolStatistics const after = StatisticsOf(144);
    EXPECT_TRUE(after.mTotalBytes == 0u && after.mChunkCount == 0u && after.mFreeBlocks == 0);
    void* again = sba::Allocate(144);
    EXPECT_EQ(StatisticsOf(144).mTotalBytes, 4128u);
    sba::Dispose(again, 144);
}

TEST(SmallBlockAllocator, ChunksGrowFrom4128To66080AndComeFromTheChunkPools) {
    std::int32_t const smallChunksBefore = BlocksInUse(4128);
    std::vector<void*> held = AllocateMany(256, 17 * 16);  // 16 blocks of 256 bytes in a chunk of 4128
    EXPECT_EQ(StatisticsOf(256).mTotalBytes, 17u * 4128);
    EXPECT_EQ(BlocksInUse(4128), smallChunksBefore + 17);  // chunks are blocks of the 4128 pool
    held.push_back(sba::Allocate(256));
    EXPECT_EQ(StatisticsOf(256).mTotalBytes, 17u * 4128 + 66080);
    DisposeAll(held, 256);
    EXPECT_EQ(StatisticsOf(256).mTotalBytes, 0u);
}

TEST(SmallBlockAllocator, BlocksThatNoPoolClaimsGoToTheAlignedRelease) {
    // What a block from the allocator's start-up looks like: aligned memory
    // given back with a size that maps to a pool.
    void* foreign = nullptr;
    ASSERT_EQ(posix_memalign(&foreign, 16, 24), 0);
    sba::Dispose(foreign, 24);
    EXPECT_FALSE(sba::GetPool(24)->Dispose(&foreign, 24));  // not a pool's block: untouched
}

TEST(SmallBlockAllocator, AnOversizedRequestBreaksTheContract) {
    quorel::testing::ScopedErrorManager manager;
    debug::DisableContractDialog();
    AllocatorInterface* const pool = sba::GetPool(8);
    void* block = pool->Allocate(9);  // the manager returns: served all the same
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(pool->Dispose(block, 9));
    ASSERT_EQ(manager->mCalls.size(), 2u);
    EXPECT_TRUE(manager->mCalls[0].mLevel == config::kErrorLevel_Fatal && manager->mCalls[0].mModuleID == 105u &&
                manager->mCalls[0].mErrorNumber == 25);
    debug::EnableContractDialog();
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// Run in a child process: allocates until the address space runs out, then
// gives everything back and allocates again.  Exits 0 when the failure was the
// allocator's "bad allocation" and the pool served again afterwards.
[[noreturn]] void ExhaustTheAddressSpace() {
    rlimit const limit = {512u << 20, 512u << 20};
    setrlimit(RLIMIT_AS, &limit);
    std::vector<void*> held;
    bool threw = false;
    try {
        for (;;) held.push_back(sba::Allocate(8000));
    } catch (std::bad_alloc const& error) {
        threw = std::strcmp(error.what(), "bad allocation") == 0;
    }
    DisposeAll(held, 8000);
    void* after = sba::Allocate(8000);
    std::exit(threw && after != nullptr && held.size() > 1000 ? 0 : 1);
}

TEST(SmallBlockAllocatorDeathStyle, ExhaustedMemoryThrowsAndThePoolStaysUsable) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ExhaustTheAddressSpace(), ::testing::ExitedWithCode(0), "");
}
#endif

TEST(SmallBlockAllocator, StringsAndContainersLiveInThePools) {
    std::int32_t const before = StatisticsOf(48).mFreeBlocks;
    UTF16String text(20, 'x');  // 21 units: 42 bytes, the 48-byte class
    EXPECT_NE(StatisticsOf(48).mFreeBlocks, before);

    sba::STLAllocator<int> ints;
    EXPECT_TRUE(ints == sba::STLAllocator<double>());
    std::vector<int, sba::STLAllocator<int>> numbers;
    for (int i = 0; i < 10000; ++i) numbers.push_back(i);
    EXPECT_EQ(numbers[9999], 9999);
    EXPECT_THROW(ints.allocate(ints.max_size() + 1), std::bad_alloc);
}
