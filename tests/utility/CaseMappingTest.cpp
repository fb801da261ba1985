#include <quorel/utility/CaseMapping.h>
#include <quorel/utility/TextUtils.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;

namespace {

// The units that have an entry: the BMP code points with a case mapping in Unicode 3.0.
char const kKeyRanges[] =
    "0041-005A 0061-007A 00B5 00C0-00D6 00D8-00F6 00F8-0137 0139-017F 0181-018C 018E-0199 019C-019D "
    "019F-01A9 01AC-01B9 01BC-01BD 01BF 01C4-021F 0222-0233 0253-0254 0256-0257 0259 025B 0260 0263 "
    "0268-0269 026F 0272 0275 0280 0283 0288 028A-028B 0292 0345 0386 0388-038A 038C 038E-03A1 03A3-03CE "
    "03D0-03D1 03D5-03D6 03DA-03F2 0400-0481 048C-04BF 04C1-04C4 04C7-04C8 04CB-04CC 04D0-04F5 04F8-04F9 "
    "0531-0556 0561-0587 1E00-1E9B 1EA0-1EF9 1F00-1F15 1F18-1F1D 1F20-1F45 1F48-1F4D 1F50-1F57 1F59 1F5B "
    "1F5D 1F5F-1F7D 1F80-1FB4 1FB6-1FBC 1FBE 1FC2-1FC4 1FC6-1FCC 1FD0-1FD3 1FD6-1FDB 1FE0-1FEC 1FF2-1FF4 "
    "1FF6-1FFC 2126 212A-212B 2160-217F 24B6-24E9 FB00-FB06 FB13-FB17 FF21-FF3A FF41-FF5A";

std::set<unsigned short> Keys() {
    std::set<unsigned short> keys;
    std::istringstream ranges(kKeyRanges);
    for (std::string range; ranges >> range;) {
        unsigned int first = 0, last = 0;
        if (std::sscanf(range.c_str(), "%x-%x", &first, &last) == 1) last = first;
        for (unsigned int unit = first; unit <= last; ++unit) keys.insert(static_cast<unsigned short>(unit));
    }
    return keys;
}

struct Forms { UTF16String mLower, mUpper, mFolded; };

Forms Map(unsigned short inUnit) {
    UTF16String const unit(1, inUnit);
    return {LowerCase(unit), UpperCase(unit), FoldCase(unit)};
}

// Fields of the data lines of a Unicode Character Database file.
std::vector<std::vector<std::string>> ReadData(char const* inName) {
    std::ifstream file(std::string(QUOREL_UNICODE_DATA_DIR) + "/" + inName);
    std::vector<std::vector<std::string>> lines;
    for (std::string line; std::getline(file, line);) {
        std::istringstream parts(line.substr(0, line.find('#')));
        std::vector<std::string> fields;
        for (std::string field; std::getline(parts, field, ';');) {
            field.erase(0, field.find_first_not_of(' '));
            field.erase(field.find_last_not_of(' ') + 1);
            fields.push_back(field);
        }
        if (fields.size() > 1) lines.push_back(fields);
    }
    return lines;
}

UTF16String CodePoints(std::string const& inField) {
    UTF16String result;
    std::istringstream points(inField);
    std::string point;
    while (points >> point) result.push_back(static_cast<unsigned short>(std::stoul(point, nullptr, 16)));
    return result;
}

}  // namespace

