#include <quorel/utility/UnicodeConversion.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <random>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;
using quorel::testing::U8;

TEST(UnitMappings, SurrogateRangesFullWidthFormsAndWidenedBytes) {
    std::pair<unsigned short, UnicodeSurrogateT> const surrogates[] = {
        {0xD7FF, kUnicodeSurrogate_None}, {0xD800, kUnicodeSurrogate_High}, {0xDBFF, kUnicodeSurrogate_High},
        {0xDC00, kUnicodeSurrogate_Low},  {0xDFFF, kUnicodeSurrogate_Low},  {0xE000, kUnicodeSurrogate_None},
    };
    for (auto const& [unit, type] : surrogates) EXPECT_EQ(UnicodeSurrogate(unit), type) << std::hex << unit;
    // ToNumericCase maps only full-width punctuation and digits.
    std::pair<unsigned short, unsigned short> const cases[] = {
        {0xFF10, '0'}, {0xFF01, '!'}, {0xFF1F, '?'}, {0xFF00, 0xFF00}, {0xFF20, 0xFF20}, {0xFF21, 0xFF21}, {'0', '0'},
    };
    for (auto const& [in, out] : cases) {
        unsigned short unit = in;
        EXPECT_EQ(ToNumericCase(unit), in != out) << std::hex << in;
        EXPECT_EQ(unit, out);
    }
    UTF16String text = U16({0xFF11, 'a', 0xFF0E, 0xFF21});
    EXPECT_TRUE(ToNumericCase(text) && text == U16({'1', 'a', '.', 0xFF21}));
    EXPECT_FALSE(ToNumericCase(text));
    EXPECT_EQ(AsciiToUTF16("caf\xC3\xA9"), U16({'c', 'a', 'f', 0x00E9}));
    EXPECT_EQ(AsciiToUTF16(""), UTF16String());
}

// Invalid UTF-8 ends the result where it starts: no replacement characters,
// nothing behind it.
TEST(UTF8to16, FollowsTheDecodingRulesAndStopsSilently) {
    struct {
        char const* mName;
        UTF8String mInput;
        UTF16String mExpected;
    } const cases[] = {
        {"C0 illegal", U8({'a', 0xC0, 0x80, 'b'}), U16("a")},  {"C1 too", U8({'x', 0xC1, 0xBF}), U16("x")},
        {"cut off", U8({'a', 'b', 0xE2, 0x82}), U16("ab")},      {"stray 80", U8({'a', 0x80}), U16("a")},
        {"a pair", U8({0xF0, 0x9F, 0x98, 0x80}), U16({0xD83D, 0xDE00})},
        {"encoded surrogate", U8({0xED, 0xA0, 0x80}), U16({0xD800})}, {"nul", U8({'a', 0, 'b'}), U16({'a', 0, 'b'})},
        {"two encoded surrogates", U8({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80}), U16({0xD83D, 0xDE00})},
        {"2 bytes", U8({0xC3, 0xA9, 0xDF, 0xBF}), U16({0xE9, 0x7FF})}, {"E0 A0", U8({0xE0, 0xA0, 0x80}), U16({0x800})},
        {"E0 needs A0 or above", U8({'a', 0xE0, 0x9F, 0xBF}), U16("a")},
        {"F0 needs 90 or above", U8({'a', 0xF0, 0x8F, 0xBF, 0xBF}), U16("a")},
        {"F4 stops at 8F", U8({0xF4, 0x8F, 0xBF, 0xBF, 0xF4, 0x90, 0x80, 0x80}), U16({0xDBFF, 0xDFFF})},
        {"F5 and above", U8({'z', 0xF5, 0x80, 0x80, 0x80}), U16("z")}, {"no reading on", U8({0xFF, 'a', 'b'}), U16("")},
        {"3rd byte", U8({'q', 0xE2, 0x82, 0x41}), U16("q")}, {"4th byte", U8({'q', 0xF1, 0x80, 0x80, 0x7F}), U16("q")},
    };
    for (auto const& c : cases) EXPECT_EQ(UTF8to16(c.mInput), c.mExpected) << c.mName;
}

