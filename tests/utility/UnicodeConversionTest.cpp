#include <quorel/utility/UnicodeConversion.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <random>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;
using quorel::testing::U8;

TEST(UnicodeSurrogate, ClassifiesTheBoundariesOfBothRanges) {
    EXPECT_EQ(UnicodeSurrogate(0xD7FF), kUnicodeSurrogate_None);
    EXPECT_EQ(UnicodeSurrogate(0xD800), kUnicodeSurrogate_High);
    EXPECT_EQ(UnicodeSurrogate(0xDBFF), kUnicodeSurrogate_High);
    EXPECT_EQ(UnicodeSurrogate(0xDC00), kUnicodeSurrogate_Low);
    EXPECT_EQ(UnicodeSurrogate(0xDFFF), kUnicodeSurrogate_Low);
    EXPECT_EQ(UnicodeSurrogate(0xE000), kUnicodeSurrogate_None);
}

TEST(ToNumericCase, MapsOnlyFullWidthPunctuationAndDigits) {
    unsigned short unit = 0xFF10;
    EXPECT_TRUE(ToNumericCase(unit));
    EXPECT_EQ(unit, '0');
    for (unsigned short outside : {0xFF00, 0xFF20, 0xFF21, 0x0030}) {
        unit = outside;
        EXPECT_FALSE(ToNumericCase(unit)) << std::hex << outside;
        EXPECT_EQ(unit, outside);
    }
    unit = 0xFF01;
    EXPECT_TRUE(ToNumericCase(unit));
    EXPECT_EQ(unit, '!');
    unit = 0xFF1F;
    EXPECT_TRUE(ToNumericCase(unit));
    EXPECT_EQ(unit, '?');

    UTF16String text = U16({0xFF11, 'a', 0xFF0E, 0xFF21});
    EXPECT_TRUE(ToNumericCase(text));
    EXPECT_EQ(text, U16({'1', 'a', '.', 0xFF21}));
    EXPECT_FALSE(ToNumericCase(text));
}

struct DecodeCase {
    char const* mName;
    UTF8String mInput;
    UTF16String mExpected;
};

TEST(UTF8to16, FollowsTheDecodingRulesAndStopsSilently) {
    DecodeCase const cases[] = {
        {"illegal C0 stops", U8({'a', 0xC0, 0x80, 'b'}), U16("a")},
        {"C1 is illegal too", U8({'x', 0xC1, 0xBF}), U16("x")},
        {"cut-off sequence", U8({'a', 'b', 0xE2, 0x82}), U16("ab")},
        {"four bytes give a pair", U8({0xF0, 0x9F, 0x98, 0x80}), U16({0xD83D, 0xDE00})},
        {"encoded surrogate accepted", U8({0xED, 0xA0, 0x80}), U16({0xD800})},
        {"two encoded surrogates", U8({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80}), U16({0xD83D, 0xDE00})},
        {"embedded nul kept", U8({'a', 0, 'b'}), U16({'a', 0, 'b'})},
        {"two bytes", U8({0xC3, 0xA9, 0xDF, 0xBF}), U16({0x00E9, 0x07FF})},
        {"E0 needs A0 or above", U8({'a', 0xE0, 0x9F, 0xBF}), U16("a")},
        {"E0 A0 is fine", U8({0xE0, 0xA0, 0x80}), U16({0x0800})},
        {"F0 needs 90 or above", U8({'a', 0xF0, 0x8F, 0xBF, 0xBF}), U16("a")},
        {"F4 stops at 8F", U8({0xF4, 0x8F, 0xBF, 0xBF, 0xF4, 0x90, 0x80, 0x80}), U16({0xDBFF, 0xDFFF})},
        {"F5 and above illegal", U8({'z', 0xF5, 0x80, 0x80, 0x80}), U16("z")},
        {"stray continuation", U8({'a', 0x80}), U16("a")},
        {"third byte must continue", U8({'q', 0xE2, 0x82, 0x41}), U16("q")},
        {"fourth byte must continue", U8({'q', 0xF1, 0x80, 0x80, 0x7F}), U16("q")},
        {"nothing behind the stop is read", U8({0xFF, 'a', 'b', 'c'}), U16("")},
    };
    for (DecodeCase const& c : cases) {
        EXPECT_EQ(UTF8to16(c.mInput), c.mExpected) << c.mName;
    }
}

