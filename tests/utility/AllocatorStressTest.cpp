// Several threads allocate and free at full speed, in the same and in
// different size classes, and free blocks that other threads allocated.
// Every held block carries a pattern unique to its allocation, so a block
// handed out twice, or written to while on a free list, is caught.
#include <quorel/utility/AllocatorInterface.h>
#include <quorel/utility/SmallBlockAllocator.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

using namespace quorel::utility;
namespace sba = quorel::utility::SmallBlockAllocator;

namespace {

struct Held {
    void* mBlock;
    unsigned int mSize;
    std::uint64_t mTag;
};

void Stamp(Held const& inHeld) {
    std::uint64_t words[2] = {inHeld.mTag, ~inHeld.mTag};
    std::size_t const bytes = std::min<std::size_t>(inHeld.mSize, sizeof words);
    std::memcpy(inHeld.mBlock, words, bytes);
    if (inHeld.mSize >= sizeof words + 8) {  // and the last bytes of larger blocks
        std::memcpy(static_cast<char*>(inHeld.mBlock) + inHeld.mSize - 8, &inHeld.mTag, 8);
    }
}

bool Intact(Held const& inHeld) {
    std::uint64_t words[2] = {inHeld.mTag, ~inHeld.mTag};
    std::size_t const bytes = std::min<std::size_t>(inHeld.mSize, sizeof words);
    if (std::memcmp(inHeld.mBlock, words, bytes) != 0) return false;
    return inHeld.mSize < sizeof words + 8 ||
           std::memcmp(static_cast<char*>(inHeld.mBlock) + inHeld.mSize - 8, &inHeld.mTag, 8) == 0;
}

unsigned int const kSizes[] = {4, 8, 24, 100, 256, 1000, 4000, 8000};

// A handful of blocks that one thread passes to another to free.
class Exchange {
public:
    void Put(Held const& inHeld) {
        std::lock_guard<std::mutex> lock(mMutex);
        mBlocks.push_back(inHeld);
    }
    bool Take(Held& outHeld) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mBlocks.empty()) return false;
        outHeld = mBlocks.back();
        mBlocks.pop_back();
        return true;
    }

private:
    std::mutex mMutex;
    std::vector<Held> mBlocks;
};

}  // namespace

TEST(SmallBlockAllocatorStress, ThreadsNeverLoseOrShareABlock) {
    constexpr int kThreads = 4;
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    constexpr int kRounds = 30000;
#else
    constexpr int kRounds = 200000;
#endif
    Exchange exchange;
    std::atomic<int> damaged{0};
    std::atomic<std::uint64_t> nextTag{1};
    auto const worker = [&](int inSeed) {
        std::mt19937 random(inSeed);
        std::vector<Held> held;
        auto const release = [&](Held const& inHeld) {
            if (!Intact(inHeld)) ++damaged;
            sba::Dispose(inHeld.mBlock, inHeld.mSize);
        };
        for (int round = 0; round < kRounds; ++round) {
            unsigned int const choice = random() % 16;
            if (choice < 8 || held.empty()) {
                // Threads 0 and 1 share one class; the others spread over all.
                unsigned int const size = inSeed < 2 ? 24 : kSizes[random() % 8] - random() % 4;
                Held const block{sba::Allocate(size), size, nextTag.fetch_add(1)};
                ASSERT_NE(block.mBlock, nullptr);
                Stamp(block);
                held.push_back(block);
            } else if (choice < 14) {
                std::size_t const index = random() % held.size();
                release(held[index]);
                held[index] = held.back();
                held.pop_back();
            } else if (choice == 14) {
                exchange.Put(held.back());
                held.pop_back();
            } else {
                Held foreign;
                if (exchange.Take(foreign)) release(foreign);
            }
            if (held.size() > 300) {  // keep the working set moving
                for (Held const& block : held) release(block);
                held.clear();
            }
        }
        for (Held const& block : held) release(block);
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) threads.emplace_back(worker, t);
    for (std::thread& thread : threads) thread.join();
    Held left;
    while (exchange.Take(left)) {
        EXPECT_TRUE(Intact(left));
        sba::Dispose(left.mBlock, left.mSize);
    }
    EXPECT_EQ(damaged.load(), 0);

    // With every block back, each pool's free blocks fill exactly the chunks it kept.
    for (unsigned int size : kSizes) {
        PoolStatistics const statistics = sba::GetPool(size)->GetStatistics();
        if (statistics.mKeepsLastChunk) {
            EXPECT_LE(statistics.mChunkCount, 1u) << size;
            std::int32_t const capacity =
                statistics.mChunkCount == 0 ? 0 : (statistics.mTotalBytes - 32) / statistics.mBlockSize;
            EXPECT_EQ(statistics.mFreeBlocks, capacity) << size;
        } else {
            EXPECT_EQ(statistics.mTotalBytes, 0u) << size;
            EXPECT_EQ(statistics.mFreeBlocks, 0) << size;
        }
    }
}

TEST(SmallBlockAllocatorStress, ManyThreadsCyclingFewBlocksOfOneClass) {
    // More threads than cores, each holding at most two blocks of one class:
    // the same few blocks are popped and pushed again all the time, which is
    // where a free list without ABA protection hands one block out twice.
    constexpr int kThreads = 8;
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    constexpr int kRounds = 100000;
#else
    constexpr int kRounds = 1000000;
#endif
    std::atomic<int> damaged{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&damaged, t] {
            std::uint64_t tag = static_cast<std::uint64_t>(t) << 40;
            for (int round = 0; round < kRounds; ++round) {
                Held const first{sba::Allocate(8), 8, ++tag};
                Stamp(first);
                Held const second{sba::Allocate(8), 8, ++tag};
                Stamp(second);
                if (!Intact(first) || !Intact(second)) ++damaged;
                sba::Dispose(first.mBlock, 8);
                if (!Intact(second)) ++damaged;
                sba::Dispose(second.mBlock, 8);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(damaged.load(), 0);
    PoolStatistics const statistics = sba::GetPool(8)->GetStatistics();
    EXPECT_EQ(statistics.mFreeBlocks, static_cast<std::int32_t>((statistics.mTotalBytes - 32 * statistics.mChunkCount) / 8));
}
