#include <quorel/threads/ThreadID.h>

#include "ThreadPlatform.h"

namespace quorel {
namespace threads {

std::uint32_t GetCurrentThreadID() noexcept { return platform::CurrentThreadID(); }

}  // namespace threads
}  // namespace quorel
