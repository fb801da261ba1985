#include <quorel/utility/CodeUnitFacets.h>
#include <quorel/utility/Locale.h>
#include <quorel/utility/TextStreams.h>

#include <stdexcept>

namespace quorel {
namespace Locale {

namespace {

// The environment's locale, or "C" when the environment names one that the
// system doesn't have.
std::locale EnvironmentLocale() {
    try {
        return std::locale("");
    } catch (std::runtime_error const&) {
        return std::locale::classic();
    }
}

// Built while the library loads.
[[maybe_unused]] std::locale const& gNativeAtLoad = Native();

// Reads one double in the locale of ioStream.  A reading that fails counts as
// 0.0, also where the extraction stored a value (after an overflow, or beside
// digit grouping that doesn't match the locale's, as "3.5" where "." groups
// thousands).
double ReadValue(iUTF16StringStream& ioStream) {
    double value = 0.0;
    ioStream >> value;
    return ioStream.fail() ? 0.0 : value;
}

}  // namespace

std::locale const& Native() {
    static std::locale const native = utility::WithCodeUnitFacets(EnvironmentLocale());
    return native;
}

std::locale const& Default() {
    static std::locale const standard = utility::WithCodeUnitFacets(std::locale::classic());
    return standard;
}

double GetValueFromDisplayString(UTF16String const& inText) { return GetValueFromDisplayString(inText, Native()); }

double GetValueFromDisplayString(UTF16String const& inText, std::locale const& inNative) {
    if (inText.empty()) {
        return 0.0;
    }
    iUTF16StringStream nativeStream(inText);
    nativeStream.imbue(inNative);
    double const native = ReadValue(nativeStream);

    iUTF16StringStream standardStream(inText);
    double const standard = ReadValue(standardStream);

    if (native > 0.0 && standard > 0.0) {
        return native > standard ? native : standard;
    }
    if (native < 0.0 && standard < 0.0) {
        return native < standard ? native : standard;
    }
    return standard;
}

}  // namespace Locale
}  // namespace quorel
