// A queued function in a small block of its own.
#ifndef QUOREL_THREADS_SRC_ALLOCATEDFUNCTION_H
#define QUOREL_THREADS_SRC_ALLOCATEDFUNCTION_H

#include <quorel/utility/SmallBlockAllocator.h>

#include <boost/function.hpp>

#include <new>

namespace quorel {
namespace threads {

/// One boost::function0<void> in a block from the small-block allocator, so
/// that queuing a function does not touch the general heap.  It travels as a
/// raw pointer, and whoever holds the pointer owns it: Destroy ends it.
class AllocatedFunction {
public:
    /// A copy of inFunction in a new block.  Throws std::bad_alloc when the
    /// allocator has no block, and what the copy throws.
    static AllocatedFunction* Create(boost::function0<void> const& inFunction) {
        void* const block = utility::SmallBlockAllocator::Allocate(sizeof(AllocatedFunction));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        try {
            return new (block) AllocatedFunction(inFunction);
        } catch (...) {
            utility::SmallBlockAllocator::Dispose(block, sizeof(AllocatedFunction));
            throw;
        }
    }

    /// Destroys the function and gives its block back.  Null is ignored.
    static void Destroy(AllocatedFunction* inEntry) noexcept {
        if (inEntry != nullptr) {
            inEntry->~AllocatedFunction();
            utility::SmallBlockAllocator::Dispose(inEntry, sizeof(AllocatedFunction));
        }
    }

    bool IsEmpty() const noexcept { return mFunction.empty(); }

    /// Calls the function; an exception passes on.
    void Call() const { mFunction(); }

private:
    explicit AllocatedFunction(boost::function0<void> const& inFunction) : mFunction(inFunction) {}
    ~AllocatedFunction() = default;

    boost::function0<void> mFunction;
};

/// Owns an entry for a scope and destroys it at the end unless released.
class AllocatedFunctionHolder {
public:
    explicit AllocatedFunctionHolder(AllocatedFunction* inEntry = nullptr) noexcept : mEntry(inEntry) {}
    ~AllocatedFunctionHolder() { AllocatedFunction::Destroy(mEntry); }
    AllocatedFunctionHolder(AllocatedFunctionHolder const&) = delete;
    AllocatedFunctionHolder& operator=(AllocatedFunctionHolder const&) = delete;

    AllocatedFunction* Get() const noexcept { return mEntry; }
    AllocatedFunction*& Slot() noexcept { return mEntry; }
    AllocatedFunction* Release() noexcept {
        AllocatedFunction* const entry = mEntry;
        mEntry = nullptr;
        return entry;
    }

private:
    AllocatedFunction* mEntry;
};

}  // namespace threads
}  // namespace quorel

#endif
