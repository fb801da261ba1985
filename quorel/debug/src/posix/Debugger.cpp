#include "../Platform.h"

#include <csignal>
#include <cstdio>
#include <cstring>

namespace quorel {
namespace debug {
namespace platform {

bool IsDebuggerAttached() noexcept {
    // A traced process shows its tracer's process id in /proc/self/status.
    std::FILE* status = std::fopen("/proc/self/status", "r");
    if (status == nullptr) {
        return false;
    }
    bool attached = false;
    char line[256];
    while (std::fgets(line, sizeof line, status) != nullptr) {
        if (std::strncmp(line, "TracerPid:", 10) == 0) {
            int tracer = 0;
            attached = std::sscanf(line + 10, "%d", &tracer) == 1 && tracer != 0;
            break;
        }
    }
    std::fclose(status);
    return attached;
}

void TrapToDebugger() noexcept { std::raise(SIGTRAP); }

}  // namespace platform
}  // namespace debug
}  // namespace quorel
