#include <quorel/utility/CodeUnitFacets.h>
#include <quorel/utility/Locale.h>
#include <quorel/utility/StandardStreams.h>
#include <quorel/utility/TextStreams.h>
#include <quorel/utility/UTF16StreamBuffers.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;
using quorel::testing::U8;

namespace {

// A narrow locale with "," as decimal point, "." between groups of three.
struct CommaDecimal : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::locale CommaDecimalLocale() {
    return WithCodeUnitFacets(std::locale(std::locale::classic(), new CommaDecimal));
}

}  // namespace

TEST(CodeUnitFacets, TheLibraryLocalesHaveThemAndTheClassicLocaleDoesNot) {
    EXPECT_TRUE(HasCodeUnitFacets(Locale::Default()));
    EXPECT_TRUE(HasCodeUnitFacets(Locale::Native()));
    EXPECT_TRUE(HasCodeUnitFacets(CommaDecimalLocale()));
    EXPECT_FALSE(HasCodeUnitFacets(std::locale::classic()));
}

TEST(CodeUnitFacets, ClassifyAndMapOnlyAscii) {
    auto const& ctype = std::use_facet<std::ctype<unsigned short>>(Locale::Default());
    EXPECT_TRUE(ctype.is(std::ctype_base::space, ' '));
    EXPECT_TRUE(ctype.is(std::ctype_base::space, '\t'));
    EXPECT_TRUE(ctype.is(std::ctype_base::digit, '7'));
    EXPECT_FALSE(ctype.is(std::ctype_base::alpha, 0x00E9));  // é: beyond ASCII, no class
    EXPECT_FALSE(ctype.is(std::ctype_base::space, 0x3000));
    EXPECT_EQ(ctype.toupper('q'), 'Q');
    EXPECT_EQ(ctype.tolower(0x00C9), 0x00C9);
    EXPECT_EQ(ctype.widen('\xE9'), 0x00E9);
    EXPECT_EQ(ctype.narrow(0x263A, '?'), '?');
    EXPECT_EQ(ctype.narrow('x', '?'), 'x');

    UTF16String units = U16("a1 Z");
    std::vector<std::ctype_base::mask> masks(units.size());
    ctype.is(units.data(), units.data() + units.size(), masks.data());
    EXPECT_TRUE(masks[0] & std::ctype_base::lower);
    EXPECT_TRUE(masks[1] & std::ctype_base::digit);
    EXPECT_TRUE(masks[2] & std::ctype_base::space);
    EXPECT_EQ(ctype.scan_is(std::ctype_base::space, units.data(), units.data() + units.size()), units.data() + 2);
    ctype.toupper(&units[0], units.data() + units.size());
    EXPECT_EQ(units, U16("A1 Z"));

    auto const& utf8 = std::use_facet<std::ctype<unsigned char>>(Locale::Default());
    EXPECT_TRUE(utf8.is(std::ctype_base::upper, 'K'));
    EXPECT_FALSE(utf8.is(std::ctype_base::alpha, 0xC3));
}

TEST(CodeUnitFacets, PunctuationComesFromTheBaseLocale) {
    auto const& standard = std::use_facet<std::numpunct<unsigned short>>(Locale::Default());
    EXPECT_EQ(standard.decimal_point(), '.');
    EXPECT_EQ(standard.grouping(), "");
    std::locale const commaLocale = CommaDecimalLocale();
    auto const& comma = std::use_facet<std::numpunct<unsigned short>>(commaLocale);
    EXPECT_EQ(comma.decimal_point(), ',');
    EXPECT_EQ(comma.thousands_sep(), '.');
    EXPECT_EQ(comma.grouping(), "\3");
    auto const& commaUTF8 = std::use_facet<std::numpunct<unsigned char>>(commaLocale);
    EXPECT_EQ(commaUTF8.decimal_point(), ',');
}

TEST(TextStreams, NumbersGoOutOfUTF16AndUTF8Streams) {
    oUTF16StringStream out16;
    out16 << 42 << ' ' << -7L << ' ' << 3.25 << ' ' << std::boolalpha << true << ' ' << std::hex << std::showbase
          << std::uppercase << 255 << ' ' << std::dec << std::numeric_limits<long long>::min() << ' '
          << std::setw(6) << std::setfill(static_cast<unsigned short>('*')) << 12;
    EXPECT_EQ(out16.str(), U16("42 -7 3.25 true 0XFF -9223372036854775808 ****12"));
    EXPECT_TRUE(out16.good());

    oUTF8StringStream out8;
    out8 << std::fixed << std::setprecision(2) << 1.5 << '|' << std::scientific << 1e10 << '|' << 0u;
    EXPECT_EQ(out8.str(), U8(std::string("1.50|1.00e+10|0")));
}

