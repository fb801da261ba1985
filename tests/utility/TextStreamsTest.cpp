#include <quorel/utility/CodeUnitFacets.h>
#include <quorel/utility/Locale.h>
#include <quorel/utility/StandardStreams.h>
#include <quorel/utility/TextStreams.h>
#include <quorel/utility/UTF16StreamBuffers.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;
using quorel::testing::U8;

namespace {

// A narrow locale with "," as decimal point, "." between groups of three, as
// in many European locales.
struct CommaDecimal : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::locale CommaDecimalLocale() { return WithCodeUnitFacets(std::locale(std::locale::classic(), new CommaDecimal)); }

// Records every text that the buffer hands on.
class RecordingBuffer : public debug::UTF16StreamBufferImpl<> {
public:
    explicit RecordingBuffer(std::vector<UTF16String>& outTexts) : mTexts(outTexts) {}
    ~RecordingBuffer() override { sync(); }
    using UTF16StreamBufferImpl::overflow;

protected:
    void OutputText(unsigned short const* inText) override { mTexts.emplace_back(inText); }

private:
    std::vector<UTF16String>& mTexts;
};

}  // namespace

TEST(CodeUnitFacets, ClassifyAndMapOnlyAsciiAndTakeThePunctuationOfTheBaseLocale) {
    std::locale const comma = CommaDecimalLocale();
    EXPECT_TRUE(HasCodeUnitFacets(Locale::Default()) && HasCodeUnitFacets(Locale::Native()) &&
                HasCodeUnitFacets(comma) && !HasCodeUnitFacets(std::locale::classic()));

    auto const& ctype = std::use_facet<std::ctype<unsigned short>>(Locale::Default());
    EXPECT_TRUE(ctype.is(std::ctype_base::space, '\t') && ctype.is(std::ctype_base::digit, '7'));
    EXPECT_FALSE(ctype.is(std::ctype_base::alpha, 0x00E9) || ctype.is(std::ctype_base::space, 0x3000));
    EXPECT_TRUE(ctype.tolower(0x00C9) == 0x00C9 && ctype.widen('\xE9') == 0x00E9 && ctype.narrow(0x263A, '?') == '?' &&
                ctype.narrow('x', '?') == 'x');  // beyond ASCII: no case, no narrow form
    UTF16String units = U16("a1 Z");
    std::ctype_base::mask masks[4];
    ctype.is(units.data(), units.data() + 4, masks);
    EXPECT_TRUE((masks[0] & std::ctype_base::lower) && (masks[1] & std::ctype_base::digit) &&
                (masks[3] & std::ctype_base::upper));
    EXPECT_EQ(ctype.scan_is(std::ctype_base::space, units.data(), units.data() + 4), units.data() + 2);
    ctype.toupper(&units[0], units.data() + 4);
    EXPECT_EQ(units, U16("A1 Z"));
    EXPECT_FALSE(std::use_facet<std::ctype<unsigned char>>(Locale::Default()).is(std::ctype_base::alpha, 0xC3));

    auto const& wide = std::use_facet<std::numpunct<unsigned short>>(comma);
    EXPECT_TRUE(wide.decimal_point() == ',' && wide.thousands_sep() == '.' && wide.grouping() == "\3");
    EXPECT_EQ(std::use_facet<std::numpunct<unsigned char>>(comma).decimal_point(), ',');
}

TEST(TextStreams, NumbersAndCharactersGoOutInTheStreamsLocale) {
    oUTF16StringStream out16;
    out16 << 42 << ' ' << -7L << ' ' << 3.25 << ' ' << std::boolalpha << true << ' ' << std::hex << std::showbase
          << std::uppercase << 255 << ' ' << std::dec << std::numeric_limits<long long>::min() << ' '
          << std::setw(6) << std::setfill(static_cast<unsigned short>('*')) << 12;
    EXPECT_EQ(out16.str(), U16("42 -7 3.25 true 0XFF -9223372036854775808 ****12"));

    oUTF8StringStream out8;
    out8 << std::fixed << std::setprecision(2) << 1.5 << '|' << std::scientific << 1e10 << '|' << 0u;
    EXPECT_EQ(out8.str(), U8(std::string("1.50|1.00e+10|0")));

    oUTF16StringStream chars;  // a char is a character, a code unit a number
    chars << 'a' << std::setw(3) << 'b' << static_cast<unsigned short>('c');
    chars.put('d');
    EXPECT_EQ(chars.str(), U16("a  b99d"));

    oUTF16StringStream comma, classic;
    comma.imbue(CommaDecimalLocale());
    comma << std::fixed << std::setprecision(1) << 1234567.5;
    EXPECT_EQ(comma.str(), U16("1.234.567,5"));
    classic.imbue(std::locale::classic());
    classic << 5;
    EXPECT_TRUE(classic.bad()) << "a locale without the facets fails";
}

