#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/NumberText.h>
#include <quorel/utility/TextStreams.h>
#include <quorel/utility/TextUtils.h>
#include <quorel/utility/UnicodeConversion.h>

#include "NumberPunctuation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace quorel {
namespace utility {

namespace {

// Room for what the "%1.*lf" form may print; longer text is cut, and is then
// far beyond the length at which the scientific form takes over.
constexpr std::size_t kPrintBufferSize = 400;
// Text longer than this is written in scientific form.
constexpr std::size_t kLongestPlainText = 22;

constexpr unsigned short kIdeographicComma = 0x3001;
constexpr unsigned short kIdeographicFullStop = 0x3002;

template <class... Args>
std::string Print(char const* inFormat, Args... inArgs) {
    char buffer[kPrintBufferSize];
    int const length = std::snprintf(buffer, sizeof buffer, inFormat, inArgs...);
    return length < 0 ? std::string() : std::string(buffer);
}

// The conversion of a double to a 32-bit integer; a value out of range (or
// not a number) gives the "integer indefinite" value, the least integer.
std::int32_t ToInt32(double inValue) {
    constexpr double kBeyondGreatest = 2147483648.0;
    constexpr double kLeast = -2147483648.0;
    if (!(inValue >= kLeast && inValue < kBeyondGreatest)) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(inValue);
}

struct Magnitude {
    std::string mText;
    bool mScientific;
};

// Steps 2 and 3: the absolute value as plain text, or in scientific form when
// the plain text is too long or the 32-bit conversion overflowed.
Magnitude WriteMagnitude(double inAbsolute, int inDecimals) {
    std::string const text = inDecimals == 0
                                 ? Print("%li", static_cast<long>(ToInt32(std::floor(inAbsolute + 0.5))))
                                 : Print("%1.*lf", inDecimals, inAbsolute);
    if (text.size() > kLongestPlainText || (!text.empty() && text[0] == '-')) {
        return {Print("%e", inAbsolute), true};
    }
    return {text, false};
}

// Characters before the ".", or all of them.
std::size_t IntegerLength(std::string const& inText) {
    std::size_t const point = inText.find('.');
    return point == std::string::npos ? inText.size() : point;
}

void Pad(std::string& ioText, int inMinimumDigits, bool inBlanks) {
    std::size_t const length = IntegerLength(ioText);
    if (inMinimumDigits > 0 && length < static_cast<std::size_t>(inMinimumDigits)) {
        ioText.insert(0, static_cast<std::size_t>(inMinimumDigits) - length, inBlanks ? ' ' : '0');
    }
}

// A "," before every third character counted back from the end of the integer
// part, padding included.
void GroupThousands(std::string& ioText) {
    std::size_t const length = IntegerLength(ioText);
    std::string result;
    result.reserve(ioText.size() + length / 3);
    for (std::size_t i = 0; i < length; ++i) {
        if (i != 0 && (length - i) % 3 == 0) {
            result.push_back(',');
        }
        result.push_back(ioText[i]);
    }
    result.append(ioText, length, std::string::npos);
    ioText.swap(result);
}

char const* SignOf(bool inZero, bool inNegative, Flags<unsigned short> inFlags) {
    if (inNegative) {
        return "-";
    }
    if (inFlags.IsSet(kNumberFormat_ShowPlus)) {
        return (inZero && inFlags.IsSet(kNumberFormat_NoPlusOnZero)) ? "" : "+";
    }
    return inFlags.IsSet(kNumberFormat_BlankForPlus) ? " " : "";
}

void TrimTrailingZeros(std::string& ioText) {
    if (ioText.find('.') == std::string::npos) {
        return;
    }
    ioText.erase(ioText.find_last_not_of('0') + 1);
    if (!ioText.empty() && ioText.back() == '.') {
        ioText.pop_back();
    }
}

bool IsDigit(unsigned short inUnit) { return inUnit >= '0' && inUnit <= '9'; }

}  // namespace

void ToCanonicalPunctuation(UTF16String& ioText) {
    for (unsigned short& unit : ioText) {
        if (unit == kIdeographicComma) {
            unit = ',';
        } else if (unit == kIdeographicFullStop) {
            unit = '.';
        } else {
            ToNumericCase(unit);
        }
    }
}

UTF16String NumberToString(std::int32_t inValue) { return AsciiToUTF16(Print("%ld", static_cast<long>(inValue)).c_str()); }

UTF16String NumberToString(std::int64_t inValue) {
    return AsciiToUTF16(Print("%lld", static_cast<long long>(inValue)).c_str());
}

UTF16String NumberToHexString(std::int32_t inValue) {
    return AsciiToUTF16(Print("%X", static_cast<unsigned>(static_cast<std::uint32_t>(inValue))).c_str());
}

UTF16String NumberToString(double inValue) { return NumberToString(inValue, 1, 2, 0); }

UTF16String NumberToString(double inValue, int inMinimumDigits, int inDecimals, Flags<unsigned short> inFlags) {
    bool const zero = inValue == 0.0;
    bool const negative = inValue < 0.0;
    Magnitude magnitude = WriteMagnitude(std::fabs(inValue), inDecimals);
    std::string& text = magnitude.mText;
    if (!magnitude.mScientific) {
        Pad(text, inMinimumDigits, inFlags.IsSet(kNumberFormat_PadWithBlanks));
        if (inFlags.IsSet(kNumberFormat_GroupThousands)) {
            GroupThousands(text);
        }
    }
    text.insert(0, SignOf(zero, negative, inFlags));
    if (!magnitude.mScientific && inFlags.IsSet(kNumberFormat_TrimTrailingZeros)) {
        TrimTrailingZeros(text);
    }
    UTF16String result = AsciiToUTF16(text.c_str());
    if (!inFlags.IsSet(kNumberFormat_NoInternationalize)) {
        InternationalizeNum(result);
    }
    return result;
}

double StringToNumber(UTF16String const& inText, Flags<unsigned short> inFlags) {
    UTF16String text(inText);
    if (!inFlags.IsSet(kNumberParse_NoDeInternationalize)) {
        DeInternationalizeNum(text);
    }
    ReplaceAllStringInString(text, UTF16String(1, ','), UTF16String());
    // Without a digit the extraction can't read a number; skip the stream.
    if (std::none_of(text.begin(), text.end(), IsDigit)) {
        return 0.0;
    }
    iUTF8StringStream stream(UTF16to8(text));
    double value = 0.0;
    stream >> value;
    return value;
}

void InternationalizeNum(UTF16String& ioText) {
    NumberSeparators const separators = GetNumberSeparators();
    for (std::size_t i = 0; i + 1 < ioText.size(); ++i) {
        if (!IsDigit(ioText[i + 1])) {
            continue;
        }
        if (ioText[i] == '.') {
            ioText[i] = separators.mDecimal;
        } else if (ioText[i] == ',') {
            ioText[i] = separators.mThousands;
        }
    }
}

void DeInternationalizeNum(UTF16String& ioText) {
    ToCanonicalPunctuation(ioText);
    NumberSeparators const separators = GetNumberSeparators();
    for (unsigned short& unit : ioText) {
        if (unit == separators.mDecimal) {
            unit = '.';
        } else if (unit == separators.mThousands) {
            unit = ',';
        }
    }
}

}  // namespace utility
}  // namespace quorel
