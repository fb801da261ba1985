#include <quorel/threads/ThreadPriority.h>

#include "ThreadPlatform.h"

namespace quorel {
namespace threads {

bool SetCurrentThreadPriority(ThreadPriority inPriority) noexcept {
    switch (inPriority) {
        case kThreadPriority_Idle:
        case kThreadPriority_Lowest:
        case kThreadPriority_BelowNormal:
        case kThreadPriority_Normal:
        case kThreadPriority_AboveNormal:
        case kThreadPriority_Highest:
            return platform::ApplyCurrentThreadPriority(inPriority);
    }
    // A value outside the six levels stands for normal priority.
    return platform::ApplyCurrentThreadPriority(kThreadPriority_Normal);
}

}  // namespace threads
}  // namespace quorel
