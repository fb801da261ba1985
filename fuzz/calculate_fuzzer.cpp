// Feeds arbitrary text to Calculate: the bytes are read as UTF-8, so that
// full-width and ideographic forms are reached too.  The first byte picks the
// user's separators.  Short texts are compared with the literal rules.
#include <quorel/utility/Calculator.h>
#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/UnicodeConversion.h>

#include "utility/CalculatorReference.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void PointDecimal(quorel::utility::NumberSeparators& ioSeparators) {
    ioSeparators.mDecimal = '.';
    ioSeparators.mThousands = ',';
}

void CommaDecimal(quorel::utility::NumberSeparators& ioSeparators) {
    ioSeparators.mDecimal = ',';
    ioSeparators.mThousands = '.';
}

// Longer texts take the reference too long: it copies the text at each level.
constexpr std::size_t kLongestCompared = 64;

bool SameDouble(double inA, double inB) {
    return (std::isnan(inA) && std::isnan(inB)) || std::memcmp(&inA, &inB, sizeof inA) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    if (inSize == 0) {
        return 0;
    }
    quorel::utility::SetNumberSeparatorSource((inData[0] & 1) != 0 ? &CommaDecimal : &PointDecimal);
    quorel::UTF8String const bytes(inData + 1, inData + inSize);
    quorel::UTF16String const text = quorel::utility::UTF8to16(bytes);
    double const result = quorel::utility::Calculate(text);
    if (text.size() <= kLongestCompared && !SameDouble(result, quorel::testing::ReferenceCalculate(text))) {
        std::abort();
    }
    return 0;
}