// Every one of the 65,536 units against the Unicode data files: the keys are
// exactly those of Unicode 3.0 and map as the data says, but for eight
// deliberate values; every other unit maps to itself.
TEST(CaseTable, AgreesWithTheUnicodeDataForTheUnicode30KeysAndNothingElse) {
    std::map<unsigned short, Forms> expected;
    for (unsigned short key : Keys()) expected[key] = {UTF16String(1, key), UTF16String(1, key), UTF16String(1, key)};
    ASSERT_EQ(expected.size(), 1446u);
    auto const formsOf = [&](std::string const& inField) -> Forms* {
        unsigned long const cp = std::stoul(inField, nullptr, 16);
        auto const found = cp <= 0xFFFF ? expected.find(static_cast<unsigned short>(cp)) : expected.end();
        return found == expected.end() ? nullptr : &found->second;
    };
    std::vector<std::vector<std::string>> const unicodeData = ReadData("UnicodeData.txt");
    ASSERT_GT(unicodeData.size(), 30000u) << "install the Debian package unicode-data";
    for (auto const& fields : unicodeData) {
        if (Forms* forms = formsOf(fields[0])) {
            if (!fields[12].empty()) forms->mUpper = CodePoints(fields[12]);
            if (!fields[13].empty()) forms->mLower = CodePoints(fields[13]);
        }
    }
    for (auto const& fields : ReadData("SpecialCasing.txt")) {
        bool const conditional = fields.size() > 4 && !fields[4].empty();
        if (Forms* forms = conditional ? nullptr : formsOf(fields[0])) forms->mUpper = CodePoints(fields[3]);
    }
    for (auto const& fields : ReadData("CaseFolding.txt")) {
        Forms* forms = (fields[1] == "C" || fields[1] == "F") ? formsOf(fields[0]) : nullptr;
        if (forms != nullptr) forms->mFolded = CodePoints(fields[2]);
    }
    // The table's deliberate differences: all sigmas fold to the final sigma,
    // the Turkish i's fold (and U+0130 lower-cases) to plain i, and U+03F2
    // upper-cases to the capital sigma.
    expected[0x0130].mLower = expected[0x0130].mFolded = expected[0x0131].mFolded = U16("i");
    for (unsigned short sigma : {0x03A3, 0x03C2, 0x03C3, 0x03F2}) expected[sigma].mFolded = U16({0x03C2});
    expected[0x03F2].mUpper = U16({0x03A3});

    std::size_t multiUnit = 0;
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        UTF16String const self(1, static_cast<unsigned short>(unit));
        auto const found = expected.find(static_cast<unsigned short>(unit));
        Forms const forms = found != expected.end() ? found->second : Forms{self, self, self};
        Forms const actual = Map(static_cast<unsigned short>(unit));
        ASSERT_EQ(actual.mLower, forms.mLower) << "lower " << std::hex << unit;
        ASSERT_EQ(actual.mUpper, forms.mUpper) << "upper " << std::hex << unit;
        ASSERT_EQ(actual.mFolded, forms.mFolded) << "folded " << std::hex << unit;
        multiUnit += (actual.mUpper.size() > 1 || actual.mFolded.size() > 1) ? 1 : 0;
    }
    EXPECT_EQ(multiUnit, 102u);
    // Later Unicode versions gave these units mappings; the table has none.
    for (unsigned short later : {0x0220, 0x019E, 0x03D8, 0x03D9, 0x03F4, 0x03F5, 0x048A, 0x0500}) {
        Forms const forms = Map(later);
        EXPECT_EQ(forms.mLower + forms.mUpper + forms.mFolded, UTF16String(3, later)) << std::hex << later;
    }
}

TEST(CaseOperations, MapUnitByUnitWithoutContext) {
    struct {
        UTF16String (*mMap)(UTF16String const&);
        UTF16String mIn, mOut;
    } const cases[] = {
        // No final-sigma rule: a capital sigma at a word's end lower-cases to U+03C3.
        {LowerCase, U16({0x039F, 0x03A3}), U16({0x03BF, 0x03C3})},
        // Surrogates and unmapped units pass through, mixed with expanding ones.
        {UpperCase, U16({0xD83D, 0xDE00, 0x00DF, 'a', 0xFB03, 0x4E2D}),
         U16({0xD83D, 0xDE00, 'S', 'S', 'A', 'F', 'F', 'I', 0x4E2D})},
        {FoldCase, U16({'A', 0x00DF, 0x0130, 0x03A3, 'z'}), U16({'a', 's', 's', 'i', 0x03C2, 'z'})},
    };
    for (auto const& c : cases) EXPECT_EQ(c.mMap(c.mIn), c.mOut);

    // Many expanding units in a row make the result grow several times.
    UTF16String const grown = UpperCase(UTF16String(500, 0xFB03));  // "ffi"
    ASSERT_EQ(grown.size(), 1500u);
    EXPECT_EQ(grown.substr(1497), U16("FFI"));

    UTF16String upper = U16({'a', 0x00DF}), lower = U16({'A', 0x03A3}), folded = U16({0x03A3});
    ToUpperCase(upper);
    ToLowerCase(lower);
    ToFoldCase(folded);
    EXPECT_TRUE(upper == U16("ASS") && lower == U16({'a', 0x03C3}) && folded == U16({0x03C2}));
}

TEST(CaseOperationsDeathStyle, FirstBuildIsSafeWhenThreadsRace) {
    // Runs in a fresh copy of the test program, where no case operation has
    // built the table yet, so the threads really race for the first build.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::vector<std::thread> threads;
            std::atomic<int> good{0};
            for (int t = 0; t < 8; ++t) {
                threads.emplace_back([&good] {
                    good += UpperCase(U16({0x00DF, 0x03C3})) == U16({'S', 'S', 0x03A3}) &&
                            FoldCase(U16({0x0130})) == U16("i");
                });
            }
            for (std::thread& thread : threads) thread.join();
            std::exit(good == 8 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ValidateForHex, UpperCasesFirstThenKeepsHexDigits) {
    UTF16String text = U16("0x1fG"), wide = U16({0xFB00, 0xFF21, '9', ' ', 'e'});  // "ff" ligature, full-width A
    ValidateForHex(text);
    ValidateForHex(wide);
    EXPECT_TRUE(text == U16("01F") && wide == U16("FF9E"));
}
