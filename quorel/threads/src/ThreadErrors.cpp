#include <quorel/threads/ThreadErrors.h>

#include <quorel/config/ErrorMessages.h>
#include <quorel/config/Errors.h>

namespace quorel {
namespace threads {

void ReportNotEnoughThreadResources() {
    config::ThrowError(config::kErrorLevel_NonFatal, config::kErrorMessage_NotEnoughThreadResources,
                       config::kErrorModule_Threads, config::kErrorNumber_NotEnoughThreadResources, true,
                       config::ReplacementValue(), config::ReplacementValue(), config::ReplacementValue(),
                       config::ReplacementValue());
}

void ReportFailedToAcquireThreadLock() {
    config::ThrowError(config::kErrorLevel_NonFatal, config::kErrorMessage_FailedToAcquireThreadLock,
                       config::kErrorModule_Threads, config::kErrorNumber_FailedToAcquireThreadLock, true,
                       config::ReplacementValue(), config::ReplacementValue(), config::ReplacementValue(),
                       config::ReplacementValue());
}

}  // namespace threads
}  // namespace quorel
