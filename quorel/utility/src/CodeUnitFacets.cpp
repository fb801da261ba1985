#include <quorel/utility/CodeUnitFacets.h>

#include <algorithm>

namespace quorel {
namespace detail {

namespace {

constexpr unsigned kFirstNonAscii = 0x80;

// The "C" locale's classification of a unit; units beyond ASCII have none.
std::ctype_base::mask ClassOf(unsigned inUnit) {
    return inUnit < kFirstNonAscii ? std::ctype<char>::classic_table()[inUnit] : std::ctype_base::mask();
}

template <class Unit>
Unit AsciiUpper(Unit inUnit) {
    return (inUnit >= 'a' && inUnit <= 'z') ? static_cast<Unit>(inUnit - 'a' + 'A') : inUnit;
}

template <class Unit>
Unit AsciiLower(Unit inUnit) {
    return (inUnit >= 'A' && inUnit <= 'Z') ? static_cast<Unit>(inUnit - 'A' + 'a') : inUnit;
}

template <class Unit>
PunctuationString<Unit> Widened(char const* inAscii) {
    PunctuationString<Unit> result;
    for (; *inAscii != 0; ++inAscii) {
        result.push_back(static_cast<Unit>(static_cast<unsigned char>(*inAscii)));
    }
    return result;
}

}  // namespace

// CodeUnitCtype

template <class Unit>
std::locale::id CodeUnitCtype<Unit>::id;

template <class Unit>
CodeUnitCtype<Unit>::~CodeUnitCtype() = default;

template <class Unit>
bool CodeUnitCtype<Unit>::do_is(mask inMask, char_type inUnit) const {
    return (ClassOf(inUnit) & inMask) != 0;
}

template <class Unit>
Unit const* CodeUnitCtype<Unit>::do_is(char_type const* inBegin, char_type const* inEnd, mask* outMasks) const {
    for (; inBegin != inEnd; ++inBegin, ++outMasks) {
        *outMasks = ClassOf(*inBegin);
    }
    return inEnd;
}

template <class Unit>
Unit const* CodeUnitCtype<Unit>::do_scan_is(mask inMask, char_type const* inBegin, char_type const* inEnd) const {
    return std::find_if(inBegin, inEnd, [&](char_type inUnit) { return do_is(inMask, inUnit); });
}

template <class Unit>
Unit const* CodeUnitCtype<Unit>::do_scan_not(mask inMask, char_type const* inBegin, char_type const* inEnd) const {
    return std::find_if(inBegin, inEnd, [&](char_type inUnit) { return !do_is(inMask, inUnit); });
}

template <class Unit>
Unit CodeUnitCtype<Unit>::do_toupper(char_type inUnit) const {
    return AsciiUpper(inUnit);
}

template <class Unit>
Unit const* CodeUnitCtype<Unit>::do_toupper(char_type* ioBegin, char_type const* inEnd) const {
    std::transform(ioBegin, ioBegin + (inEnd - ioBegin), ioBegin, AsciiUpper<Unit>);
    return inEnd;
}

template <class Unit>
Unit CodeUnitCtype<Unit>::do_tolower(char_type inUnit) const {
    return AsciiLower(inUnit);
}

template <class Unit>
Unit const* CodeUnitCtype<Unit>::do_tolower(char_type* ioBegin, char_type const* inEnd) const {
    std::transform(ioBegin, ioBegin + (inEnd - ioBegin), ioBegin, AsciiLower<Unit>);
    return inEnd;
}

template <class Unit>
Unit CodeUnitCtype<Unit>::do_widen(char inChar) const {
    return static_cast<Unit>(static_cast<unsigned char>(inChar));
}

template <class Unit>
char const* CodeUnitCtype<Unit>::do_widen(char const* inBegin, char const* inEnd, char_type* outUnits) const {
    std::transform(inBegin, inEnd, outUnits, [this](char inChar) { return do_widen(inChar); });
    return inEnd;
}

template <class Unit>
char CodeUnitCtype<Unit>::do_narrow(char_type inUnit, char inDefault) const {
    return inUnit < kFirstNonAscii ? static_cast<char>(inUnit) : inDefault;
}

template <class Unit>
Unit const* CodeUnitCtype<Unit>::do_narrow(char_type const* inBegin, char_type const* inEnd, char inDefault,
                                           char* outChars) const {
    std::transform(inBegin, inEnd, outChars, [&](char_type inUnit) { return do_narrow(inUnit, inDefault); });
    return inEnd;
}

// CodeUnitNumpunct

template <class Unit>
std::locale::id CodeUnitNumpunct<Unit>::id;

template <class Unit>
CodeUnitNumpunct<Unit>::CodeUnitNumpunct(std::size_t inRefs) : CodeUnitNumpunct('.', ',', std::string(), inRefs) {}

template <class Unit>
CodeUnitNumpunct<Unit>::CodeUnitNumpunct(char_type inDecimalPoint, char_type inThousandsSeparator,
                                         std::string inGrouping, std::size_t inRefs)
    : std::locale::facet(inRefs),
      mDecimalPoint(inDecimalPoint),
      mThousandsSeparator(inThousandsSeparator),
      mGrouping(std::move(inGrouping)) {}

template <class Unit>
CodeUnitNumpunct<Unit>::~CodeUnitNumpunct() = default;

template <class Unit>
Unit CodeUnitNumpunct<Unit>::do_decimal_point() const {
    return mDecimalPoint;
}

template <class Unit>
Unit CodeUnitNumpunct<Unit>::do_thousands_sep() const {
    return mThousandsSeparator;
}

template <class Unit>
std::string CodeUnitNumpunct<Unit>::do_grouping() const {
    return mGrouping;
}

template <class Unit>
typename CodeUnitNumpunct<Unit>::string_type CodeUnitNumpunct<Unit>::do_truename() const {
    return Widened<Unit>("true");
}

template <class Unit>
typename CodeUnitNumpunct<Unit>::string_type CodeUnitNumpunct<Unit>::do_falsename() const {
    return Widened<Unit>("false");
}

template class CodeUnitCtype<unsigned char>;
template class CodeUnitCtype<unsigned short>;
template class CodeUnitNumpunct<unsigned char>;
template class CodeUnitNumpunct<unsigned short>;

}  // namespace detail
}  // namespace quorel

