#include <quorel/config/Localizer.h>
#include <quorel/utility/UnicodeConversion.h>

namespace quorel {
namespace config {

namespace {

// Each value lives in a function-local static, so it is ready for a host's own
// static initialisers whatever the order of initialisation across modules.  It
// is never destroyed, so a host's static destructors can still read it.
UTF16String& Stored(char const* inInitialText) { return *new UTF16String(utility::AsciiToUTF16(inInitialText)); }

UTF16String& ClientName() {
    static UTF16String& sValue = Stored("No Client Name");
    return sValue;
}
UTF16String& ClientVersion() {
    static UTF16String& sValue = Stored("No Client Version");
    return sValue;
}
UTF16String& ClientInternalVersion() {
    static UTF16String& sValue = Stored("No Client Internal Version");
    return sValue;
}
UTF16String& ClientBuildNumber() {
    static UTF16String& sValue = Stored("No Client Internal Version");
    return sValue;
}
UTF16String& CompanyName() {
    static UTF16String& sValue = Stored("No Company Name");
    return sValue;
}

// Builds the five values while the library loads, as a host expects to find them.
struct LoadTimeInitialisation {
    LoadTimeInitialisation() {
        ClientName();
        ClientVersion();
        ClientInternalVersion();
        ClientBuildNumber();
        CompanyName();
    }
} const sLoadTimeInitialisation;

}  // namespace

UTF16String const& GetClientName() { return ClientName(); }
UTF16String const& GetClientVersion() { return ClientVersion(); }
UTF16String const& GetClientInternalVersion() { return ClientInternalVersion(); }
UTF16String const& GetClientBuildNumber() { return ClientBuildNumber(); }
UTF16String const& GetCompanyName() { return CompanyName(); }

void SetClientName(UTF16String const& inName) { ClientName() = inName; }
void SetClientVersion(UTF16String const& inVersion) { ClientVersion() = inVersion; }
void SetClientInternalVersion(UTF16String const& inVersion) { ClientInternalVersion() = inVersion; }
void SetClientBuildNumber(UTF16String const& inBuildNumber) { ClientBuildNumber() = inBuildNumber; }
void SetCompanyName(UTF16String const& inName) { CompanyName() = inName; }

UTF16String GetVersionString() { return utility::AsciiToUTF16("2.0.0.Sorrel"); }

}  // namespace config
}  // namespace quorel
