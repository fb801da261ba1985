#include <quorel/utility/TextUtils.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;

TEST(LineEndings, TextsOfTheTypesAndConversionOfEachKindOfEnding) {
    EXPECT_TRUE(GetLineEnding(kLineEnding_CRLF) == U16("\r\n") && GetLineEnding(kLineEnding_CR) == U16("\r") &&
                GetLineEnding(kLineEnding_LF) == U16("\n") && GetLineEnding(static_cast<LineEndingType>(7)).empty());
    int const kUnknown = 9;
    struct {
        int mType;
        char const* mIn;
        char const* mOut;
    } const cases[] = {
        {kLineEnding_LF, "a\r\nb\rc\nd", "a\nb\nc\nd"}, {kLineEnding_CRLF, "a\nb\r\n", "a\r\nb\r\n"},
        {kLineEnding_CRLF, "x\n\ry", "x\r\n\r\ny"},  // LF CR are two endings
        {kLineEnding_CR, "a\r\n\r\nb", "a\r\rb"},       {kLineEnding_CR, "no ending", "no ending"},
        // An unknown type removes the endings, but never empties the text.
        {kUnknown, "a\r\nb\nc", "abc"},                 {kUnknown, "\r\n\n", "\r\n\n"},
    };
    for (auto const& c : cases) {
        UTF16String text = U16(c.mIn);
        ConvertLineEndings(static_cast<LineEndingType>(c.mType), text);
        EXPECT_EQ(text, U16(c.mOut)) << c.mType << " " << c.mIn;
    }
}

TEST(ReplaceInString, ExpandsPlaceholdersWithoutRescanning) {
    UTF16String const a = U16("A"), b = U16("B"), e;
    EXPECT_EQ(ReplaceInString(U16("@@0 @1 @x @"), a, b, e, e, e, e, e, e, e, e), U16("@0 B @x @"));
    EXPECT_EQ(ReplaceInString(U16("@9@0"), a, e, e, e, e, e, e, e, e, U16("nine")), U16("nineA"));
    // A replacement that itself holds a placeholder is not expanded again.
    EXPECT_EQ(ReplaceInString(U16("[@0]"), U16("@1"), b, e, e, e, e, e, e, e, e), U16("[@1]"));
    EXPECT_EQ(ReplaceInString(UTF16String(), a, b, e, e, e, e, e, e, e, e), UTF16String());
}

TEST(ReplaceAllStringInString, ReplacesLeftToRightWithoutOverlapOrRescan) {
    struct {
        char const* mText;
        char const* mSearch;
        char const* mReplacement;
        char const* mResult;
    } const cases[] = {
        {"aaaa", "aa", "b", "bb"},           {"aaa", "aa", "b", "ba"},
        {"x.y.z", ".", "..", "x..y..z"},     // the replacement holds the search text
        {"path/to/file", "/", "", "pathtofile"}, {"unchanged", "zz", "y", "unchanged"},
        {"unchanged", "", "y", "unchanged"},
    };
    for (auto const& c : cases) {
        UTF16String text = U16(c.mText);
        ReplaceAllStringInString(text, U16(c.mSearch), U16(c.mReplacement));
        EXPECT_EQ(text, U16(c.mResult)) << c.mText << " " << c.mSearch;
    }
}
