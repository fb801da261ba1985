// Base class of objects held by boost::intrusive_ptr.
#ifndef QUOREL_UTILITY_REFCOUNTEDOBJECT_H
#define QUOREL_UTILITY_REFCOUNTEDOBJECT_H

#include <quorel/utility/Export.h>

#include <atomic>
#include <cstdint>

namespace quorel {
namespace utility {

/// An object with an atomic reference count, for boost::intrusive_ptr.
///
/// The count starts at 0.  Releasing the last reference deletes the object,
/// unless it is already being destroyed or its deletion guard is set.  A copy
/// starts with a fresh count and fresh flags; assignment leaves both sides'
/// counts alone.  The count is thread-safe; the object's own data is not.
class QRL_EXPORT RefCountedObject {
public:
    virtual ~RefCountedObject();

    /// The current number of references (for diagnostics; it may change at once).
    std::int32_t GetRefCount() const noexcept { return mRefCount.load(std::memory_order_relaxed); }

protected:
    RefCountedObject() noexcept : mRefCount(0), mBeingDestroyed(0), mDeletionGuard(0) {}
    RefCountedObject(RefCountedObject const&) noexcept : RefCountedObject() {}
    RefCountedObject& operator=(RefCountedObject const&) noexcept { return *this; }

    /// While set, releasing the last reference does not delete the object.
    /// The library itself never sets it.
    void SetDeletionGuard(bool inGuard) noexcept { mDeletionGuard = inGuard ? 1 : 0; }

private:
    friend void intrusive_ptr_add_ref(RefCountedObject const* inObject) noexcept;
    friend void intrusive_ptr_release(RefCountedObject const* inObject) noexcept;

    mutable std::atomic<std::int32_t> mRefCount;
    mutable std::uint8_t mBeingDestroyed;
    std::uint8_t mDeletionGuard;
};

/// Adds one reference.
inline void intrusive_ptr_add_ref(RefCountedObject const* inObject) noexcept {
    inObject->mRefCount.fetch_add(1, std::memory_order_relaxed);
}

/// Drops one reference; deletes the object when it was the last one.
inline void intrusive_ptr_release(RefCountedObject const* inObject) noexcept {
    if (inObject->mRefCount.fetch_sub(1, std::memory_order_acq_rel) == 1 && inObject->mBeingDestroyed == 0 &&
        inObject->mDeletionGuard == 0) {
        inObject->mBeingDestroyed = 1;
        delete inObject;
    }
}

}  // namespace utility
}  // namespace quorel

#endif
