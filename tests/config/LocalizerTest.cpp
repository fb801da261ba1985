#include <quorel/config/Localizer.h>
#include <quorel/utility/UnicodeConversion.h>

#include <gtest/gtest.h>

#include <string>

using namespace quorel;
using namespace quorel::config;
using quorel::utility::AsciiToUTF16;

namespace {

class UpperLocalizer : public Localizer {
public:
    UTF16String Localize(char const* inConstant) override {
        mLast = inConstant;
        return AsciiToUTF16("TRANSLATED");
    }
    std::string mLast;
};

}  // namespace

TEST(ClientIdentity, DefaultsThenWhatTheHostSets) {
    // Runs first in this program (tests run in file order), before any setter.
    EXPECT_EQ(GetClientName(), AsciiToUTF16("No Client Name"));
    EXPECT_EQ(GetClientVersion(), AsciiToUTF16("No Client Version"));
    EXPECT_EQ(GetClientInternalVersion(), AsciiToUTF16("No Client Internal Version"));
    EXPECT_EQ(GetClientBuildNumber(), AsciiToUTF16("No Client Internal Version"));
    EXPECT_EQ(GetCompanyName(), AsciiToUTF16("No Company Name"));

    SetClientName(AsciiToUTF16("Editor"));
    SetClientVersion(AsciiToUTF16("3.1"));
    SetClientInternalVersion(AsciiToUTF16("3.1.0.77"));
    SetClientBuildNumber(AsciiToUTF16("77"));
    SetCompanyName(AsciiToUTF16("Acme"));
    EXPECT_EQ(GetClientName(), AsciiToUTF16("Editor"));
    EXPECT_EQ(GetClientVersion(), AsciiToUTF16("3.1"));
    EXPECT_EQ(GetClientInternalVersion(), AsciiToUTF16("3.1.0.77"));
    EXPECT_EQ(GetClientBuildNumber(), AsciiToUTF16("77"));
    EXPECT_EQ(GetCompanyName(), AsciiToUTF16("Acme"));
    EXPECT_EQ(GetVersionString(), AsciiToUTF16("2.0.0.Sorrel"));
}

TEST(Localizer, InstallationAndTheTextOfAConstant) {
    EXPECT_FALSE(Localizer::Initialized());
    try {
        Localizer::Get();
        FAIL() << "no exception";
    } catch (std::logic_error const& error) {
        EXPECT_STREQ(error.what(), "quorel::config::Localizer not initialized. Check quorel/config/Localizer.");
    }
    // Without a localizer: the default text behind the first "=", which may hold "=".
    EXPECT_EQ(GetLocalizedText(kMessage_ContractDialogTitle), AsciiToUTF16("@0 Debug Event"));
    EXPECT_EQ(GetLocalizedText("$$$/a/b=x=y"), AsciiToUTF16("x=y"));
    EXPECT_EQ(GetLocalizedText("no key"), AsciiToUTF16("no key"));

    UpperLocalizer localizer;
    Localizer::Set(&localizer);
    EXPECT_TRUE(Localizer::Initialized());
    EXPECT_EQ(Localizer::Get(), &localizer);
    EXPECT_EQ(GetLocalizedText(kMessage_FileNotFound), AsciiToUTF16("TRANSLATED"));
    EXPECT_EQ(localizer.mLast, kMessage_FileNotFound);  // the whole constant
    Localizer::Set(nullptr);
    EXPECT_FALSE(Localizer::Initialized());
}
