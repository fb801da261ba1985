// Feeds arbitrary bytes through UTF8to16 to the number readers, and writes
// what they read back out: NumberToString of a finite value must read back
// within its precision.  The first byte picks the separators and the flags.
#include <quorel/utility/Locale.h>
#include <quorel/utility/NumberText.h>

#include "FuzzSupport.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    using namespace quorel;
    using namespace quorel::utility;
    if (inSize == 0) {
        return 0;
    }
    UTF16String const text = fuzzing::TextWithSeparatorsOf(inData, inSize);

    double const value = StringToNumber(text);
    StringToNumber(text, kNumberParse_NoDeInternationalize);
    Locale::GetValueFromDisplayString(text, Locale::Default());

    UTF16String copy = text;
    InternationalizeNum(copy);
    DeInternationalizeNum(copy);
    fuzzing::Require(copy.size() == text.size());

    // Six decimals, or six digits behind the point in the scientific form.
    // Bits 1 to 7 of the first byte are the flags (all but "no
    // internationalise", which the reading back doesn't need).
    if (std::isfinite(value)) {
        auto const flags = static_cast<unsigned short>((inData[0] >> 1) & ~kNumberFormat_NoInternationalize);
        double const back = StringToNumber(NumberToString(value, 1, 6, flags));
        fuzzing::Require(std::fabs(back - value) <= 1e-6 + 1e-6 * std::fabs(value));
    }
    return 0;
}
