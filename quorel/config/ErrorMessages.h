// The errors that the library reports through ThrowError: module identifiers,
// error numbers and message constants ("$$$/" key "=" English default text).
#ifndef QUOREL_CONFIG_ERRORMESSAGES_H
#define QUOREL_CONFIG_ERRORMESSAGES_H

#include <cstdint>

namespace quorel {
namespace config {

// Module identifiers: which subsystem raises an error.
constexpr std::uint32_t kErrorModule_Config = 100;
constexpr std::uint32_t kErrorModule_PropList = 104;
constexpr std::uint32_t kErrorModule_Utility = 105;
constexpr std::uint32_t kErrorModule_Threads = 106;
constexpr std::uint32_t kErrorModule_Geom = 107;
/// What a fresh DeferredErrorReporter holds before any error came in.
constexpr std::uint32_t kErrorModule_NoError = 110;

// Module 100 (config): the errors of TestThrowError.
constexpr std::int32_t kErrorNumber_NonFatalTest = 20;
constexpr std::int32_t kErrorNumber_FatalTest = 21;
inline constexpr char kErrorMessage_NonFatalTest[] =
    "$$$/qrl/config/Error/test/nonfataltest=This is a non-fatal exception. int:^1, uint:^2, double:^3";
inline constexpr char kErrorMessage_FatalTest[] = "$$$/qrl/config/Error/test/fataltest=This is a fatal exception.";

// Module 104 (proplist).
constexpr std::int32_t kErrorNumber_PropListVersionGreaterThan = 20;
constexpr std::int32_t kErrorNumber_MissingParserFactory = 21;
constexpr std::int32_t kErrorNumber_ParsingPropertiesList = 22;
inline constexpr char kErrorMessage_PropListVersionGreaterThan[] =
    "$$$/qrl/proplist/Error/PropListXMLHandler/VersionGreaterThan="
    "Cannot read PropList data; version greater than expected.";
inline constexpr char kErrorMessage_MissingParserFactory[] =
    "$$$/qrl/proplist/Error/PropListUtils/MissingParserFactory=Missing XML Parser Factory.";
inline constexpr char kErrorMessage_ParsingPropertiesList[] =
    "$$$/qrl/proplist/Error/PropListUtils/ParsingPropertiesList=Error parsing properties list.";

// Module 105 (utility).
constexpr std::int32_t kErrorNumber_InputContractViolation = 25;
constexpr std::int32_t kErrorNumber_CouldntCreateGUID = 27;
constexpr std::int32_t kErrorNumber_MalformedGUID = 28;
constexpr std::int32_t kErrorNumber_StringToGUIDFailed = 29;
inline constexpr char kErrorMessage_InputContractViolation[] =
    "$$$/qrl/utility/Error/Contract/InputContractViolation=An input contract violation has occurred!";
inline constexpr char kErrorMessage_CouldntCreateGUID[] = "$$$/qrl/utility/Error/CouldntCreateGUID=Couldn't create Guid.";
inline constexpr char kErrorMessage_MalformedGUID[] = "$$$/qrl/utility/Error/MalformedGUID=Malformed Guid string.";
inline constexpr char kErrorMessage_StringToGUIDFailed[] =
    "$$$/qrl/utility/Error/StringToGUIDFailed=String to GUID failed.";

// Module 106 (threads).
constexpr std::int32_t kErrorNumber_NotEnoughThreadResources = 20;
constexpr std::int32_t kErrorNumber_FailedToAcquireThreadLock = 21;
inline constexpr char kErrorMessage_NotEnoughThreadResources[] =
    "$$$/qrl/threads/Error/NotEnoughThreadResources=Not enough thread resources.";
inline constexpr char kErrorMessage_FailedToAcquireThreadLock[] =
    "$$$/qrl/threads/Error/FailedToAcquireThreadLock=Failure to acquire thread lock.";

// Module 107 (geom).
constexpr std::int32_t kErrorNumber_MatrixNotInvertible = 0;
inline constexpr char kErrorMessage_MatrixNotInvertible[] = "$$$/qrl/geom/matrix/UI=Matrix cannot be inverted.";

}  // namespace config
}  // namespace quorel

#endif
