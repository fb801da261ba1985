#include <quorel/utility/Guid.h>
#include <quorel/utility/TextStreams.h>

#include "support/RecordingErrorManager.h"
#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <uuid/uuid.h>

#include <cctype>
#include <random>
#include <set>
#include <sstream>
#include <string>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;

namespace {

char const kSampleText[] = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";

Guid const kSample(0x6ba7b810, 0x9dad, 0x11d1, 0x80, 0xb4, 0x00, 0xc0, 0x4f, 0xd4, 0x30, 0xc8);

// Each test runs with a recording error manager; most expect it to stay silent,
// so no other Guid error (couldn't create, couldn't format) goes unnoticed.
class GuidTest : public ::testing::Test {
protected:
    void ExpectMalformed(Guid const& inValue, std::string const& inWhat = "") {
        EXPECT_EQ(inValue, Guid()) << inWhat;
        ASSERT_EQ(mManager->mCalls.size(), 1u) << inWhat;
        quorel::testing::RecordedCall const& call = mManager->mCalls[0];
        EXPECT_TRUE(call.mLevel == config::kErrorLevel_NonFatal && call.mModuleID == 105u && call.mErrorNumber == 28 &&
                    call.mDeferrable && call.mMessage == config::kErrorMessage_MalformedGUID);
        mManager->mCalls.clear();
    }
    void TearDown() override { EXPECT_TRUE(mManager->mCalls.empty()); }

    quorel::testing::ScopedErrorManager mManager;
};

}  // namespace

TEST_F(GuidTest, EveryConstructorGivesTheSameValueAndTheTextIsLowerCase) {
    EXPECT_EQ(Guid().AsString(), U16("00000000-0000-0000-0000-000000000000"));
    for (Guid const& same : {Guid(kSampleText), Guid(std::string(kSampleText)), Guid(U16(kSampleText)),
                             Guid(kSample.GetGUID()), Guid("6BA7B810-9DAD-11D1-80B4-00C04FD430C8")}) {
        EXPECT_TRUE(same == kSample && same.AsString() == U16(kSampleText));
    }
    GuidFields f{};
    std::uint8_t* const d = f.Data4;
    Guid::GuidToComponents(kSample, f.Data1, f.Data2, f.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
    EXPECT_EQ(Guid(f), kSample);
}

TEST_F(GuidTest, MalformedTextIsReportedAndGivesZero) {
    std::string const cases[] = {
        "{00000000-0000-0000-0000-000000000000}", "",
        "00000000-0000-0000-0000-00000000000",  "00000000-0000-0000-0000-0000000000000",  // 35 and 37 characters
        "0000000g-0000-0000-0000-000000000000", "00000000-0000-0000-0000+000000000000",
        "000000000-000-0000-0000-000000000000", std::string(kSampleText).replace(10, 1, 1, '\0'),
    };
    for (std::string const& text : cases) ExpectMalformed(Guid(text), text);
    ExpectMalformed(Guid(static_cast<char const*>(nullptr)));
    ExpectMalformed(Guid(quorel::testing::U16({'6', 0x00E9})));
    std::istringstream in("{00000000-0000-0000-0000-000000000000}");
    Guid value = kSample;
    in >> value;
    ExpectMalformed(value, "streamed in");

    mManager->mReaction = quorel::testing::RecordingErrorManager::kThrow;
    EXPECT_THROW(Guid("not a guid"), quorel::testing::RecordedError);
    mManager->mCalls.clear();
}

TEST(Guid, OrdersFieldsUnsignedAndData4HalvesSigned) {
    auto withData4 = [](std::uint8_t inB3, std::uint8_t inB7) { return Guid(1, 2, 3, 0, 0, 0, inB3, 0, 0, 0, inB7); };
    std::pair<Guid, Guid> const lessAndGreater[] = {
        {Guid(0x7fffffff, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9), Guid(0x80000000, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)},  // unsigned
        {Guid(1, 0x7fff, 9, 0, 0, 0, 0, 0, 0, 0, 0), Guid(1, 0x8000, 0, 0, 0, 0, 0, 0, 0, 0, 0)},
        {Guid(1, 2, 0x7fff, 9, 0, 0, 0, 0, 0, 0, 0), Guid(1, 2, 0x8000, 0, 0, 0, 0, 0, 0, 0, 0)},
        {withData4(0x80, 0), withData4(0x7f, 0)},  // the first half signed, Data4[3] most significant
        {Guid(1, 2, 3, 0xff, 0, 0, 0, 0, 0, 0, 0), Guid(1, 2, 3, 0, 1, 0, 0, 0, 0, 0, 0)},  // Data4[0] least
        {withData4(0, 0x80), withData4(0, 0x7f)},     // the second half signed
        {withData4(0x00, 0x7f), withData4(0x01, 0x00)},  // the first half decides before the second
    };
    for (auto const& [less, greater] : lessAndGreater) {
        EXPECT_TRUE(less < greater && greater > less && less != greater && !(greater < less || less > greater));
    }
    EXPECT_FALSE(kSample < kSample || kSample > kSample);
}

TEST_F(GuidTest, RoundTripsThroughNarrowAndUTF16Streams) {
    Guid const unique = Guid::CreateUnique();
    std::ostringstream narrowOut;
    oUTF16StringStream wideOut;
    narrowOut << kSample << ' ' << unique;
    wideOut << kSample << U16("\t\n") << unique;
    std::istringstream narrowIn(narrowOut.str());
    iUTF16StringStream wideIn(wideOut.str());
    Guid read[4];
    narrowIn >> read[0] >> read[1];
    wideIn >> read[2] >> read[3];
    EXPECT_TRUE(read[0] == kSample && read[1] == unique && read[2] == kSample && read[3] == unique);
    Guid untouched = kSample;
    EXPECT_TRUE(!(wideIn >> untouched) && untouched == kSample) << "nothing left to read";
}

TEST_F(GuidTest, CreateUniqueGivesDistinctRandomValuesOfVersion4) {
    std::set<Guid, std::less<Guid>> seen;
    for (int i = 0; i < 2000; ++i) {
        Guid const value = Guid::CreateUnique();
        EXPECT_TRUE(seen.insert(value).second && value.GetGUID().Data3 >> 12 == 4 &&
                    (value.GetGUID().Data4[0] & 0xC0) == 0x80) << "distinct, version 4, RFC 4122 variant";
    }
}

// Upper-case text of random values reads back as libuuid prints them, with the
// fields following the bytes in order.  libuuid is a dependency of the library,
// so its functions are found in the process without linking the test to it.
TEST_F(GuidTest, AgreesWithLibuuidOnRandomValues) {
    auto const unparse = reinterpret_cast<void (*)(uuid_t const, char*)>(dlsym(RTLD_DEFAULT, "uuid_unparse_lower"));
    ASSERT_NE(unparse, nullptr);
    std::mt19937 random(99);
    for (int round = 0; round < 1000; ++round) {
        uuid_t bytes;
        for (unsigned char& b : bytes) b = static_cast<unsigned char>(random());
        char text[37];
        unparse(bytes, text);
        std::string upper = text;
        for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        GuidFields const fields = Guid(upper).GetGUID();
        EXPECT_EQ(Guid(fields).AsString(), U16(text));
        EXPECT_TRUE(fields.Data1 == (std::uint32_t(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3]) &&
                    fields.Data4[7] == bytes[15]);
    }
}
