// The aligned allocation of the runtime, behind one small internal interface so
// that each platform supplies its own.
#ifndef QUOREL_UTILITY_SRC_PLATFORMMEMORY_H
#define QUOREL_UTILITY_SRC_PLATFORMMEMORY_H

#include <cstddef>

namespace quorel {
namespace utility {
namespace platform {

/// A block of inSize bytes aligned to inAlignment (a power of two, at least the
/// size of a pointer), or null when memory is exhausted.
void* AlignedAllocate(std::size_t inSize, std::size_t inAlignment) noexcept;

/// Releases a block of AlignedAllocate; null is ignored.
void AlignedFree(void* inBlock) noexcept;

}  // namespace platform
}  // namespace utility
}  // namespace quorel

#endif
