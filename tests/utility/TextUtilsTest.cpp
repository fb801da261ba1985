#include <quorel/utility/TextUtils.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;

TEST(LineEndings, TextsOfTheThreeTypes) {
    EXPECT_EQ(GetLineEnding(kLineEnding_CRLF), U16("\r\n"));
    EXPECT_EQ(GetLineEnding(kLineEnding_CR), U16("\r"));
    EXPECT_EQ(GetLineEnding(kLineEnding_LF), U16("\n"));
    EXPECT_EQ(GetLineEnding(static_cast<LineEndingType>(7)), UTF16String());
}

TEST(LineEndings, ConvertRecognisesEachKindOfEnding) {
    UTF16String text = U16("a\r\nb\rc\nd");
    ConvertLineEndings(kLineEnding_LF, text);
    EXPECT_EQ(text, U16("a\nb\nc\nd"));

    text = U16("a\nb\r\n");
    ConvertLineEndings(kLineEnding_CRLF, text);
    EXPECT_EQ(text, U16("a\r\nb\r\n"));

    text = U16("x\n\ry");  // LF CR are two endings
    ConvertLineEndings(kLineEnding_CRLF, text);
    EXPECT_EQ(text, U16("x\r\n\r\ny"));

    text = U16("a\r\n\r\nb");
    ConvertLineEndings(kLineEnding_CR, text);
    EXPECT_EQ(text, U16("a\r\rb"));

    text = U16("no ending");
    UTF16String const before = text;
    ConvertLineEndings(kLineEnding_CR, text);
    EXPECT_EQ(text, before);
}

TEST(LineEndings, AnUnknownTypeRemovesEndingsButNeverEmptiesTheText) {
    UTF16String text = U16("a\r\nb\nc");
    ConvertLineEndings(static_cast<LineEndingType>(9), text);
    EXPECT_EQ(text, U16("abc"));
    text = U16("\r\n\n");
    ConvertLineEndings(static_cast<LineEndingType>(9), text);
    EXPECT_EQ(text, U16("\r\n\n"));
}

TEST(ReplaceInString, ExpandsPlaceholdersWithoutRescanning) {
    UTF16String const a = U16("A"), b = U16("B"), e;
    EXPECT_EQ(ReplaceInString(U16("@@0 @1 @x @"), a, b, e, e, e, e, e, e, e, e), U16("@0 B @x @"));
    UTF16String const nine = U16("nine");
    EXPECT_EQ(ReplaceInString(U16("@9@0"), a, e, e, e, e, e, e, e, e, nine), U16("nineA"));
    // A replacement that itself holds a placeholder is not expanded again.
    UTF16String const tricky = U16("@1");
    EXPECT_EQ(ReplaceInString(U16("[@0]"), tricky, b, e, e, e, e, e, e, e, e), U16("[@1]"));
    EXPECT_EQ(ReplaceInString(UTF16String(), a, b, e, e, e, e, e, e, e, e), UTF16String());
}

TEST(ReplaceAllStringInString, ReplacesLeftToRightWithoutOverlapOrRescan) {
    UTF16String text = U16("aaaa");
    ReplaceAllStringInString(text, U16("aa"), U16("b"));
    EXPECT_EQ(text, U16("bb"));

    text = U16("aaa");
    ReplaceAllStringInString(text, U16("aa"), U16("b"));
    EXPECT_EQ(text, U16("ba"));

    text = U16("x.y.z");
    ReplaceAllStringInString(text, U16("."), U16(".."));  // replacement holds the search text
    EXPECT_EQ(text, U16("x..y..z"));

    text = U16("path/to/file");
    ReplaceAllStringInString(text, U16("/"), UTF16String());
    EXPECT_EQ(text, U16("pathtofile"));

    text = U16("unchanged");
    ReplaceAllStringInString(text, U16("zz"), U16("y"));
    EXPECT_EQ(text, U16("unchanged"));
    ReplaceAllStringInString(text, UTF16String(), U16("y"));
    EXPECT_EQ(text, U16("unchanged"));
}
