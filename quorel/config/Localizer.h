// Translation of message constants, and the identity of the host application.
//
// The library holds no translated text.  A message constant carries its own
// key and English default ("$$$/key=default"); a host may install a Localizer
// that turns such a constant into the user's language.  The client identity
// strings name the host in dialogs, log-file names and per-application folders.
#ifndef QUOREL_CONFIG_LOCALIZER_H
#define QUOREL_CONFIG_LOCALIZER_H

#include <quorel/config/Messages.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <boost/noncopyable.hpp>

namespace quorel {
namespace config {

/// The host's translator of message constants.  Localize is called on
/// whatever thread needs a text, so an implementation must be free-threaded.
/// A Localizer that knows no translation should return the default text
/// behind the first "=".
class QRL_EXPORT Localizer : public boost::noncopyable {
public:
    /// The installed instance; throws std::logic_error when none is installed.
    static Localizer* Get();
    /// Installs an instance (no ownership taken); null uninstalls.
    static void Set(Localizer* inLocalizer);
    /// True while an instance is installed.
    static bool Initialized();

    Localizer();
    virtual ~Localizer();

    /// Translates a whole message constant ("$$$/key=default text").
    virtual UTF16String Localize(char const* inConstant) = 0;

private:
    static Localizer* S_localizerP;
};

/// The text of a message constant as the library shows it: the installed
/// Localizer's translation, or without one the default text behind the first
/// "=" (the whole constant when it has no "=").
QRL_EXPORT UTF16String GetLocalizedText(char const* inConstant);

// Client identity.  Plain data without a lock: set it at start-up, before other
// threads read it.  The getters return references into the stored strings.

QRL_EXPORT UTF16String const& GetClientName();             ///< initially "No Client Name"
QRL_EXPORT UTF16String const& GetClientVersion();          ///< initially "No Client Version"
QRL_EXPORT UTF16String const& GetClientInternalVersion();  ///< initially "No Client Internal Version"
QRL_EXPORT UTF16String const& GetClientBuildNumber();      ///< initially "No Client Internal Version"
QRL_EXPORT UTF16String const& GetCompanyName();            ///< initially "No Company Name"

QRL_EXPORT void SetClientName(UTF16String const& inName);
QRL_EXPORT void SetClientVersion(UTF16String const& inVersion);
QRL_EXPORT void SetClientInternalVersion(UTF16String const& inVersion);
QRL_EXPORT void SetClientBuildNumber(UTF16String const& inBuildNumber);
QRL_EXPORT void SetCompanyName(UTF16String const& inName);

/// The library's own version: "2.0.0.Sorrel".
QRL_EXPORT UTF16String GetVersionString();

}  // namespace config
}  // namespace quorel

#endif