TEST(TextStreams, CharsAreCharactersAndUnitsAreNumbers) {
    oUTF16StringStream out;
    out << 'a' << std::setw(3) << 'b' << static_cast<unsigned short>('c');
    out.put('d');
    EXPECT_EQ(out.str(), U16("a  b99d"));
}

TEST(TextStreams, NumbersAndWordsComeInFromUTF16AndUTF8Streams) {
    iUTF16StringStream in16(U16("  42 -3.25 1f true word\xE9 end"));
    int whole = 0;
    double real = 0.0;
    int hex = 0;
    bool flag = false;
    UTF16String word;
    in16 >> whole >> real >> std::hex >> hex >> std::boolalpha >> flag >> word;
    EXPECT_EQ(whole, 42);
    EXPECT_EQ(real, -3.25);
    EXPECT_EQ(hex, 0x1F);
    EXPECT_TRUE(flag);
    EXPECT_EQ(word, U16("word\xE9"));
    EXPECT_TRUE(in16.good());

    iUTF8StringStream in8(U8(std::string("7 x")));
    unsigned value = 0;
    in8 >> value;
    EXPECT_EQ(value, 7u);
    in8 >> value;
    EXPECT_TRUE(in8.fail());
    EXPECT_EQ(value, 0u);
}

TEST(TextStreams, AnImbuedLocaleGivesItsPunctuation) {
    oUTF16StringStream out;
    out.imbue(CommaDecimalLocale());
    out << std::fixed << std::setprecision(1) << 1234567.5;
    EXPECT_EQ(out.str(), U16("1.234.567,5"));

    iUTF16StringStream in(U16("1.234,5"));
    in.imbue(CommaDecimalLocale());
    double value = 0.0;
    in >> value;
    EXPECT_EQ(value, 1234.5);
}

TEST(TextStreams, WithoutTheFacetsNumbersFailInsteadOfCrashing) {
    oUTF16StringStream out;
    out.imbue(std::locale::classic());
    out << 5;
    EXPECT_TRUE(out.bad());
}

TEST(TextStreams, StringStreamsCopyTheirInput) {
    UTF16String text = U16("12");
    iUTF16StringStream fromString(text);
    text[0] = '9';
    int value = 0;
    fromString >> value;
    EXPECT_EQ(value, 12);

    unsigned short const array[] = {'3', '4', 0};
    iUTF16StringStream fromArray(array);
    fromArray >> value;
    EXPECT_EQ(value, 34);

    unsigned char const bytes[] = {'5', 0};
    iUTF8StringStream fromBytes(bytes);
    fromBytes >> value;
    EXPECT_EQ(value, 5);

    iUTF16StringStream fromNull(static_cast<unsigned short const*>(nullptr));
    EXPECT_EQ(fromNull.peek(), CodeUnitTraits<unsigned short>::eof());
}

TEST(TextStreams, AnEmptyUTF8StreamIsAtItsEndAtOnce) {
    iUTF8StringStream in{UTF8String()};
    EXPECT_EQ(in.peek(), CodeUnitTraits<unsigned char>::eof());
    EXPECT_TRUE(in.eof());
}

namespace {

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

TEST(UTF16StreamBuffer, HandsOnOnePieceOfTextPerFlush) {
    std::vector<UTF16String> texts;
    {
        RecordingBuffer buffer(texts);
        UTF16OutputStream out(&buffer);
        out.flush();
        EXPECT_TRUE(texts.empty()) << "nothing buffered, nothing handed on";
        out << "one" << 1;
        EXPECT_TRUE(texts.empty());
        out.flush();
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_EQ(texts[0], U16("one1"));
        out << "rest";
    }
    ASSERT_EQ(texts.size(), 2u) << "the destructor hands on what is left";
    EXPECT_EQ(texts[1], U16("rest"));
}

TEST(UTF16StreamBuffer, AFullPutAreaIsHandedOnBeforeTheNextUnit) {
    std::vector<UTF16String> texts;
    RecordingBuffer buffer(texts);
    UTF16String const text(256, 'x');
    buffer.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0], UTF16String(255, 'x'));
    buffer.pubsync();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[1], U16("x"));

    EXPECT_EQ(buffer.overflow(CodeUnitTraits<unsigned short>::eof()), 0);
    EXPECT_EQ(buffer.overflow('y'), 'y');
    buffer.pubsync();
    EXPECT_EQ(texts.back(), U16("y"));
}

