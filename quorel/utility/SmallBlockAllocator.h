// Entry points of the memory that quorel's strings, streams and containers live in.
//
// Every block the library hands out for text and small objects comes from
// Allocate and goes back through Dispose with the size that was requested.
// Requests that no size-class pool serves go to the aligned allocation of the
// runtime (alignment 16).
#ifndef QUOREL_UTILITY_SMALLBLOCKALLOCATOR_H
#define QUOREL_UTILITY_SMALLBLOCKALLOCATOR_H

#include <quorel/utility/Export.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <type_traits>

namespace quorel {
namespace utility {
namespace SmallBlockAllocator {

/// Returns a block of at least inSize bytes, aligned to 16 bytes, or null when
/// memory is exhausted.  Never throws for lack of memory.
QRL_EXPORT void* Allocate(unsigned int inSize);

/// Gives back a block from Allocate.  inSize must select the same pool as the
/// size given to Allocate (passing the very same size always does).  A null
/// pointer is accepted and ignored.
QRL_EXPORT void Dispose(void* inBlock, unsigned int inSize);

/// The size of the block that a request of inSize bytes really gets.  A size
/// that no pool serves is returned unchanged.
QRL_EXPORT unsigned int GetActualAllocationSize(unsigned int inSize);

/// Allocator statistics.  The library collects none: GetSnapshot returns false
/// and leaves the structure untouched.  The fields are there for builds that do.
struct Metrics {
    struct Snapshot {
        std::uint64_t mAllocations = 0;
        std::uint64_t mDisposals = 0;
        std::uint64_t mBytesInPools = 0;
    };
    QRL_EXPORT static bool GetSnapshot(Snapshot& outSnapshot);
};

/// Stateless standard allocator over Allocate and Dispose; all instances are
/// equal.  allocate throws std::bad_alloc where Allocate returns null, so that
/// standard containers never see a null block.
template <class T>
class STLAllocator {
public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using propagate_on_container_move_assignment = std::true_type;
    using is_always_equal = std::true_type;
    template <class U>
    struct rebind {
        using other = STLAllocator<U>;
    };

    STLAllocator() noexcept = default;
    template <class U>
    STLAllocator(STLAllocator<U> const&) noexcept {}

    T* allocate(size_type inCount) {
        if (inCount > max_size()) {
            throw std::bad_alloc();
        }
        void* block = Allocate(static_cast<unsigned int>(inCount * sizeof(T)));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(block);
    }

    void deallocate(T* inBlock, size_type inCount) noexcept {
        Dispose(inBlock, static_cast<unsigned int>(inCount * sizeof(T)));
    }

    static constexpr size_type max_size() noexcept {
        return std::numeric_limits<unsigned int>::max() / sizeof(T);
    }
};

template <class T, class U>
constexpr bool operator==(STLAllocator<T> const&, STLAllocator<U> const&) noexcept {
    return true;
}
template <class T, class U>
constexpr bool operator!=(STLAllocator<T> const&, STLAllocator<U> const&) noexcept {
    return false;
}

}  // namespace SmallBlockAllocator
}  // namespace utility
}  // namespace quorel

#endif