TEST(UTF8to16, LongInputsTakeTheBlockPathsWithoutChangingResults) {
    // 1,000 ASCII bytes, then an error in the middle of a long run: the fast
    // ASCII path must stop exactly where the scalar rules stop.
    std::string ascii(1000, 'x');
    UTF16String const wide = UTF8to16(U8(ascii));
    ASSERT_EQ(wide.size(), 1000u);
    EXPECT_EQ(wide.find_first_not_of(static_cast<unsigned short>('x')), UTF16String::npos);

    std::string broken = std::string(700, 'y') + "\xC3\xA9" + std::string(37, 'z') + "\xC0" + std::string(300, 'w');
    UTF16String const stopped = UTF8to16(U8(broken));
    ASSERT_EQ(stopped.size(), 700u + 1 + 37);
    EXPECT_EQ(stopped[700], 0x00E9);
    EXPECT_EQ(stopped.back(), 'z');

    // Multi-byte text longer than the stack scratch.
    std::string cjk;
    for (int i = 0; i < 400; ++i) {
        cjk += "\xE6\x97\xA5";  // U+65E5
    }
    UTF16String const ideographs = UTF8to16(U8(cjk));
    ASSERT_EQ(ideographs.size(), 400u);
    EXPECT_EQ(ideographs.front(), 0x65E5);
    EXPECT_EQ(ideographs.back(), 0x65E5);
}

TEST(UTF16to8, EncodesPairsAndLoneSurrogates) {
    EXPECT_EQ(UTF16to8(U16({0xD83D, 0xDE00})), U8({0xF0, 0x9F, 0x98, 0x80}));
    EXPECT_EQ(UTF16to8(U16({0xD83D})), U8({0xED, 0xA0, 0xBD}));
    EXPECT_EQ(UTF16to8(U16({0x20AC})), U8({0xE2, 0x82, 0xAC}));
    EXPECT_EQ(UTF16to8(U16({'a', 0xDE00, 0xD83D, 'b'})), U8({'a', 0xED, 0xB8, 0x80, 0xED, 0xA0, 0xBD, 'b'}));
    EXPECT_EQ(UTF16to8(U16({0x00E9, 0x07FF, 0x0800, 0xFFFF})),
              U8({0xC3, 0xA9, 0xDF, 0xBF, 0xE0, 0xA0, 0x80, 0xEF, 0xBF, 0xBF}));
    EXPECT_EQ(UTF16to8(UTF16String()), UTF8String());
}

TEST(UTF16to8, EndsAtANulButKeepsShortStringsPresized) {
    EXPECT_EQ(UTF16to8(U16({'a', 'b', 0, 'c', 'd'})), U8({'a', 'b'}));
    EXPECT_EQ(UTF16to8(U16({0x20AC, 'b', 0, 0xD83D})), U8({0xE2, 0x82, 0xAC, 'b'}));
    // One to three units: one nul byte for every unit from the nul on.
    EXPECT_EQ(UTF16to8(U16({'a', 0, 'b'})), U8({'a', 0, 0}));
    EXPECT_EQ(UTF16to8(U16({0, 'x'})), U8({0, 0}));
    EXPECT_EQ(UTF16to8(U16({0x20AC, 0, 'b'})), U8({0xE2, 0x82, 0xAC}));
    EXPECT_EQ(UTF16to8(U16({0xD83D, 0xDE00})), U8({0xF0, 0x9F, 0x98, 0x80}));

    unsigned short const array[] = {'h', 0x00E9, 0, 'x'};
    EXPECT_EQ(UTF16to8(array), U8({'h', 0xC3, 0xA9}));
    EXPECT_EQ(UTF16to8(static_cast<unsigned short const*>(nullptr)), UTF8String());
    unsigned short const ascii[] = {'p', 'l', 'a', 'i', 'n', 0};
    EXPECT_EQ(UTF16to8(ascii), U8("plain"));
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
    UTF16String const cjk(40, 0x4E00);  // 0x4E00: low byte clear, high bit clear
    EXPECT_EQ(UTF8to16(UTF16to8(cjk)), cjk);
}

TEST(Conversions, RoundTripAnyNulFreeUTF16) {
    std::mt19937 random(20261123);
    std::uniform_int_distribution<int> length(0, 300);
    std::uniform_int_distribution<int> kind(0, 9);
    for (int round = 0; round < 2000; ++round) {
        UTF16String text;
        int const size = length(random);
        for (int i = 0; i < size; ++i) {
            switch (kind(random)) {
                case 0: case 1: case 2: case 3:
                    text.push_back(static_cast<unsigned short>(1 + random() % 0x7F));
                    break;
                case 4:
                    text.push_back(static_cast<unsigned short>(0x80 + random() % 0x780));
                    break;
                case 5: case 6:
                    text.push_back(static_cast<unsigned short>(0x800 + random() % 0xF7FF));
                    break;
                default:  // surrogates, paired or not, in any order
                    text.push_back(static_cast<unsigned short>(0xD800 + random() % 0x800));
                    break;
            }
        }
        ASSERT_EQ(UTF8to16(UTF16to8(text)), text) << "round " << round;
    }
}

TEST(Conversions, AsciiEntryPoints) {
    char const* literal = "caf\xC3\xA9";
    EXPECT_EQ(static_cast<void const*>(AsciiToUTF8(literal)), static_cast<void const*>(literal));
    EXPECT_EQ(AsciiToUTF8Impl(literal), AsciiToUTF8(literal));
    EXPECT_EQ(AsciiToUTF16(literal), U16({'c', 'a', 'f', 0x00E9}));
    EXPECT_EQ(AsciiToUTF16(""), UTF16String());
}
