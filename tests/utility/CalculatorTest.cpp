#include <quorel/utility/Calculator.h>
#include <quorel/utility/NumberSeparators.h>

#include "support/TextHelpers.h"
#include "utility/CalculatorReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <ctime>
#include <limits>
#include <random>
#include <string>

using namespace quorel;
using namespace quorel::utility;
using quorel::testing::ReferenceCalculate;
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

class CalculatorTest : public ::testing::Test {
protected:
    void SetUp() override { SetNumberSeparatorSource(&PointDecimal); }
    void TearDown() override { SetNumberSeparatorSource(nullptr); }
};

bool SameDouble(double inA, double inB) {
    return (std::isnan(inA) && std::isnan(inB)) || std::memcmp(&inA, &inB, sizeof inA) == 0;
}

// Processor time, which a busy machine doesn't inflate.
double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

std::string Repeat(std::string const& inText, std::size_t inCount) {
    std::string result;
    result.reserve(inText.size() * inCount);
    for (std::size_t i = 0; i < inCount; ++i) {
        result += inText;
    }
    return result;
}

}  // namespace

TEST_F(CalculatorTest, TheOrderOfDecisionsDefinesTheLanguage) {
    struct {
        char const* mText;
        double mExpected;
    } const cases[] = {
        {"", 0},           {"5", 5},           {"-", 0},         {"1+2*3", 7},        {"(1+2)*3", 9},
        {"8/2/2", 2},      {"8/2*3", 12},      {"2^3^2", 64},    {"-3", -3},          {"2--3", -1},
        {"2*-3", -3},      {"1e3", 1000},      {"1e-3", 0.001},  {"1e3+2", 100000},   {"7/0", 7},
        {"(1)+(2)", 3},    {"((4))", 4},       {"(1+2", 0},      {"1,000+1", 1001},   {"2 + 3 apples", 5},
        {"*5", 5},         {"2**3", 6},        {"2**3+1", 6},    {"2(3)", 2},         {"((1)+(2))", 0},
        {"  12 . 5 ", 12.5}, {"3E2", 300},     {"(((", 0},       {")1+2(", 0},        {"1-2-3", -4},
        {"2^-1", 0},       {"(2)(3)", 0},      {"4/(1-1)", 4},   {"10-(2+3)*2", 0},
    };
    for (auto const& c : cases) {
        EXPECT_DOUBLE_EQ(Calculate(U16(c.mText)), c.mExpected) << '"' << c.mText << '"';
    }
}

TEST_F(CalculatorTest, ReadsNumbersInTheUsersNotation) {
    // Full-width "1", "+", "2", ideographic full stop, full-width "5".
    EXPECT_DOUBLE_EQ(Calculate(quorel::testing::U16({0xFF11, 0xFF0B, 0xFF12, 0x3002, 0xFF15})), 3.5);
    SetNumberSeparatorSource(&CommaDecimal);
    EXPECT_DOUBLE_EQ(Calculate(U16("1,5")), 1.5);
    EXPECT_DOUBLE_EQ(Calculate(U16("1.000,5*2")), 2001);
}

TEST_F(CalculatorTest, PowersHandOnInfinityAndNotANumber) {
    EXPECT_TRUE(std::isinf(Calculate(U16("10^400"))));
    EXPECT_TRUE(std::isnan(Calculate(U16("(0-8)^0.5"))));
}

// The library's calculator and the literal rules give the very same doubles.
TEST_F(CalculatorTest, AgreesWithTheLiteralRulesOnRandomText) {
    static char const kAlphabet[] = "0123456789()()++--**//..,,^^eEx ";
    std::mt19937 random(20240611);
    std::uniform_int_distribution<std::size_t> pick(0, sizeof kAlphabet - 2);
    std::uniform_int_distribution<int> length(0, 24);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int i = length(random); i > 0; --i) {
            text.push_back(kAlphabet[pick(random)]);
        }
        double const expected = ReferenceCalculate(U16(text.c_str()));
        double const actual = Calculate(U16(text.c_str()));
        ASSERT_TRUE(SameDouble(actual, expected)) << '"' << text << "\" gives " << actual << ", not " << expected;
    }
}

struct LongCase {
    char const* mName;
    std::string mText;
    double mExpected;
};

// Long and deep expressions: no stack overflow, and no quadratic cost.
TEST_F(CalculatorTest, LongExpressionsReturnQuickly) {
    std::size_t const kOperators = 100000;
    std::size_t const kMebibyte = 1u << 20;
    LongCase const cases[] = {
        {"sum chain", Repeat("1+", kOperators) + "1", kOperators + 1.0},
        {"product chain", Repeat("1*", kOperators) + "1", 1.0},
        {"minus signs", std::string(kMebibyte, '-'), 0.0},
        {"nested sums", Repeat("(1+", kOperators) + "1" + std::string(kOperators, ')'), kOperators + 1.0},
        {"parentheses", std::string(kMebibyte / 2, '(') + "7" + std::string(kMebibyte / 2, ')'), 7.0},
        {"stranded operators", Repeat("1+*", kOperators) + "1", kOperators + 1.0},
        {"digits", std::string(kMebibyte, '1'), std::numeric_limits<double>::max()},
    };
    for (LongCase const& c : cases) {
        double const start = ProcessorSeconds();
        EXPECT_DOUBLE_EQ(Calculate(U16(c.mText.c_str())), c.mExpected) << c.mName;
        EXPECT_LT(ProcessorSeconds() - start, 20.0) << c.mName;
    }
}

TEST_F(CalculatorTest, ARandomMebibyteReturns) {
    static char const kAlphabet[] = "0123456789()+-*/.,^eE ";
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, sizeof kAlphabet - 2);
    std::string text(1u << 20, ' ');
    for (char& c : text) {
        c = kAlphabet[pick(random)];
    }
    double const start = ProcessorSeconds();
    Calculate(U16(text.c_str()));
    EXPECT_LT(ProcessorSeconds() - start, 20.0);
}