TEST(TextStreams, NumbersAndWordsComeInFromCopiesOfTheirText) {
    UTF16String text = U16("  42 -3.25 1f true word\xE9 end");
    iUTF16StringStream in16(text);
    text[2] = '9';
    int whole = 0, hex = 0;
    double real = 0.0;
    bool flag = false;
    UTF16String word;
    in16 >> whole >> real >> std::hex >> hex >> std::boolalpha >> flag >> word;
    EXPECT_TRUE(whole == 42 && real == -3.25 && hex == 0x1F && flag && word == U16("word\xE9") && in16.good());

    unsigned char const bytes[] = {'7', ' ', 'x', 0};
    iUTF8StringStream in8(bytes);
    unsigned value = 0;
    EXPECT_TRUE(in8 >> value && value == 7u);
    EXPECT_TRUE(!(in8 >> value) && value == 0u);

    iUTF16StringStream comma(U16("1.234,5"));
    comma.imbue(CommaDecimalLocale());
    EXPECT_TRUE(comma >> real && real == 1234.5);

    iUTF16StringStream fromNull(static_cast<unsigned short const*>(nullptr));
    iUTF8StringStream empty{UTF8String()};
    EXPECT_TRUE(fromNull.peek() == CodeUnitTraits<unsigned short>::eof() &&
                empty.peek() == CodeUnitTraits<unsigned char>::eof() && empty.eof());
}

TEST(Locale, GetValueFromDisplayStringTakesTheReadingThatGoesFurther) {
    std::pair<char const*, double> const cases[] = {
        {"", 0.0}, {"3,5", 3.5}, {"3.5", 3.5}, {"-3,5", -3.5}, {"-3.5", -3.5}, {"1.234,5", 1234.5}, {"abc", 0.0},
        {",5", 0.0}, {"7", 7.0}};
    std::locale const comma = CommaDecimalLocale();
    for (auto const& [in, value] : cases) EXPECT_EQ(Locale::GetValueFromDisplayString(U16(in), comma), value) << in;
    EXPECT_EQ(Locale::GetValueFromDisplayString(U16("2.25"), Locale::Default()), 2.25);
    EXPECT_EQ(Locale::GetValueFromDisplayString(U16("  12.5kg")), 12.5);
}

TEST(UTF16StreamBuffer, HandsOnOnePieceOfTextPerFlushOrFullPutArea) {
    std::vector<UTF16String> texts;
    {
        RecordingBuffer buffer(texts);
        UTF16OutputStream out(&buffer);
        out << std::flush << "one" << 1;  // a flush with nothing buffered hands nothing on
        EXPECT_TRUE(texts.empty());
        out << std::flush << "rest";
        EXPECT_EQ(texts, std::vector<UTF16String>{U16("one1")});
    }
    EXPECT_EQ(texts.back(), U16("rest"));  // the destructor hands on what is left

    RecordingBuffer buffer(texts);
    buffer.sputn(UTF16String(256, 'x').data(), 256);
    EXPECT_TRUE(buffer.overflow(CodeUnitTraits<unsigned short>::eof()) == 0 && buffer.overflow('y') == 'y');
    unsigned short const units[] = {'a', 0, 'b'};  // a nul unit ends the text
    buffer.sputn(units, 3);
    buffer.pubsync();
    EXPECT_EQ(texts, (std::vector<UTF16String>{U16("one1"), U16("rest"), UTF16String(255, 'x'), U16("x"), U16("ya")}));
}

static std::string gHookText;

TEST(UTF16StreamBuffer, TheDebugAndStandardOutputBuffersWriteUTF8) {
    debug::SetDebugOutputHook([](char const* inText) { gHookText += inText; });
    streams::Debug << U16("caf\xE9 ") << 3 << std::flush;
    debug::SetDebugOutputHook(nullptr);
    streams::Debug << "lost" << std::flush;
    EXPECT_EQ(gHookText, "caf\xC3\xA9 3");

    ::testing::internal::CaptureStdout();
    {
        debug::UTF16StdOutStreamBuffer<> buffer;
        UTF16OutputStream(&buffer) << UTF16String(300, 'z');
    }
    streams::UTF16Out << U16("\xFC") << 1 << std::flush;
    std::fflush(stdout);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              std::string(255, 'z') + "\n" + std::string(45, 'z') + "\n\xC3\xBC" "1\n") << "one line per piece";
}

TEST(SetStreamBuffer, RebuildsTheStreamAndKeepsTheFormerBuffer) {
    std::vector<UTF16String> first, second;
    RecordingBuffer firstBuffer(first), secondBuffer(second);
    UTF16OutputStream stream;  // without a buffer until it is given one
    EXPECT_TRUE((stream << 1).bad());
    EXPECT_TRUE(SetStreamBuffer(stream, &firstBuffer) == nullptr && stream.good());
    stream.imbue(std::locale::classic());
    stream << std::hex << std::setw(8) << std::setprecision(2);
    stream.setstate(std::ios_base::failbit);

    EXPECT_EQ(SetStreamBuffer(stream, &secondBuffer), &firstBuffer);
    EXPECT_TRUE(stream.good() && stream.width() == 0 && stream.precision() == 6);
    EXPECT_EQ(stream.flags(), std::ios_base::skipws | std::ios_base::dec);
    stream << 255 << ' ' << 2.5 << std::flush;  // decimal, and with facets again
    EXPECT_TRUE(second == std::vector<UTF16String>{U16("255 2.5")} && first.empty());

    std::stringbuf narrowFirst, narrowSecond;  // the same for a narrow stream
    std::ostream narrow(&narrowFirst);
    narrow << std::showpos << std::setw(5) << std::setfill('_');
    narrow.setstate(std::ios_base::badbit);
    EXPECT_EQ(SetStreamBuffer(narrow, &narrowSecond), &narrowFirst);
    narrow << 7 << std::setw(3) << 8;
    EXPECT_TRUE(narrow.good() && narrowSecond.str() == "7  8" && narrowFirst.str().empty());
}
