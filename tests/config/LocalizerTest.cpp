#include <quorel/config/Localizer.h>
#include <quorel/utility/UnicodeConversion.h>

#include <gtest/gtest.h>

#include <string>

using namespace quorel;
using namespace quorel::config;
using quorel::utility::AsciiToUTF16;

TEST(ClientIdentity, DefaultsThenWhatTheHostSets) {
    // No earlier test of this program calls a setter.
    struct { UTF16String const& (*mGet)(); void (*mSet)(UTF16String const&); char const* mDefault; } const fields[] = {
        {&GetClientName, &SetClientName, "No Client Name"},
        {&GetClientVersion, &SetClientVersion, "No Client Version"},
        {&GetClientInternalVersion, &SetClientInternalVersion, "No Client Internal Version"},
        {&GetClientBuildNumber, &SetClientBuildNumber, "No Client Internal Version"},
        {&GetCompanyName, &SetCompanyName, "No Company Name"},
    };
    for (auto const& field : fields) EXPECT_EQ(field.mGet(), AsciiToUTF16(field.mDefault));
    for (auto const& field : fields) field.mSet(AsciiToUTF16(field.mDefault + 3));  // each its own new value
    for (auto const& field : fields) EXPECT_EQ(field.mGet(), AsciiToUTF16(field.mDefault + 3));
    EXPECT_EQ(GetVersionString(), AsciiToUTF16("2.0.0.Sorrel"));
}

TEST(Localizer, InstallationAndTheTextOfAConstant) {
    EXPECT_FALSE(Localizer::Initialized());
    std::string what;
    try { Localizer::Get(); } catch (std::logic_error const& error) { what = error.what(); }
    EXPECT_EQ(what, "quorel::config::Localizer not initialized. Check quorel/config/Localizer.");
    // Without a localizer: the default text behind the first "=", which may hold "=".
    EXPECT_EQ(GetLocalizedText(kMessage_ContractDialogTitle), AsciiToUTF16("@0 Debug Event"));
    EXPECT_EQ(GetLocalizedText("$$$/a/b=x=y"), AsciiToUTF16("x=y"));
    EXPECT_EQ(GetLocalizedText("no key"), AsciiToUTF16("no key"));

    struct Recording : Localizer {
        UTF16String Localize(char const* inConstant) override {
            mLast = inConstant;
            return AsciiToUTF16("TRANSLATED");
        }
        std::string mLast;
    } localizer;
    Localizer::Set(&localizer);
    EXPECT_TRUE(Localizer::Initialized() && Localizer::Get() == &localizer);
    EXPECT_EQ(GetLocalizedText(kMessage_FileNotFound), AsciiToUTF16("TRANSLATED"));
    EXPECT_EQ(localizer.mLast, kMessage_FileNotFound);  // the whole constant
    Localizer::Set(nullptr);
    EXPECT_FALSE(Localizer::Initialized());
}
