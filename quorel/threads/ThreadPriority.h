// Scheduling priorities of threads.
//
// Priorities are applied by a thread to itself, at its start: the executors
// take a ThreadPriority and their worker threads call SetCurrentThreadPriority
// first thing.  Thread itself starts every thread at the priority of the
// thread that creates it.
#ifndef QUOREL_THREADS_THREADPRIORITY_H
#define QUOREL_THREADS_THREADPRIORITY_H

#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace threads {

/// Six levels, from the lowest to the highest.  Any other value means normal.
enum ThreadPriority : std::int32_t {
    kThreadPriority_Idle = 0,         ///< runs only when nothing else wants the processor
    kThreadPriority_Lowest = 1,
    kThreadPriority_BelowNormal = 2,
    kThreadPriority_Normal = 3,       ///< the priority of the process
    kThreadPriority_AboveNormal = 4,
    kThreadPriority_Highest = 5
};

/// Applies inPriority to the calling thread, best effort.  Returns true when
/// the thread now runs at the level asked for, false when the system refused.
/// A refused change is not an error: the thread keeps running at the priority
/// it had, and nothing is reported.
///
/// On Linux the levels are nice values of the thread, relative to "normal":
/// the nice value of the process's main thread when the first priority is
/// applied (so a process started with "nice -n 5" centres its levels on 5):
/// idle 19, lowest +10, below normal +5, normal +0, above normal -5,
/// highest -10, each kept within -20..19.  Lowering a thread's priority always
/// succeeds; raising it back or above normal needs CAP_SYS_NICE or a
/// sufficient RLIMIT_NICE, and is refused otherwise.
QRL_EXPORT bool SetCurrentThreadPriority(ThreadPriority inPriority) noexcept;

}  // namespace threads
}  // namespace quorel

#endif
