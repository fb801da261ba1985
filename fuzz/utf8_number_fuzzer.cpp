// Feeds arbitrary bytes through UTF8to16 to the number readers, and writes
// what they read back out: NumberToString of a finite value must read back
// within its precision.  The first byte picks the separators and the flags.
#include <quorel/utility/Locale.h>
#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/NumberText.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void PointDecimal(quorel::utility::NumberSeparators& ioSeparators) {
    ioSeparators.mDecimal = '.';
    ioSeparators.mThousands = ',';
}

void CommaDecimal(quorel::utility::NumberSeparators& ioSeparators) {
    ioSeparators.mDecimal = ',';
    ioSeparators.mThousands = '.';
}

// Six decimals, or six digits behind the point in the scientific form.
void CheckReadsBack(double inValue, quorel::utility::Flags<unsigned short> inFlags) {
    using namespace quorel::utility;
    if (!std::isfinite(inValue)) {
        return;
    }
    quorel::UTF16String const written = NumberToString(inValue, 1, 6, inFlags);
    double const back = StringToNumber(written);
    if (!(std::fabs(back - inValue) <= 1e-6 + 1e-6 * std::fabs(inValue))) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    using namespace quorel;
    using namespace quorel::utility;
    if (inSize == 0) {
        return 0;
    }
    std::uint8_t const control = inData[0];
    SetNumberSeparatorSource((control & 1) != 0 ? &CommaDecimal : &PointDecimal);
    UTF16String const text = UTF8to16(UTF8String(inData + 1, inData + inSize));

    double const value = StringToNumber(text);
    StringToNumber(text, kNumberParse_NoDeInternationalize);
    Locale::GetValueFromDisplayString(text, Locale::Default());

    UTF16String copy = text;
    InternationalizeNum(copy);
    DeInternationalizeNum(copy);
    if (copy.size() != text.size()) {
        std::abort();
    }
    // Bits 1 to 7 of the control byte are the flags (all but "no
    // internationalise", which the reading back doesn't need).
    unsigned short const flags = static_cast<unsigned short>((control >> 1) & ~kNumberFormat_NoInternationalize);
    CheckReadsBack(value, flags);
    return 0;
}