namespace std {

template class num_get<unsigned char, istreambuf_iterator<unsigned char, quorel::CodeUnitTraits<unsigned char>>>;
template class num_put<unsigned char, ostreambuf_iterator<unsigned char, quorel::CodeUnitTraits<unsigned char>>>;
template class num_get<unsigned short, istreambuf_iterator<unsigned short, quorel::CodeUnitTraits<unsigned short>>>;
template class num_put<unsigned short, ostreambuf_iterator<unsigned short, quorel::CodeUnitTraits<unsigned short>>>;

}  // namespace std

namespace quorel {
namespace utility {

namespace {

using UTF8NumGet = std::num_get<unsigned char, std::istreambuf_iterator<unsigned char, CodeUnitTraits<unsigned char>>>;
using UTF8NumPut = std::num_put<unsigned char, std::ostreambuf_iterator<unsigned char, CodeUnitTraits<unsigned char>>>;
using UTF16NumGet =
    std::num_get<unsigned short, std::istreambuf_iterator<unsigned short, CodeUnitTraits<unsigned short>>>;
using UTF16NumPut =
    std::num_put<unsigned short, std::ostreambuf_iterator<unsigned short, CodeUnitTraits<unsigned short>>>;

constexpr char32_t kLastAsciiUnit = 0x7F;
constexpr char32_t kLastUTF16Unit = 0xFFFF;

// A locale's numeric punctuation as characters (code points).
struct Punctuation {
    char32_t mDecimalPoint = '.';
    char32_t mThousandsSeparator = ',';
    std::string mGrouping;
};

// The narrow facet's separators are characters when they are ASCII bytes; a
// byte beyond ASCII is part of a multi-byte character, which the wide facet
// gives whole.
Punctuation PunctuationOf(std::locale const& inLocale) {
    Punctuation result;
    if (!std::has_facet<std::numpunct<char>>(inLocale)) {
        return result;
    }
    auto const& narrow = std::use_facet<std::numpunct<char>>(inLocale);
    result.mDecimalPoint = static_cast<unsigned char>(narrow.decimal_point());
    result.mThousandsSeparator = static_cast<unsigned char>(narrow.thousands_sep());
    result.mGrouping = narrow.grouping();
    if (std::has_facet<std::numpunct<wchar_t>>(inLocale)) {
        auto const& wide = std::use_facet<std::numpunct<wchar_t>>(inLocale);
        if (result.mDecimalPoint > kLastAsciiUnit) {
            result.mDecimalPoint = static_cast<char32_t>(wide.decimal_point());
        }
        if (result.mThousandsSeparator > kLastAsciiUnit) {
            result.mThousandsSeparator = static_cast<char32_t>(wide.thousands_sep());
        }
    }
    return result;
}

// Punctuation that a stream of Unit can use: a separator beyond the unit's
// reach falls back to its "C" value, and grouping is dropped with a thousands
// separator that can't be written.
template <class Unit>
std::numpunct<Unit>* MakeNumpunct(Punctuation const& inPunctuation, char32_t inLastUnit) {
    Unit const decimalPoint =
        static_cast<Unit>(inPunctuation.mDecimalPoint <= inLastUnit ? inPunctuation.mDecimalPoint : '.');
    bool const separatorFits = inPunctuation.mThousandsSeparator <= inLastUnit;
    return new std::numpunct<Unit>(decimalPoint,
                                   static_cast<Unit>(separatorFits ? inPunctuation.mThousandsSeparator : ','),
                                   separatorFits ? inPunctuation.mGrouping : std::string());
}

}  // namespace

std::locale WithCodeUnitFacets(std::locale const& inBase) {
    Punctuation const punctuation = PunctuationOf(inBase);
    std::locale result(inBase, new std::ctype<unsigned char>);
    result = std::locale(result, new std::ctype<unsigned short>);
    result = std::locale(result, MakeNumpunct<unsigned char>(punctuation, kLastAsciiUnit));
    result = std::locale(result, MakeNumpunct<unsigned short>(punctuation, kLastUTF16Unit));
    result = std::locale(result, new UTF8NumGet);
    result = std::locale(result, new UTF8NumPut);
    result = std::locale(result, new UTF16NumGet);
    return std::locale(result, new UTF16NumPut);
}

bool HasCodeUnitFacets(std::locale const& inLocale) {
    return std::has_facet<std::ctype<unsigned char>>(inLocale) && std::has_facet<std::ctype<unsigned short>>(inLocale) &&
           std::has_facet<std::numpunct<unsigned char>>(inLocale) &&
           std::has_facet<std::numpunct<unsigned short>>(inLocale) && std::has_facet<UTF8NumGet>(inLocale) &&
           std::has_facet<UTF8NumPut>(inLocale) && std::has_facet<UTF16NumGet>(inLocale) &&
           std::has_facet<UTF16NumPut>(inLocale);
}

}  // namespace utility
}  // namespace quorel
