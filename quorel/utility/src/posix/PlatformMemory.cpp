#include "../PlatformMemory.h"

#include <cstdlib>

namespace quorel {
namespace utility {
namespace platform {

void* AlignedAllocate(std::size_t inSize, std::size_t inAlignment) noexcept {
    void* block = nullptr;
    // posix_memalign accepts a size of 0 and may return null for it; ask for one
    // byte instead so that every successful call yields a distinct block.
    if (posix_memalign(&block, inAlignment, inSize == 0 ? 1 : inSize) != 0) {
        return nullptr;
    }
    return block;
}

void AlignedFree(void* inBlock) noexcept { std::free(inBlock); }

}  // namespace platform
}  // namespace utility
}  // namespace quorel
