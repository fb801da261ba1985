// A hint to the processor inside a spin-wait loop.
#ifndef QUOREL_THREADS_SRC_CPURELAX_H
#define QUOREL_THREADS_SRC_CPURELAX_H

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace quorel {
namespace threads {

inline void CpuRelax() noexcept {
#if defined(__x86_64__) || defined(__i386__)
    _mm_pause();
#endif
}

}  // namespace threads
}  // namespace quorel

#endif
