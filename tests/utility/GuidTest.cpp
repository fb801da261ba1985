#include <quorel/utility/Guid.h>
#include <quorel/utility/TextStreams.h>
#include <quorel/utility/UnicodeConversion.h>

#include "support/RecordingErrorManager.h"
#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <uuid/uuid.h>

#include <cctype>
#include <cstring>
#include <random>
#include <set>
#include <sstream>
#include <string>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::RecordingErrorManager;
using quorel::testing::ScopedErrorManager;
using quorel::testing::U16;

namespace {

char const kZeroText[] = "00000000-0000-0000-0000-000000000000";
char const kSampleText[] = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";

Guid const kSample(0x6ba7b810, 0x9dad, 0x11d1, 0x80, 0xb4, 0x00, 0xc0, 0x4f, 0xd4, 0x30, 0xc8);

std::string Narrow(UTF16String const& inText) {
    UTF8String const text = UTF16to8(inText);
    return std::string(text.begin(), text.end());
}

void ExpectMalformedReported(RecordingErrorManager const& inManager) {
    ASSERT_EQ(inManager.mCalls.size(), 1u);
    EXPECT_EQ(inManager.mCalls[0].mLevel, config::kErrorLevel_NonFatal);
    EXPECT_EQ(inManager.mCalls[0].mModuleID, 105u);
    EXPECT_EQ(inManager.mCalls[0].mErrorNumber, 28);
    EXPECT_TRUE(inManager.mCalls[0].mDeferrable);
    EXPECT_EQ(inManager.mCalls[0].mMessage, config::kErrorMessage_MalformedGUID);
}

}  // namespace

TEST(Guid, ZeroIsTheDefaultAndHasItsText) {
    ScopedErrorManager manager;
    EXPECT_EQ(Guid(), Guid(kZeroText));
    EXPECT_EQ(Narrow(Guid().AsString()), kZeroText);
    EXPECT_TRUE(manager->mCalls.empty());
}

TEST(Guid, EveryConstructorGivesTheSameValue) {
    ScopedErrorManager manager;
    GuidFields const& fields = kSample.GetGUID();
    EXPECT_EQ(fields.Data1, 0x6ba7b810u);
    EXPECT_EQ(fields.Data2, 0x9dad);
    EXPECT_EQ(fields.Data3, 0x11d1);
    EXPECT_EQ(fields.Data4[0], 0x80);
    EXPECT_EQ(fields.Data4[7], 0xc8);
    EXPECT_EQ(Guid(kSampleText), kSample);
    EXPECT_EQ(Guid(std::string(kSampleText)), kSample);
    EXPECT_EQ(Guid(U16(kSampleText)), kSample);
    EXPECT_EQ(Guid(fields), kSample);
    Guid copy;
    copy = kSample;
    EXPECT_EQ(copy, kSample);
    EXPECT_TRUE(manager->mCalls.empty());
}

TEST(Guid, TextIsLowerCaseWhateverTheInput) {
    EXPECT_EQ(Narrow(Guid("6BA7B810-9DAD-11D1-80B4-00C04FD430C8").AsString()), kSampleText);
    EXPECT_EQ(Narrow(Guid("6bA7b810-9DaD-11d1-80B4-00c04Fd430C8").AsString()), kSampleText);
}

TEST(Guid, MalformedTextIsReportedAndGivesZero) {
    std::string const withNul = std::string(kSampleText).replace(10, 1, 1, '\0');
    std::string const cases[] = {
        "{00000000-0000-0000-0000-000000000000}",
        "00000000-0000-0000-0000-00000000000",    // 35 characters
        "00000000-0000-0000-0000-0000000000000",  // 37
        "0000000g-0000-0000-0000-000000000000",
        "00000000-0000-0000-0000+000000000000",
        "000000000-000-0000-0000-000000000000",
        "",
        withNul,
    };
    for (std::string const& text : cases) {
        ScopedErrorManager manager;
        EXPECT_EQ(Guid(text), Guid()) << text;
        ExpectMalformedReported(*manager);
    }
    {
        ScopedErrorManager manager;
        EXPECT_EQ(Guid(static_cast<char const*>(nullptr)), Guid());
        ExpectMalformedReported(*manager);
    }
    {
        ScopedErrorManager manager;
        EXPECT_EQ(Guid(quorel::testing::U16({'6', 0x00E9})), Guid());
        ExpectMalformedReported(*manager);
    }
}

TEST(Guid, AThrowingManagerStopsTheParse) {
    ScopedErrorManager manager(RecordingErrorManager::kThrow);
    EXPECT_THROW(Guid("not a guid"), quorel::testing::RecordedError);
}

TEST(Guid, ComponentsGoOutAndBackIn) {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::uint8_t d[8] = {};
    Guid::GuidToComponents(kSample, data1, data2, data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
    EXPECT_EQ(Guid(data1, data2, data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]), kSample);
    EXPECT_EQ(d[1], 0xb4);
}

