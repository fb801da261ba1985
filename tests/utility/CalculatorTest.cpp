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

class CalculatorTest : public ::testing::Test {
protected:
    void SetUp() override { SetNumberSeparatorSource(&PointDecimal); }
    void TearDown() override { SetNumberSeparatorSource(nullptr); }
};

// Processor time, which a busy machine doesn't inflate.
double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

std::string Repeat(std::string const& inText, std::size_t inCount) {
    std::string result;
    for (std::size_t i = 0; i < inCount; ++i) result += inText;
    return result;
}

std::string RandomText(std::mt19937& ioRandom, char const* inAlphabet, std::size_t inLength) {
    std::string text(inLength, ' ');
    for (char& c : text) c = inAlphabet[ioRandom() % std::strlen(inAlphabet)];
    return text;
}

}  // namespace

TEST_F(CalculatorTest, TheOrderOfDecisionsDefinesTheLanguage) {
    std::pair<char const*, double> const cases[] = {
        {"", 0},           {"5", 5},           {"-", 0},         {"1+2*3", 7},        {"(1+2)*3", 9},
        {"8/2/2", 2},      {"8/2*3", 12},      {"2^3^2", 64},    {"-3", -3},          {"2--3", -1},
        {"2*-3", -3},      {"1e3", 1000},      {"1e-3", 0.001},  {"1e3+2", 100000},   {"7/0", 7},
        {"(1)+(2)", 3},    {"((4))", 4},       {"(1+2", 0},      {"1,000+1", 1001},   {"2 + 3 apples", 5},
        {"*5", 5},         {"2**3", 6},        {"2**3+1", 6},    {"2(3)", 2},         {"((1)+(2))", 0},
        {"  12 . 5 ", 12.5}, {"3E2", 300},     {"(((", 0},       {")1+2(", 0},        {"1-2-3", -4},
        {"2^-1", 0},       {"(2)(3)", 0},      {"4/(1-1)", 4},   {"10-(2+3)*2", 0},
    };
    for (auto const& [text, expected] : cases) EXPECT_DOUBLE_EQ(Calculate(U16(text)), expected) << '"' << text << '"';

    EXPECT_TRUE(std::isinf(Calculate(U16("10^400"))));
    EXPECT_TRUE(std::isnan(Calculate(U16("(0-8)^0.5"))));
    // Full-width "1", "+", "2", ideographic full stop, full-width "5".
    EXPECT_DOUBLE_EQ(Calculate(U16({0xFF11, 0xFF0B, 0xFF12, 0x3002, 0xFF15})), 3.5);
    SetNumberSeparatorSource([](NumberSeparators& ioSeparators) {
        ioSeparators.mDecimal = ',';
        ioSeparators.mThousands = '.';
    });
    EXPECT_DOUBLE_EQ(Calculate(U16("1,5")), 1.5);
    EXPECT_DOUBLE_EQ(Calculate(U16("1.000,5*2")), 2001);
}

// The library's calculator and the literal rules give the very same doubles.
TEST_F(CalculatorTest, AgreesWithTheLiteralRulesOnRandomText) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 20000; ++round) {
        std::string const text = RandomText(random, "0123456789()()++--**//..,,^^eEx ", random() % 25);
        double const expected = ReferenceCalculate(U16(text.c_str()));
        double const actual = Calculate(U16(text.c_str()));
        ASSERT_TRUE((std::isnan(actual) && std::isnan(expected)) || std::memcmp(&actual, &expected, sizeof actual) == 0)
            << '"' << text << "\" gives " << actual << ", not " << expected;
    }
}

// Long and deep expressions, and a random mebibyte: no stack overflow, and
// no quadratic cost.
TEST_F(CalculatorTest, LongExpressionsReturnQuickly) {
    std::size_t const kOperators = 100000, kMebibyte = 1u << 20;
    std::mt19937 random(7);
    struct {
        char const* mName;
        std::string mText;
        double mExpected;  // not a number: any result
    } const cases[] = {
        {"sum chain", Repeat("1+", kOperators) + "1", kOperators + 1.0},
        {"product chain", Repeat("1*", kOperators) + "1", 1.0},
        {"minus signs", std::string(kMebibyte, '-'), 0.0},
        {"nested sums", Repeat("(1+", kOperators) + "1" + std::string(kOperators, ')'), kOperators + 1.0},
        {"parentheses", std::string(kMebibyte / 2, '(') + "7" + std::string(kMebibyte / 2, ')'), 7.0},
        {"stranded operators", Repeat("1+*", kOperators) + "1", kOperators + 1.0},
        {"digits", std::string(kMebibyte, '1'), std::numeric_limits<double>::max()},
        {"random", RandomText(random, "0123456789()+-*/.,^eE ", kMebibyte), std::nan("")},
    };
    for (auto const& c : cases) {
        double const start = ProcessorSeconds();
        double const result = Calculate(U16(c.mText.c_str()));
        EXPECT_TRUE(std::isnan(c.mExpected) || result == c.mExpected) << c.mName << " gives " << result;
        EXPECT_LT(ProcessorSeconds() - start, 20.0) << c.mName;
    }
}
