#include <quorel/utility/CodeUnitFacets.h>
#include <quorel/utility/Locale.h>
#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/NumberText.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::U16;

namespace {

void PointDecimal(NumberSeparators& ioSeparators) {
    ioSeparators.mDecimal = '.';
    ioSeparators.mThousands = ',';
}

void CommaDecimal(NumberSeparators& ioSeparators) {
    ioSeparators.mDecimal = ',';
    ioSeparators.mThousands = '.';
}

void NoValues(NumberSeparators& ioSeparators) { ioSeparators.mThousands = 0; }

// Makes the separators a test's own, whatever the machine's locale says.
class ScopedSeparators {
public:
    explicit ScopedSeparators(NumberSeparatorSource inSource) { SetNumberSeparatorSource(inSource); }
    ~ScopedSeparators() { SetNumberSeparatorSource(nullptr); }
};

unsigned short const kFullWidthOne = 0xFF11;
unsigned short const kFullWidthTwo = 0xFF12;

}  // namespace

struct FormatCase {
    double mValue;
    int mMinimumDigits;
    int mDecimals;
    unsigned short mFlags;
    char const* mExpected;
};

TEST(NumberToString, FormatsByTheFlags) {
    ScopedSeparators separators(&PointDecimal);
    unsigned short const kPlain = kNumberFormat_NoInternationalize;
    FormatCase const cases[] = {
        {2.5, 1, 0, 0, "3"},
        {2.4999, 1, 0, 0, "2"},
        {999.5, 1, 0, 0, "1000"},
        {1234.5, 6, 2, kNumberFormat_GroupThousands | kPlain, "001,234.50"},
        {123, 6, 0, kNumberFormat_GroupThousands, "000,123"},
        {123, 6, 0, kNumberFormat_GroupThousands | kNumberFormat_PadWithBlanks, "   ,123"},
        {1234567.891, 1, 2, kNumberFormat_GroupThousands, "1,234,567.89"},
        {-1234.5, 1, 1, kNumberFormat_GroupThousands, "-1,234.5"},
        {5, 4, 0, kNumberFormat_PadWithBlanks, "   5"},
        {-5, 3, 0, 0, "-005"},
        {-1.5, 1, 1, kNumberFormat_ShowPlus | kPlain, "-1.5"},
        {0.0, 1, 1, kNumberFormat_ShowPlus | kPlain, "+0.0"},
        {-0.0, 1, 1, kNumberFormat_ShowPlus | kPlain, "+0.0"},
        {0.0, 1, 1, kNumberFormat_ShowPlus | kNumberFormat_NoPlusOnZero | kPlain, "0.0"},
        {0.001, 1, 2, kNumberFormat_ShowPlus | kNumberFormat_NoPlusOnZero, "+0.00"},
        {-0.001, 1, 2, 0, "-0.00"},
        {7, 1, 0, kNumberFormat_BlankForPlus, " 7"},
        {7, 1, 0, kNumberFormat_BlankForPlus | kNumberFormat_ShowPlus, "+7"},
        {0, 1, 0, kNumberFormat_BlankForPlus | kNumberFormat_ShowPlus | kNumberFormat_NoPlusOnZero, "0"},
        {12.5, 1, 3, kNumberFormat_TrimTrailingZeros | kPlain, "12.5"},
        {12.0, 1, 3, kNumberFormat_TrimTrailingZeros, "12"},
        {-12.5, 1, 3, kNumberFormat_TrimTrailingZeros, "-12.5"},
        {100, 1, 0, kNumberFormat_TrimTrailingZeros, "100"},
        {2147483647.4, 1, 0, 0, "2147483647"},
    };
    for (FormatCase const& c : cases) {
        EXPECT_EQ(NumberToString(c.mValue, c.mMinimumDigits, c.mDecimals, c.mFlags), U16(c.mExpected))
            << c.mValue << " " << c.mMinimumDigits << " " << c.mDecimals << " flags " << c.mFlags;
    }
}

TEST(NumberToString, FallsBackToScientificFormUntouched) {
    ScopedSeparators separators(&PointDecimal);
    unsigned short const kAll = kNumberFormat_GroupThousands | kNumberFormat_TrimTrailingZeros;
    FormatCase const cases[] = {
        {3000000000.0, 1, 0, 0, "3.000000e+09"},              // too great for 32 bits
        {-3000000000.0, 1, 0, 0, "-3.000000e+09"},
        {2147483647.5, 1, 0, 0, "2.147484e+09"},              // rounds beyond 32 bits
        {3000000000.0, 20, 0, kAll, "3.000000e+09"},          // no padding, grouping or trimming
        {1e30, 1, 2, kNumberFormat_ShowPlus, "+1.000000e+30"},  // plain text longer than 22
        {123456789012345678.0, 1, 4, 0, "1.234568e+17"},
        {std::numeric_limits<double>::max(), 1, 300, 0, "1.797693e+308"},  // beyond the print buffer
    };
    for (FormatCase const& c : cases) {
        EXPECT_EQ(NumberToString(c.mValue, c.mMinimumDigits, c.mDecimals, c.mFlags), U16(c.mExpected)) << c.mValue;
    }
    EXPECT_EQ(NumberToString(12345678901234.5, 1, 2, 0), U16("12345678901234.50")) << "22 characters stay plain";
}

