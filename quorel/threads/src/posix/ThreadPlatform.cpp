// The thread primitives on Linux: kernel thread ids, nice values, and the
// compiler's atomic built-ins for plain words.
#include "../ThreadPlatform.h"

#include <cerrno>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quorel {
namespace threads {
namespace platform {

namespace {

constexpr int kNiceMin = -20;
constexpr int kNiceMax = 19;

/// The nice value that stands for normal priority: that of the main thread
/// when the first priority is applied, so that a process started with
/// "nice -n 5" keeps its workers' levels around 5.  On Linux getpriority with
/// PRIO_PROCESS and the process id reads the main thread alone.
int NormalNice() noexcept {
    static int const normal = [] {
        errno = 0;
        int const nice = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::getpid()));
        return (nice == -1 && errno != 0) ? 0 : nice;
    }();
    return normal;
}

int NiceFor(ThreadPriority inPriority) noexcept {
    int const normal = NormalNice();
    int nice = normal;
    switch (inPriority) {
        case kThreadPriority_Idle: return kNiceMax;
        case kThreadPriority_Lowest: nice = normal + 10; break;
        case kThreadPriority_BelowNormal: nice = normal + 5; break;
        case kThreadPriority_Normal: nice = normal; break;
        case kThreadPriority_AboveNormal: nice = normal - 5; break;
        case kThreadPriority_Highest: nice = normal - 10; break;
    }
    return nice < kNiceMin ? kNiceMin : (nice > kNiceMax ? kNiceMax : nice);
}

}  // namespace

int ProcessorCount() noexcept {
    cpu_set_t set;
    CPU_ZERO(&set);
    if (::sched_getaffinity(0, sizeof set, &set) == 0) {
        int const count = CPU_COUNT(&set);
        if (count > 0) {
            return count;
        }
    }
    long const online = ::sysconf(_SC_NPROCESSORS_ONLN);
    return online > 0 ? static_cast<int>(online) : 1;
}

std::uint32_t CurrentThreadID() noexcept { return static_cast<std::uint32_t>(::syscall(SYS_gettid)); }

bool ApplyCurrentThreadPriority(ThreadPriority inPriority) noexcept {
    // Linux keeps a nice value per thread; PRIO_PROCESS with a thread id
    // changes that thread alone.  A refused raise (EACCES, EPERM) leaves the
    // thread as it was.
    int const nice = NiceFor(inPriority);
    return ::setpriority(PRIO_PROCESS, static_cast<id_t>(CurrentThreadID()), nice) == 0;
}

std::int32_t LoadAcquire(std::int32_t const& inWord) noexcept { return __atomic_load_n(&inWord, __ATOMIC_ACQUIRE); }

void StoreRelease(std::int32_t& outWord, std::int32_t inValue) noexcept {
    __atomic_store_n(&outWord, inValue, __ATOMIC_RELEASE);
}

}  // namespace platform
}  // namespace threads
}  // namespace quorel
