// Feeds arbitrary text to Calculate: the bytes are read as UTF-8, so that
// full-width and ideographic forms are reached too.  The first byte picks the
// user's separators.  Short texts are compared with the literal rules.
#include <quorel/utility/Calculator.h>

#include "FuzzSupport.h"
#include "utility/CalculatorReference.h"

#include <cmath>
#include <cstring>

// Longer texts take the reference too long: it copies the text at each level.
constexpr std::size_t kLongestCompared = 64;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    if (inSize == 0) {
        return 0;
    }
    quorel::UTF16String const text = quorel::fuzzing::TextWithSeparatorsOf(inData, inSize);
    double const result = quorel::utility::Calculate(text);
    if (text.size() <= kLongestCompared) {  // the same bits, or both NaN
        double const reference = quorel::testing::ReferenceCalculate(text);
        quorel::fuzzing::Require(std::memcmp(&result, &reference, sizeof result) == 0 ||
                                 (std::isnan(result) && std::isnan(reference)));
    }
    return 0;
}