TEST(NumberToString, TakesTheUsersSeparatorsLast) {
    ScopedSeparators separators(&CommaDecimal);
    EXPECT_EQ(NumberToString(1234.5, 1, 2, kNumberFormat_GroupThousands), U16("1.234,50"));
    EXPECT_EQ(NumberToString(1234.5, 1, 2, kNumberFormat_GroupThousands | kNumberFormat_NoInternationalize),
              U16("1,234.50"));
    EXPECT_EQ(NumberToString(1.25), U16("1,25"));
    EXPECT_EQ(NumberToString(3000000000.0, 1, 0, 0), U16("3,000000e+09"));
}

TEST(NumberToString, IntegersAreNeverInternationalised) {
    ScopedSeparators separators(&CommaDecimal);
    EXPECT_EQ(NumberToString(std::int32_t(1234)), U16("1234"));
    EXPECT_EQ(NumberToString(std::numeric_limits<std::int32_t>::min()), U16("-2147483648"));
    EXPECT_EQ(NumberToString(std::numeric_limits<std::int64_t>::min()), U16("-9223372036854775808"));
    EXPECT_EQ(NumberToString(std::int64_t(1) << 40), U16("1099511627776"));
}

TEST(NumberToHexString, WritesThe32BitPattern) {
    EXPECT_EQ(NumberToHexString(-1), U16("FFFFFFFF"));
    EXPECT_EQ(NumberToHexString(0), U16("0"));
    EXPECT_EQ(NumberToHexString(255), U16("FF"));
    EXPECT_EQ(NumberToHexString(std::numeric_limits<std::int32_t>::min()), U16("80000000"));
}

TEST(InternationalizeNum, ReplacesOnlySeparatorsBeforeADigit) {
    ScopedSeparators separators(&CommaDecimal);
    struct {
        char const* mIn;
        char const* mOut;
    } const cases[] = {
        {"1,5,", "1.5,"}, {"1,234.5", "1.234,5"}, {"a.b", "a.b"}, {".", "."}, {"5.", "5."}, {". 5", ". 5"}, {"", ""},
    };
    for (auto const& c : cases) {
        UTF16String text = U16(c.mIn);
        InternationalizeNum(text);
        EXPECT_EQ(text, U16(c.mOut)) << c.mIn;
    }
}

TEST(DeInternationalizeNum, NormalisesWideFormsThenSeparators) {
    ScopedSeparators separators(&CommaDecimal);
    UTF16String text = U16("1.234,5");
    DeInternationalizeNum(text);
    EXPECT_EQ(text, U16("1,234.5"));

    // Full-width "1", full-width ",", full-width "5"; ideographic comma and full stop.
    text = quorel::testing::U16({kFullWidthOne, 0xFF0C, 0xFF15, ' ', 0x3001, 0x3002, 0xFF20});
    DeInternationalizeNum(text);
    EXPECT_EQ(text, quorel::testing::U16({'1', '.', '5', ' ', '.', ',', 0xFF20}));
}

TEST(StringToNumber, ReadsTheLeadingNumber) {
    ScopedSeparators separators(&PointDecimal);
    struct {
        UTF16String mText;
        double mExpected;
    } const cases[] = {
        {U16("12abc"), 12},
        {U16("abc"), 0},
        {U16(""), 0},
        {U16("  -3.5"), -3.5},
        {U16("+7"), 7},
        {U16("1,000,000.25"), 1000000.25},
        {U16("1e3"), 1000},
        {U16(".5"), 0.5},
        {quorel::testing::U16({kFullWidthOne, kFullWidthTwo}), 12},
        {quorel::testing::U16({kFullWidthOne, 0x3002, kFullWidthTwo}), 1.2},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(StringToNumber(c.mText), c.mExpected);
    }
}

TEST(StringToNumber, FollowsTheUsersSeparatorsUnlessTold) {
    ScopedSeparators separators(&CommaDecimal);
    EXPECT_EQ(StringToNumber(U16("1.234,5")), 1234.5);
    EXPECT_EQ(StringToNumber(U16("1,5")), 1.5);
    EXPECT_EQ(StringToNumber(U16("1,5"), kNumberParse_NoDeInternationalize), 15);
    EXPECT_EQ(StringToNumber(U16("1.5"), kNumberParse_NoDeInternationalize), 1.5);
    EXPECT_EQ(StringToNumber(U16("1.5"), kNumberFormat_NoInternationalize), 15) << "only bit 2 counts";
}

