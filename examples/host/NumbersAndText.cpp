#include "NumbersAndText.h"

#include <quorel/utility/Calculator.h>
#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/NumberText.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cstdio>
#include <string>

namespace util = quorel::utility;

namespace {

std::string Narrow(quorel::UTF16String const& inText) {
    quorel::UTF8String const utf8 = util::UTF16to8(inText);
    return std::string(utf8.begin(), utf8.end());
}

}  // namespace

void ShowNumbersAndText() {
    util::NumberSeparators const separators = util::GetNumberSeparators();
    std::printf("Your separators: decimal \"%s\", thousands \"%s\"\n",
                Narrow(quorel::UTF16String(1, separators.mDecimal)).c_str(),
                Narrow(quorel::UTF16String(1, separators.mThousands)).c_str());

    double const amount = 1234567.891;
    std::printf("%.3f for people: %s\n", amount,
                Narrow(util::NumberToString(amount, 1, 2, util::kNumberFormat_GroupThousands)).c_str());

    char const expression[] = "(1 + 2) * 3^2 - 10 / 4";
    double const value = util::Calculate(util::AsciiToUTF16(expression));
    std::printf("%s = %s\n", expression,
                Narrow(util::NumberToString(value, 1, 2, util::kNumberFormat_TrimTrailingZeros)).c_str());
}