TEST(Guid, OrdersFieldsUnsignedAndData4HalvesSigned) {
    auto withData4 = [](std::uint8_t inByte3, std::uint8_t inByte7) {
        return Guid(1, 2, 3, 0, 0, 0, inByte3, 0, 0, 0, inByte7);
    };
    struct {
        Guid mLess;
        Guid mGreater;
        char const* mWhy;
    } const cases[] = {
        {Guid(0x7fffffff, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9), Guid(0x80000000, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0), "Data1 unsigned"},
        {Guid(1, 0x7fff, 9, 0, 0, 0, 0, 0, 0, 0, 0), Guid(1, 0x8000, 0, 0, 0, 0, 0, 0, 0, 0, 0), "Data2 unsigned"},
        {Guid(1, 2, 0x7fff, 9, 0, 0, 0, 0, 0, 0, 0), Guid(1, 2, 0x8000, 0, 0, 0, 0, 0, 0, 0, 0), "Data3 unsigned"},
        {withData4(0x80, 0), withData4(0x7f, 0), "first half signed, Data4[3] most significant"},
        {Guid(1, 2, 3, 0xff, 0, 0, 0, 0, 0, 0, 0), Guid(1, 2, 3, 0, 1, 0, 0, 0, 0, 0, 0), "Data4[0] least significant"},
        {withData4(0, 0x80), withData4(0, 0x7f), "second half signed"},
        {withData4(0x00, 0x7f), withData4(0x01, 0x00), "first half decides before the second"},
    };
    for (auto const& c : cases) {
        EXPECT_TRUE(c.mLess < c.mGreater) << c.mWhy;
        EXPECT_FALSE(c.mGreater < c.mLess) << c.mWhy;
        EXPECT_TRUE(c.mGreater > c.mLess) << c.mWhy;
        EXPECT_NE(c.mLess, c.mGreater) << c.mWhy;
    }
    EXPECT_FALSE(kSample < kSample);
    EXPECT_FALSE(kSample > kSample);
}

TEST(Guid, RoundTripsThroughNarrowAndUTF16Streams) {
    ScopedErrorManager manager;
    Guid const unique = Guid::CreateUnique();

    std::ostringstream narrowOut;
    narrowOut << kSample << ' ' << unique;
    EXPECT_EQ(narrowOut.str().substr(0, 36), kSampleText);
    std::istringstream narrowIn(narrowOut.str());
    Guid first;
    Guid second;
    narrowIn >> first >> second;
    EXPECT_EQ(first, kSample);
    EXPECT_EQ(second, unique);

    oUTF16StringStream wideOut;
    wideOut << kSample << U16("\t\n") << unique;
    iUTF16StringStream wideIn(wideOut.str());
    Guid third;
    Guid fourth;
    wideIn >> third >> fourth;
    EXPECT_EQ(third, kSample);
    EXPECT_EQ(fourth, unique);
    EXPECT_TRUE(manager->mCalls.empty());

    Guid untouched = kSample;
    EXPECT_FALSE(wideIn >> untouched) << "nothing left to read";
    EXPECT_EQ(untouched, kSample);
    EXPECT_TRUE(manager->mCalls.empty());
}

TEST(Guid, AMalformedWordInAStreamIsReported) {
    ScopedErrorManager manager;
    std::istringstream in("{00000000-0000-0000-0000-000000000000}");
    Guid value = kSample;
    in >> value;
    EXPECT_EQ(value, Guid());
    ExpectMalformedReported(*manager);
}

TEST(Guid, CreateUniqueGivesDistinctRandomValues) {
    ScopedErrorManager manager;
    std::set<Guid, std::less<Guid>> seen;
    for (int i = 0; i < 2000; ++i) {
        Guid const value = Guid::CreateUnique();
        EXPECT_EQ(value.GetGUID().Data3 >> 12, 4) << "version 4";
        EXPECT_EQ(value.GetGUID().Data4[0] & 0xC0, 0x80) << "RFC 4122 variant";
        seen.insert(value);
    }
    EXPECT_EQ(seen.size(), 2000u);
    EXPECT_TRUE(manager->mCalls.empty());
}

// The text form matches libuuid's own printer and parser on random values.
// libuuid is a dependency of the library, so its functions are found in the
// process without linking the test to it.
TEST(Guid, AgreesWithLibuuidOnRandomValues) {
    using Unparse = void (*)(uuid_t const, char*);
    using Parse = int (*)(char const*, uuid_t);
    auto const unparse = reinterpret_cast<Unparse>(dlsym(RTLD_DEFAULT, "uuid_unparse_upper"));
    auto const parse = reinterpret_cast<Parse>(dlsym(RTLD_DEFAULT, "uuid_parse"));
    ASSERT_NE(unparse, nullptr);
    ASSERT_NE(parse, nullptr);

    ScopedErrorManager manager;
    std::mt19937 random(99);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 1000; ++round) {
        uuid_t bytes;
        for (unsigned char& b : bytes) {
            b = static_cast<unsigned char>(byte(random));
        }
        char libuuidText[37];
        unparse(bytes, libuuidText);
        Guid const parsed(libuuidText);
        UTF16String const printed = parsed.AsString();
        uuid_t reparsed;
        ASSERT_EQ(parse(Narrow(printed).c_str(), reparsed), 0);
        EXPECT_EQ(std::memcmp(bytes, reparsed, sizeof bytes), 0) << libuuidText;
        std::string lower = libuuidText;
        for (char& c : lower) {
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        EXPECT_EQ(Narrow(printed), lower);
        EXPECT_EQ(parsed.GetGUID().Data1, (std::uint32_t(bytes[0]) << 24) | (std::uint32_t(bytes[1]) << 16) |
                                              (std::uint32_t(bytes[2]) << 8) | bytes[3]);
        EXPECT_EQ(parsed.GetGUID().Data4[7], bytes[15]);
    }
    EXPECT_TRUE(manager->mCalls.empty());
}