TEST(StringToNumber, ReadsBackWhatNumberToStringWrote) {
    double const values[] = {0.0, 1.0, -2.5, 1234567.125, 0.000123, -98765.4321, 42e6};
    for (NumberSeparatorSource source : {&PointDecimal, &CommaDecimal}) {
        ScopedSeparators separators(source);
        for (double value : values) {
            UTF16String const text = NumberToString(value, 1, 6, kNumberFormat_GroupThousands);
            EXPECT_NEAR(StringToNumber(text), value, 1e-6 + std::fabs(value) * 1e-9);
        }
    }
}

TEST(NumberSeparators, MissingValuesKeepTheirDefaults) {
    ScopedSeparators separators(&NoValues);
    NumberSeparators const read = GetNumberSeparators();
    EXPECT_EQ(read.mDecimal, '.');
    EXPECT_EQ(read.mThousands, ',');
}

namespace {
std::atomic<int> gSourceCalls{0};
void CountingSource(NumberSeparators& ioSeparators) {
    ++gSourceCalls;
    std::this_thread::yield();
    ioSeparators.mDecimal = 0x066B;  // Arabic decimal separator
    ioSeparators.mThousands = 0x066C;
}
}  // namespace

TEST(NumberSeparators, AreReadOnceAndSharedByAllThreads) {
    ScopedSeparators separators(&CountingSource);
    gSourceCalls = 0;
    std::vector<UTF16String> results(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < results.size(); ++i) {
        threads.emplace_back([&results, i] { results[i] = NumberToString(1234.5, 1, 1, kNumberFormat_GroupThousands); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (auto const& result : results) {
        EXPECT_EQ(result, quorel::testing::U16({'1', 0x066C, '2', '3', '4', 0x066B, '5'}));
    }
    int const callsAfterStart = gSourceCalls;
    NumberToString(1.5);
    EXPECT_EQ(gSourceCalls, callsAfterStart) << "read at the first use only";
}

namespace {

// "," as decimal point, "." between groups of three, as in many European locales.
struct CommaPunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

}  // namespace

TEST(GetValueFromDisplayString, TheReadingThatGoesFurtherWins) {
    std::locale const comma = WithCodeUnitFacets(std::locale(std::locale::classic(), new CommaPunctuation));
    struct {
        char const* mText;
        double mExpected;
    } const cases[] = {
        {"", 0.0},        {"3,5", 3.5},     {"3.5", 3.5},       {"-3,5", -3.5}, {"-3.5", -3.5},
        {"1.234,5", 1234.5}, {"abc", 0.0},  {",5", 0.0},        {"7", 7.0},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(Locale::GetValueFromDisplayString(U16(c.mText), comma), c.mExpected) << c.mText;
    }
    EXPECT_EQ(Locale::GetValueFromDisplayString(U16("2.25"), Locale::Default()), 2.25);
}

TEST(Locale, DefaultReadsTheCNotation) {
    EXPECT_EQ(std::use_facet<std::numpunct<char>>(Locale::Default()).decimal_point(), '.');
    EXPECT_EQ(&Locale::Default(), &Locale::Default());
    EXPECT_EQ(Locale::GetValueFromDisplayString(U16("  12.5kg")), 12.5);
}

// The library is loaded again, in a child process whose environment names a
// locale that doesn't exist: loading must not throw, and the user's locale and
// separators fall back to the "C" ones.  The child checks that before any test
// runs, and its exit status tells the result.
namespace {

char const kChildVariable[] = "QUOREL_TEST_INVALID_LOCALE_CHILD";

bool FallbacksHold() {
    NumberSeparators const read = GetNumberSeparators();
    return std::use_facet<std::numpunct<char>>(Locale::Native()).decimal_point() == '.' &&
           HasCodeUnitFacets(Locale::Native()) && read.mDecimal == '.' && read.mThousands == ',' &&
           Locale::GetValueFromDisplayString(U16("3.5")) == 3.5;
}

int CheckFallbacksInChild() {
    if (std::getenv(kChildVariable) != nullptr) {
        std::_Exit(FallbacksHold() ? 0 : 1);
    }
    return 0;
}

[[maybe_unused]] int const gChildCheck = CheckFallbacksInChild();

}  // namespace

TEST(Locale, LoadsUnderALocaleThatDoesNotExist) {
    char self[4096] = {};
    ASSERT_GT(readlink("/proc/self/exe", self, sizeof self - 1), 0);
    std::string const command = std::string("LANG=xx_YY.UTF-8 LC_ALL=xx_YY.UTF-8 ") + kChildVariable + "=1 '" + self +
                                "' >/dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
}