TEST(UTF8to16, LongInputsTakeTheBlockPathsWithoutChangingResults) {
    EXPECT_EQ(UTF8to16(U8(std::string(1000, 'x'))), UTF16String(1000, 'x'));

    // An error in the middle of a long run: the block paths must stop exactly
    // where the rules stop.
    std::string broken = std::string(700, 'y') + "\xC3\xA9" + std::string(37, 'z') + "\xC0" + std::string(300, 'w');
    EXPECT_EQ(UTF8to16(U8(broken)), UTF16String(700, 'y') + U16({0x00E9}) + UTF16String(37, 'z'));

    // Multi-byte text longer than the stack scratch.
    std::string cjk;
    for (int i = 0; i < 400; ++i) cjk += "\xE6\x97\xA5";  // U+65E5
    EXPECT_EQ(UTF8to16(U8(cjk)), UTF16String(400, 0x65E5));
}

TEST(UTF16to8, EncodesPairsAndLoneSurrogatesAndEndsAtANul) {
    struct {
        UTF16String mInput;
        UTF8String mExpected;
    } const cases[] = {
        {U16({0xD83D, 0xDE00}), U8({0xF0, 0x9F, 0x98, 0x80})}, {U16({0xD83D}), U8({0xED, 0xA0, 0xBD})},
        {U16({'a', 0xDE00, 0xD83D, 'b'}), U8({'a', 0xED, 0xB8, 0x80, 0xED, 0xA0, 0xBD, 'b'})},
        {U16({0x00E9, 0x07FF, 0x0800, 0xFFFF}), U8({0xC3, 0xA9, 0xDF, 0xBF, 0xE0, 0xA0, 0x80, 0xEF, 0xBF, 0xBF})},
        {UTF16String(), UTF8String()}, {U16({'a', 'b', 0, 'c', 'd'}), U8({'a', 'b'})},
        {U16({0x20AC, 'b', 0, 0xD83D}), U8({0xE2, 0x82, 0xAC, 'b'})},
        // One to three units keep their presized result: one nul byte for
        // every unit from the nul on.
        {U16({'a', 0, 'b'}), U8({'a', 0, 0})}, {U16({0, 'x'}), U8({0, 0})},
        {U16({0x20AC, 0, 'b'}), U8({0xE2, 0x82, 0xAC})},
    };
    for (auto const& c : cases) EXPECT_EQ(UTF16to8(c.mInput), c.mExpected);

    unsigned short const array[] = {'h', 0x00E9, 0, 'x'};
    EXPECT_EQ(UTF16to8(array), U8({'h', 0xC3, 0xA9}));
    EXPECT_EQ(UTF16to8(static_cast<unsigned short const*>(nullptr)), UTF8String());
}

TEST(UTF16to8, BlocksOfUnitsWithoutTheirHighBitsAreNotTakenForAscii) {
    // U+0400..U+047F have bit 7 and bit 15 clear: a block test that looks at
    // bytes rather than whole units would narrow them to garbage.
    UTF16String const cyrillic = U16({0x041F, 0x0440, 0x0438, 0x0432, 0x0435, 0x0442, 0x0438, 0x043A,
                                      0x0401, 0x0402, 0x0403, 0x0404, 0x0405, 0x0406, 0x0407, 0x0408, 0x0409});
    UTF8String const encoded = UTF16to8(cyrillic);
    ASSERT_EQ(encoded.size(), 2 * cyrillic.size());
    EXPECT_EQ(encoded.substr(0, 4), U8({0xD0, 0x9F, 0xD1, 0x80}));
    EXPECT_EQ(UTF8to16(encoded), cyrillic);
}

TEST(Conversions, RoundTripAnyNulFreeUTF16) {
    std::mt19937 random(20261123);
    // Kinds of unit: ASCII, below U+0800, the rest of the BMP, surrogates
    // (paired or not, in any order).
    unsigned int const first[] = {1, 0x80, 0x800, 0xD800};
    unsigned int const span[] = {0x7F, 0x780, 0xF7FF, 0x800};
    unsigned int const kindOf[] = {0, 0, 0, 0, 1, 2, 2, 3, 3, 3};
    for (int round = 0; round < 2000; ++round) {
        UTF16String text;
        for (int i = static_cast<int>(random() % 701); i > 0; --i) {
            unsigned int const kind = kindOf[random() % 10];
            text.push_back(static_cast<unsigned short>(first[kind] + random() % span[kind]));
        }
        ASSERT_EQ(UTF8to16(UTF16to8(text)), text) << "round " << round;
    }
}
