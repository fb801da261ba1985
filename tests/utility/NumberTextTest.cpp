#include <quorel/utility/CodeUnitFacets.h>
#include <quorel/utility/Locale.h>
#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/NumberText.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cfloat>
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

void PointDecimal(NumberSeparators& ioSeparators) { ioSeparators.mDecimal = '.', ioSeparators.mThousands = ','; }
void CommaDecimal(NumberSeparators& ioSeparators) { ioSeparators.mDecimal = ',', ioSeparators.mThousands = '.'; }

// Makes the separators a test's own, whatever the machine's locale says.
class ScopedSeparators {
public:
    explicit ScopedSeparators(NumberSeparatorSource inSource) { SetNumberSeparatorSource(inSource); }
    ~ScopedSeparators() { SetNumberSeparatorSource(nullptr); }
};

unsigned short const kFullWidthOne = 0xFF11, kFullWidthTwo = 0xFF12;

}  // namespace

TEST(NumberToString, FormatsByTheFlagsAndFallsBackToScientificFormUntouched) {
    ScopedSeparators separators(&PointDecimal);
    unsigned short const kPlain = kNumberFormat_NoInternationalize, kGroup = kNumberFormat_GroupThousands,
                         kBlanks = kNumberFormat_PadWithBlanks, kPlus = kNumberFormat_ShowPlus,
                         kNoPlusOnZero = kNumberFormat_NoPlusOnZero, kBlankForPlus = kNumberFormat_BlankForPlus,
                         kTrim = kNumberFormat_TrimTrailingZeros;
    struct Case { double mValue; int mMinimumDigits, mDecimals; unsigned short mFlags; char const* mExpected; };
    Case const cases[] = {
        {2.5, 1, 0, 0, "3"}, {2.4999, 1, 0, 0, "2"}, {999.5, 1, 0, 0, "1000"}, {5, 4, 0, kBlanks, "   5"},
        {-5, 3, 0, 0, "-005"}, {-0.001, 1, 2, 0, "-0.00"}, {123, 6, 0, kGroup, "000,123"},
        {1234.5, 6, 2, kGroup | kPlain, "001,234.50"}, {123, 6, 0, kGroup | kBlanks, "   ,123"},
        {-1234.5, 1, 1, kGroup, "-1,234.5"}, {1234567.891, 1, 2, kGroup, "1,234,567.89"},
        {-1.5, 1, 1, kPlus | kPlain, "-1.5"}, {0.0, 1, 1, kPlus, "+0.0"}, {-0.0, 1, 1, kPlus, "+0.0"},
        {0.0, 1, 1, kPlus | kNoPlusOnZero, "0.0"}, {0.001, 1, 2, kPlus | kNoPlusOnZero, "+0.00"},
        {7, 1, 0, kBlankForPlus, " 7"}, {7, 1, 0, kBlankForPlus | kPlus, "+7"}, {12.0, 1, 3, kTrim, "12"},
        {0, 1, 0, kBlankForPlus | kPlus | kNoPlusOnZero, "0"}, {-12.5, 1, 3, kTrim, "-12.5"}, {100, 1, 0, kTrim, "100"},
        {2147483647.4, 1, 0, 0, "2147483647"}, {12345678901234.5, 1, 2, 0, "12345678901234.50"},  // 22 characters
        // Scientific form, without padding, grouping or trimming: too great for
        // 32 bits, rounding beyond them, longer than 22 characters or beyond the print buffer.
        {3000000000.0, 1, 0, 0, "3.000000e+09"}, {2147483647.5, 1, 0, 0, "2.147484e+09"},
        {3000000000.0, 20, 0, kGroup | kTrim, "3.000000e+09"}, {1e30, 1, 2, kPlus, "+1.000000e+30"},
        {123456789012345678.0, 1, 4, 0, "1.234568e+17"}, {DBL_MAX, 1, 300, 0, "1.797693e+308"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(NumberToString(c.mValue, c.mMinimumDigits, c.mDecimals, c.mFlags), U16(c.mExpected))
            << c.mValue << " " << c.mMinimumDigits << " " << c.mDecimals << " flags " << c.mFlags;
    }
}

TEST(NumberToString, TakesTheUsersSeparatorsLastButNotForIntegers) {
    ScopedSeparators separators(&CommaDecimal);
    std::pair<UTF16String, char const*> const cases[] = {
        {NumberToString(1234.5, 1, 2, kNumberFormat_GroupThousands), "1.234,50"},
        {NumberToString(1234.5, 1, 2, kNumberFormat_GroupThousands | kNumberFormat_NoInternationalize), "1,234.50"},
        {NumberToString(1.25), "1,25"}, {NumberToString(3000000000.0, 1, 0, 0), "3,000000e+09"},
        {NumberToString(std::int32_t(1234)), "1234"}, {NumberToHexString(-1), "FFFFFFFF"}, {NumberToHexString(0), "0"},
        {NumberToString(std::numeric_limits<std::int32_t>::min()), "-2147483648"},
        {NumberToString(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808"},
        {NumberToHexString(std::numeric_limits<std::int32_t>::min()), "80000000"},
    };
    for (auto const& [text, expected] : cases) EXPECT_EQ(text, U16(expected));
}

TEST(InternationalizeNum, SwapsOnlySeparatorsBeforeADigitAndBack) {
    ScopedSeparators separators(&CommaDecimal);
    std::pair<char const*, char const*> const cases[] = {
        {"1,5,", "1.5,"}, {"1,234.5", "1.234,5"}, {"a.b", "a.b"}, {".", "."}, {"5.", "5."}, {". 5", ". 5"}, {"", ""},
    };
    for (auto const& [in, out] : cases) {
        UTF16String text = U16(in);
        InternationalizeNum(text);
        EXPECT_EQ(text, U16(out)) << in;
    }
    // Back, every separator: full-width "1", "," and "5", ideographic comma and full stop.
    UTF16String text = U16("1.234,5."), wide = U16({kFullWidthOne, 0xFF0C, 0xFF15, ' ', 0x3001, 0x3002, 0xFF20});
    DeInternationalizeNum(text);
    DeInternationalizeNum(wide);
    EXPECT_TRUE(text == U16("1,234.5,") && wide == U16({'1', '.', '5', ' ', '.', ',', 0xFF20}));
}

TEST(StringToNumber, ReadsTheLeadingNumberInTheUsersNotationUnlessTold) {
    ScopedSeparators separators(&PointDecimal);
    std::pair<UTF16String, double> const cases[] = {
        {U16("12abc"), 12}, {U16("abc"), 0}, {U16(""), 0}, {U16("  -3.5"), -3.5}, {U16("+7"), 7},
        {U16("1,000,000.25"), 1000000.25}, {U16("1e3"), 1000}, {U16(".5"), 0.5},
        {U16({kFullWidthOne, kFullWidthTwo}), 12}, {U16({kFullWidthOne, 0x3002, kFullWidthTwo}), 1.2},
    };
    for (auto const& [text, expected] : cases) EXPECT_EQ(StringToNumber(text), expected);
    SetNumberSeparatorSource(&CommaDecimal);
    EXPECT_TRUE(StringToNumber(U16("-1.234.567,125")) == -1234567.125 && StringToNumber(U16("1,5")) == 1.5);
    EXPECT_TRUE(StringToNumber(U16("1,5"), kNumberParse_NoDeInternationalize) == 15 &&
                StringToNumber(U16("1.5"), kNumberParse_NoDeInternationalize) == 1.5);
    EXPECT_EQ(StringToNumber(U16("1.5"), kNumberFormat_NoInternationalize), 15) << "only bit 2 counts";
}

static std::atomic<int> gSourceCalls{0};

TEST(NumberSeparators, AreReadOnceSharedByAllThreadsAndKeepDefaultsForMissingValues) {
    SetNumberSeparatorSource([](NumberSeparators& ioSeparators) { ioSeparators.mThousands = 0; });
    EXPECT_TRUE(GetNumberSeparators().mDecimal == '.' && GetNumberSeparators().mThousands == ',');
    ScopedSeparators separators([](NumberSeparators& ioSeparators) {
        ++gSourceCalls;
        std::this_thread::yield();
        ioSeparators.mDecimal = 0x066B, ioSeparators.mThousands = 0x066C;  // Arabic decimal and thousands separators
    });
    gSourceCalls = 0;
    std::vector<UTF16String> results(8);
    std::vector<std::thread> threads;
    for (UTF16String& result : results) {
        threads.emplace_back([&result] { result = NumberToString(1234.5, 1, 1, kNumberFormat_GroupThousands); });
    }
    for (auto& thread : threads) thread.join();
    for (auto const& result : results) EXPECT_EQ(result, U16({'1', 0x066C, '2', '3', '4', 0x066B, '5'}));
    int const callsAfterStart = gSourceCalls;
    NumberToString(1.5);
    EXPECT_EQ(gSourceCalls, callsAfterStart) << "read at the first use only";
}

// The test program is run again in a child process whose environment names a
// locale that doesn't exist: loading the library must not throw, and the
// user's locale and separators fall back to the "C" ones.  The child checks
// that before any test runs, and its exit status tells the result.
static char const kChildVariable[] = "QUOREL_TEST_INVALID_LOCALE_CHILD";

[[maybe_unused]] static int const gChildCheck = [] {
    if (std::getenv(kChildVariable) == nullptr) return 0;
    NumberSeparators const read = GetNumberSeparators();
    bool const fellBack = std::use_facet<std::numpunct<char>>(Locale::Native()).decimal_point() == '.' &&
                          HasCodeUnitFacets(Locale::Native()) && read.mDecimal == '.' && read.mThousands == ',' &&
                          Locale::GetValueFromDisplayString(U16("3.5")) == 3.5 &&
                          NumberToString(1234.5, 1, 1, kNumberFormat_GroupThousands) == U16("1,234.5");
    std::_Exit(fellBack ? 0 : 1);
}();

TEST(Locale, LoadsUnderALocaleThatDoesNotExist) {
    char self[4096] = {};
    ASSERT_GT(readlink("/proc/self/exe", self, sizeof self - 1), 0);
    std::string const command = std::string("LANG=xx_YY.UTF-8 LC_ALL=xx_YY.UTF-8 ") + kChildVariable + "=1 '" + self +
                                "' >/dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
}
