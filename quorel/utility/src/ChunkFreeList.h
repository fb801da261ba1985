// The header of a pool's chunk and the lock-free list of its free blocks.
#ifndef QUOREL_UTILITY_SRC_CHUNKFREELIST_H
#define QUOREL_UTILITY_SRC_CHUNKFREELIST_H

#include <atomic>
#include <cstdint>
#include <cstring>

#if defined(__SANITIZE_THREAD__)
#define QUOREL_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define QUOREL_THREAD_SANITIZER 1
#endif
#endif

namespace quorel {
namespace utility {

/// The first 32 bytes of every chunk; its blocks follow right behind.
///
/// The free list is a stack whose head packs the byte offset of the top block
/// (0 when empty; no block starts at offset 0, the header is there) with a
/// counter that changes at every push and pop, so a head that was popped and
/// pushed again in between never compares equal (the ABA problem).  A free
/// block holds the 32-bit offset of the next one in its first four bytes,
/// which is why the 4-byte class works with 64-bit pointers.
struct ChunkHeader {
    ChunkHeader* mStart;
    std::uint32_t mChunkSize;
    std::uint32_t mBlockSize;
    std::uint32_t mBlockCount;
    std::atomic<std::uint32_t> mUsedBlocks;
    std::atomic<std::uint64_t> mFreeHead;

    static constexpr std::uint32_t kHeaderSize = 32;

    /// Whether inBlock lies within this chunk.
    bool Contains(void const* inBlock) const noexcept {
        auto const address = reinterpret_cast<std::uintptr_t>(inBlock);
        auto const start = reinterpret_cast<std::uintptr_t>(this);
        return address >= start && address - start < mChunkSize;
    }

    /// Takes the top free block, or null when the list is empty.
    void* Pop() noexcept {
        std::uint64_t head = mFreeHead.load(std::memory_order_acquire);
        for (;;) {
            std::uint32_t const offset = static_cast<std::uint32_t>(head);
            if (offset == 0) {
                return nullptr;
            }
            unsigned char* const block = Base() + offset;
            std::uint64_t const next = NextTag(head) | ReadLink(block);
            if (mFreeHead.compare_exchange_weak(head, next, std::memory_order_acquire, std::memory_order_acquire)) {
                return block;
            }
        }
    }

    /// Puts a block of this chunk on top of the list.
    void Push(void* inBlock) noexcept {
        auto* const block = static_cast<unsigned char*>(inBlock);
        std::uint32_t const offset = static_cast<std::uint32_t>(block - Base());
        std::uint64_t head = mFreeHead.load(std::memory_order_relaxed);
        do {
            WriteLink(block, static_cast<std::uint32_t>(head));
        } while (!mFreeHead.compare_exchange_weak(head, NextTag(head) | offset, std::memory_order_release,
                                                  std::memory_order_relaxed));
    }

private:
    unsigned char* Base() noexcept { return reinterpret_cast<unsigned char*>(this); }

    static std::uint64_t NextTag(std::uint64_t inHead) noexcept {
        return ((inHead >> 32) + 1) << 32;
    }

    static void WriteLink(unsigned char* outBlock, std::uint32_t inNext) noexcept {
        std::memcpy(outBlock, &inNext, sizeof inNext);
    }

    // A popping thread may read the link of a block that another thread has
    // popped and is already writing to; the compare-and-exchange then fails
    // and the value read is discarded.  That read is the one intended race of
    // the design, so it is kept out of ThreadSanitizer's view.
#if QUOREL_THREAD_SANITIZER
    __attribute__((no_sanitize("thread"), noinline))
#endif
    static std::uint32_t ReadLink(unsigned char const* inBlock) noexcept {
        std::uint32_t next;
        std::memcpy(&next, inBlock, sizeof next);
        return next;
    }
};

static_assert(sizeof(ChunkHeader) == ChunkHeader::kHeaderSize, "a chunk header is 32 bytes");

}  // namespace utility
}  // namespace quorel

#endif
