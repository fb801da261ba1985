#include <quorel/debug/Debug.h>
#include <quorel/utility/AllocatorInterface.h>
#include <quorel/utility/SmallBlockAllocator.h>
#include <quorel/utility/UnicodeString.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <random>
#include <set>
#include <vector>

#include <sys/resource.h>

using namespace quorel;
using namespace quorel::utility;
namespace sba = quorel::utility::SmallBlockAllocator;

namespace {

PoolStatistics StatisticsOf(unsigned int inSize) { return sba::GetPool(inSize)->GetStatistics(); }

std::uintptr_t Address(void* inBlock) { return reinterpret_cast<std::uintptr_t>(inBlock); }

}  // namespace

TEST(SmallBlockAllocator, SizesMapToTheirClasses) {
    unsigned int const requests[] = {0, 1, 5, 25, 33, 257, 513, 4097, 8192, 8193, 4128, 100000};
    unsigned int const actual[] = {4, 4, 8, 32, 48, 288, 640, 4352, 8192, 8193, 4352, 100000};
    for (std::size_t i = 0; i < sizeof requests / sizeof requests[0]; ++i) {
        EXPECT_EQ(sba::GetActualAllocationSize(requests[i]), actual[i]) << requests[i];
    }
    // Exactly 4128 and 66080 bytes have pools of their own, outside the table.
    EXPECT_EQ(sba::GetPool(4128)->BlockSize(), 4128u);
    EXPECT_EQ(sba::GetPool(66080)->BlockSize(), 66080u);
    EXPECT_EQ(sba::GetPool(8193), nullptr);
    EXPECT_EQ(sba::GetPool(66081), nullptr);

    std::set<AllocatorInterface*> classes;
    for (unsigned int size = 0; size <= 8192; ++size) {
        unsigned int const block = sba::GetActualAllocationSize(size);
        ASSERT_GE(block, std::max(size, 4u));
        ASSERT_LE(block, size < 256 ? size + 16 : size < 512 ? size + 32 : size < 4096 ? size + 128 : size + 256);
        if (size != 4128) {
            classes.insert(sba::GetPool(size));
        }
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
    sba::Metrics::Snapshot snapshot;
    EXPECT_FALSE(sba::Metrics::GetSnapshot(snapshot));
}

TEST(SmallBlockAllocator, AChunkOf1024FourByteBlocksComesOutFromTheTopDown) {
    std::vector<void*> held;
    // Use up whatever the pool has free already, so the next block opens a chunk.
    while (held.empty() || StatisticsOf(4).mFreeBlocks > 0) {
        held.push_back(sba::Allocate(4));
    }
    unsigned int const chunksBefore = StatisticsOf(4).mChunkCount;
    std::vector<void*> fresh;
    for (int i = 0; i < 1024; ++i) {
        fresh.push_back(sba::Allocate(4));
    }
    EXPECT_EQ(StatisticsOf(4).mChunkCount, chunksBefore + 1);
    EXPECT_EQ(StatisticsOf(4).mFreeBlocks, 0);
    for (std::size_t i = 1; i < fresh.size(); ++i) {
        ASSERT_EQ(Address(fresh[i - 1]) - Address(fresh[i]), 4u) << i;
    }
    void* next = sba::Allocate(4);
    EXPECT_EQ(StatisticsOf(4).mChunkCount, chunksBefore + 2);
    EXPECT_EQ(StatisticsOf(4).mFreeBlocks, 1023);

    // Freed in any order, every block finds its own chunk; the pool keeps one.
    held.insert(held.end(), fresh.begin(), fresh.end());
    held.push_back(next);
    std::shuffle(held.begin(), held.end(), std::mt19937(7));
    for (void* block : held) {
        sba::Dispose(block, 4);
    }
    PoolStatistics const after = StatisticsOf(4);
    EXPECT_EQ(after.mChunkCount, 1u);
    EXPECT_EQ(after.mTotalBytes, 4128u);
    EXPECT_EQ(after.mFreeBlocks, 1024);
}

TEST(SmallBlockAllocator, APoolThatKeepsNoChunkGivesEverythingBack) {
    ASSERT_FALSE(StatisticsOf(144).mKeepsLastChunk);
    std::vector<void*> held;
    for (int i = 0; i < 100; ++i) {
        held.push_back(sba::Allocate(140));
    }
    EXPECT_EQ(StatisticsOf(144).mChunkCount, 4u);  // 28 blocks a chunk
    EXPECT_EQ(StatisticsOf(144).mTotalBytes, 4u * 4128);
    for (void* block : held) {
        sba::Dispose(block, 140);
    }
    EXPECT_EQ(StatisticsOf(144).mTotalBytes, 0u);
    EXPECT_EQ(StatisticsOf(144).mChunkCount, 0u);
    EXPECT_EQ(StatisticsOf(144).mFreeBlocks, 0);
    void* again = sba::Allocate(144);
    EXPECT_EQ(StatisticsOf(144).mTotalBytes, 4128u);
    sba::Dispose(again, 144);
}

TEST(SmallBlockAllocator, ChunksGrowFrom4128To66080AndComeFromTheChunkPools) {
    unsigned int const smallChunksBefore = StatisticsOf(4128).mTotalBytes;
    std::vector<void*> held;
    for (int i = 0; i < 17 * 16; ++i) {  // 16 blocks of 256 bytes in a chunk of 4128
        held.push_back(sba::Allocate(256));
    }
    EXPECT_EQ(StatisticsOf(256).mTotalBytes, 17u * 4128);
    EXPECT_GT(StatisticsOf(4128).mTotalBytes, smallChunksBefore);  // chunks are blocks of the 4128 pool
    held.push_back(sba::Allocate(256));
    EXPECT_EQ(StatisticsOf(256).mTotalBytes, 17u * 4128 + 66080);
    for (void* block : held) {
        sba::Dispose(block, 256);
    }
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
    EXPECT_EQ(manager->mCalls[0].mLevel, config::kErrorLevel_Fatal);
    EXPECT_EQ(manager->mCalls[0].mModuleID, 105u);
    EXPECT_EQ(manager->mCalls[0].mErrorNumber, 25);
    debug::EnableContractDialog();
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(SmallBlockAllocatorDeathStyle, ExhaustedMemoryThrowsAndThePoolStaysUsable) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            rlimit limit;
            limit.rlim_cur = limit.rlim_max = 512u << 20;
            setrlimit(RLIMIT_AS, &limit);
            std::vector<void*> held;
            bool threw = false;
            try {
                for (;;) held.push_back(sba::Allocate(8000));
            } catch (std::bad_alloc const& error) {
                threw = std::strcmp(error.what(), "bad allocation") == 0;
            }
            for (void* block : held) sba::Dispose(block, 8000);
            void* after = sba::Allocate(8000);
            std::exit(threw && after != nullptr && held.size() > 1000 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}
#endif

TEST(SmallBlockAllocator, StringsLiveInThePools) {
    std::int32_t const before = StatisticsOf(48).mFreeBlocks;
    UTF16String text(20, 'x');  // 21 units: 42 bytes, the 48-byte class
    EXPECT_NE(StatisticsOf(48).mFreeBlocks, before);
    EXPECT_EQ(UTF16String().capacity(), 7u);
    EXPECT_EQ(UTF8String().capacity(), 15u);
}

TEST(STLAllocator, ServesContainersAndRefusesImpossibleSizes) {
    sba::STLAllocator<int> ints;
    sba::STLAllocator<double> doubles;
    EXPECT_TRUE(ints == doubles);
    EXPECT_FALSE(ints != doubles);
    std::vector<int, sba::STLAllocator<int>> numbers;
    for (int i = 0; i < 10000; ++i) numbers.push_back(i);
    EXPECT_EQ(numbers[9999], 9999);
    EXPECT_THROW(ints.allocate(ints.max_size() + 1), std::bad_alloc);
}
