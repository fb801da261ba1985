#include <quorel/utility/SmallBlockAllocator.h>

#include "PlatformMemory.h"

namespace quorel {
namespace utility {
namespace SmallBlockAllocator {

namespace {
constexpr std::size_t kAlignment = 16;
}

void* Allocate(unsigned int inSize) { return platform::AlignedAllocate(inSize, kAlignment); }

void Dispose(void* inBlock, unsigned int /*inSize*/) { platform::AlignedFree(inBlock); }

unsigned int GetActualAllocationSize(unsigned int inSize) { return inSize; }

bool Metrics::GetSnapshot(Snapshot& /*outSnapshot*/) { return false; }

}  // namespace SmallBlockAllocator
}  // namespace utility
}  // namespace quorel