TEST(UTF16StreamBuffer, ANulUnitEndsTheText) {
    std::vector<UTF16String> texts;
    RecordingBuffer buffer(texts);
    unsigned short const units[] = {'a', 0, 'b'};
    buffer.sputn(units, 3);
    buffer.pubsync();
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0], U16("a"));
}

namespace {

std::string gHookText;
void RecordHook(char const* inText) { gHookText += inText; }

// Runs inWrite with the standard output sent to a file, and returns what was written.
template <class Write>
std::string CaptureStandardOutput(Write inWrite) {
    std::fflush(stdout);
    char path[] = "/tmp/quorel-stdout-XXXXXX";
    int const file = mkstemp(path);
    int const saved = dup(STDOUT_FILENO);
    dup2(file, STDOUT_FILENO);
    inWrite();
    std::fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    close(file);
    std::ifstream in(path, std::ios::binary);
    std::string const text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::remove(path);
    return text;
}

}  // namespace

TEST(UTF16StreamBuffer, TheDebugBufferFeedsTheHook) {
    gHookText.clear();
    debug::SetDebugOutputHook(&RecordHook);
    streams::Debug << U16("caf\xE9 ") << 3 << std::flush;
    debug::SetDebugOutputHook(nullptr);
    streams::Debug << "lost" << std::flush;
    EXPECT_EQ(gHookText, "caf\xC3\xA9 3");
}

TEST(UTF16StreamBuffer, TheStandardOutputBufferWritesOneLinePerPiece) {
    std::string const written = CaptureStandardOutput([] {
        debug::UTF16StdOutStreamBuffer<> buffer;
        UTF16OutputStream out(&buffer);
        out << UTF16String(300, 'z');
    });
    EXPECT_EQ(written, std::string(255, 'z') + "\n" + std::string(45, 'z') + "\n");

    std::string const viaStream = CaptureStandardOutput([] { streams::UTF16Out << U16("\xFC") << 1 << std::flush; });
    EXPECT_EQ(viaStream, "\xC3\xBC" "1\n");
}

TEST(StandardStreams, NarrowStreamsAreTheStandardOnes) {
    EXPECT_EQ(&streams::In, &std::cin);
    EXPECT_EQ(&streams::Out, &std::cout);
    EXPECT_EQ(&streams::Log, &std::clog);
    EXPECT_EQ(&streams::Err, &std::cerr);
}

TEST(SetStreamBuffer, GivesADefaultConstructedStreamItsFirstBuffer) {
    UTF16OutputStream stream;
    EXPECT_TRUE(stream.bad());
    stream << 1;
    std::vector<UTF16String> texts;
    RecordingBuffer buffer(texts);
    EXPECT_EQ(SetStreamBuffer(stream, &buffer), nullptr);
    EXPECT_TRUE(stream.good());
    stream << 2.5 << std::flush;
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0], U16("2.5"));
}

TEST(SetStreamBuffer, RebuildsAUTF16StreamAndKeepsTheFormerBuffer) {
    std::vector<UTF16String> first;
    std::vector<UTF16String> second;
    RecordingBuffer firstBuffer(first);
    RecordingBuffer secondBuffer(second);
    UTF16OutputStream stream(&firstBuffer);
    stream.imbue(std::locale::classic());
    stream << std::hex << std::setw(8) << std::setprecision(2);
    stream.setstate(std::ios_base::failbit);

    EXPECT_EQ(SetStreamBuffer(stream, &secondBuffer), &firstBuffer);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.width(), 0);
    EXPECT_EQ(stream.precision(), 6);
    EXPECT_EQ(stream.flags(), std::ios_base::skipws | std::ios_base::dec);
    stream << 255 << std::flush;  // decimal, and with facets again
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(second[0], U16("255"));

    firstBuffer.sputc('k');
    firstBuffer.pubsync();
    ASSERT_EQ(first.size(), 1u) << "the former buffer still works";
    EXPECT_EQ(first[0], U16("k"));
}

TEST(SetStreamBuffer, RebuildsANarrowStream) {
    std::stringbuf firstBuffer;
    std::stringbuf secondBuffer;
    std::ostream stream(&firstBuffer);
    stream << std::showpos << std::setw(5) << std::setfill('_');
    stream.setstate(std::ios_base::badbit);

    EXPECT_EQ(SetStreamBuffer(stream, &secondBuffer), &firstBuffer);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.fill(), ' ');
    stream << 7 << std::setw(3) << 8;
    EXPECT_EQ(secondBuffer.str(), "7  8");
    EXPECT_EQ(firstBuffer.str(), "");
}
