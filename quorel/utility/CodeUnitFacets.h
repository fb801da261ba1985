// Locale facets for standard streams of quorel's code units.
//
// A standard stream over unsigned char (UTF-8) or unsigned short (UTF-16)
// skips white space through the locale's ctype facet of its element type and
// reads and writes numbers through the num_get and num_put facets of its
// iterators, which in turn need a numpunct facet of the element type.  The
// standard library provides these for char and wchar_t only, so quorel
// supplies the missing ones here:
//
//  - std::ctype<unsigned char> and std::ctype<unsigned short>: the "C" locale's
//    classification and case mapping for units below 0x80; every other unit
//    belongs to no class and has no case.  widen() maps a char byte to the
//    unit of the same value; narrow() gives the default for units of 0x80 and
//    above.
//  - std::numpunct<unsigned char> and std::numpunct<unsigned short>: decimal
//    point, thousands separator and grouping, copied from a locale's own
//    numeric punctuation.
//  - num_get and num_put over the stream iterators of CodeUnitTraits: the
//    standard library's facets, instantiated once, inside the library.
//
// WithCodeUnitFacets() adds all of them to a locale.  quorel's stream classes
// start in quorel::Locale::Default(), which has them, and Locale::Native() has
// them too.  To imbue another locale into one of these streams, pass it
// through WithCodeUnitFacets() first; otherwise numeric input and output fail
// with badbit.
//
// The specialisations below must be seen before any code uses these facet
// types: include this header (TextStreams.h does) wherever standard streams of
// unsigned char or unsigned short are used.
#ifndef QUOREL_UTILITY_CODEUNITFACETS_H
#define QUOREL_UTILITY_CODEUNITFACETS_H

#include <quorel/utility/CodeUnitTraits.h>
#include <quorel/utility/Export.h>

#include <cstddef>
#include <iterator>
#include <locale>
#include <string>

namespace quorel {
namespace detail {

/// The interface of std::ctype<Unit> for a code unit type, implemented once
/// for both unit types.  The virtual operations are those of the standard
/// facet and behave as described at the top of this header.
template <class Unit>
class CodeUnitCtype : public std::locale::facet, public std::ctype_base {
public:
    using char_type = Unit;

    /// The facet's identity in a locale, that of std::ctype<Unit>.
    static std::locale::id id;

    explicit CodeUnitCtype(std::size_t inRefs = 0) : std::locale::facet(inRefs) {}

    bool is(mask inMask, char_type inUnit) const { return do_is(inMask, inUnit); }
    char_type const* is(char_type const* inBegin, char_type const* inEnd, mask* outMasks) const {
        return do_is(inBegin, inEnd, outMasks);
    }
    char_type const* scan_is(mask inMask, char_type const* inBegin, char_type const* inEnd) const {
        return do_scan_is(inMask, inBegin, inEnd);
    }
    char_type const* scan_not(mask inMask, char_type const* inBegin, char_type const* inEnd) const {
        return do_scan_not(inMask, inBegin, inEnd);
    }
    char_type toupper(char_type inUnit) const { return do_toupper(inUnit); }
    char_type const* toupper(char_type* ioBegin, char_type const* inEnd) const { return do_toupper(ioBegin, inEnd); }
    char_type tolower(char_type inUnit) const { return do_tolower(inUnit); }
    char_type const* tolower(char_type* ioBegin, char_type const* inEnd) const { return do_tolower(ioBegin, inEnd); }
    char_type widen(char inChar) const { return do_widen(inChar); }
    char const* widen(char const* inBegin, char const* inEnd, char_type* outUnits) const {
        return do_widen(inBegin, inEnd, outUnits);
    }
    char narrow(char_type inUnit, char inDefault) const { return do_narrow(inUnit, inDefault); }
    char_type const* narrow(char_type const* inBegin, char_type const* inEnd, char inDefault, char* outChars) const {
        return do_narrow(inBegin, inEnd, inDefault, outChars);
    }

protected:
    ~CodeUnitCtype() override;

    virtual bool do_is(mask inMask, char_type inUnit) const;
    virtual char_type const* do_is(char_type const* inBegin, char_type const* inEnd, mask* outMasks) const;
    virtual char_type const* do_scan_is(mask inMask, char_type const* inBegin, char_type const* inEnd) const;
    virtual char_type const* do_scan_not(mask inMask, char_type const* inBegin, char_type const* inEnd) const;
    virtual char_type do_toupper(char_type inUnit) const;
    virtual char_type const* do_toupper(char_type* ioBegin, char_type const* inEnd) const;
    virtual char_type do_tolower(char_type inUnit) const;
    virtual char_type const* do_tolower(char_type* ioBegin, char_type const* inEnd) const;
    virtual char_type do_widen(char inChar) const;
    virtual char const* do_widen(char const* inBegin, char const* inEnd, char_type* outUnits) const;
    virtual char do_narrow(char_type inUnit, char inDefault) const;
    virtual char_type const* do_narrow(char_type const* inBegin, char_type const* inEnd, char inDefault,
                                       char* outChars) const;
};

/// The string type that numpunct returns for a code unit type.  libstdc++'s
/// number facets bind it to std::basic_string<Unit>, which that library still
/// defines; elsewhere the library's own traits serve.
#if defined(__GLIBCXX__)
template <class Unit>
using PunctuationString = std::basic_string<Unit>;
#else
template <class Unit>
using PunctuationString = std::basic_string<Unit, CodeUnitTraits<Unit>>;
#endif

/// The interface of std::numpunct<Unit> for a code unit type: fixed values
/// given at construction.  The default is that of the "C" locale: ".", ","
/// and no grouping.
template <class Unit>
class CodeUnitNumpunct : public std::locale::facet {
public:
    using char_type = Unit;
    using string_type = PunctuationString<Unit>;

    /// The facet's identity in a locale, that of std::numpunct<Unit>.
    static std::locale::id id;

    explicit CodeUnitNumpunct(std::size_t inRefs = 0);
    CodeUnitNumpunct(char_type inDecimalPoint, char_type inThousandsSeparator, std::string inGrouping,
                     std::size_t inRefs = 0);

    char_type decimal_point() const { return do_decimal_point(); }
    char_type thousands_sep() const { return do_thousands_sep(); }
    std::string grouping() const { return do_grouping(); }
    string_type truename() const { return do_truename(); }
    string_type falsename() const { return do_falsename(); }

protected:
    ~CodeUnitNumpunct() override;

    virtual char_type do_decimal_point() const;
    virtual char_type do_thousands_sep() const;
    virtual std::string do_grouping() const;
    virtual string_type do_truename() const;
    virtual string_type do_falsename() const;

private:
    char_type mDecimalPoint;
    char_type mThousandsSeparator;
    std::string mGrouping;
};

extern template class QRL_EXPORT CodeUnitCtype<unsigned char>;
extern template class QRL_EXPORT CodeUnitCtype<unsigned short>;
extern template class QRL_EXPORT CodeUnitNumpunct<unsigned char>;
extern template class QRL_EXPORT CodeUnitNumpunct<unsigned short>;

}  // namespace detail
}  // namespace quorel

namespace std {

// The facets of the code unit types are the library's own, with the
// constructors and identities of their bases.

/// Classification and conversion of UTF-8 code units.
template <>
class QRL_EXPORT ctype<unsigned char> : public quorel::detail::CodeUnitCtype<unsigned char> {
public:
    using CodeUnitCtype::CodeUnitCtype;
};

/// Classification and conversion of UTF-16 code units.
template <>
class QRL_EXPORT ctype<unsigned short> : public quorel::detail::CodeUnitCtype<unsigned short> {
public:
    using CodeUnitCtype::CodeUnitCtype;
};

/// Numeric punctuation for UTF-8 streams.
template <>
class QRL_EXPORT numpunct<unsigned char> : public quorel::detail::CodeUnitNumpunct<unsigned char> {
public:
    using CodeUnitNumpunct::CodeUnitNumpunct;
};

/// Numeric punctuation for UTF-16 streams.
template <>
class QRL_EXPORT numpunct<unsigned short> : public quorel::detail::CodeUnitNumpunct<unsigned short> {
public:
    using CodeUnitNumpunct::CodeUnitNumpunct;
};

// The number facets of the library's stream iterators live in the library, so
// that a host and the library agree on their facet identities.
extern template class QRL_EXPORT
    num_get<unsigned char, istreambuf_iterator<unsigned char, quorel::CodeUnitTraits<unsigned char>>>;
extern template class QRL_EXPORT
    num_put<unsigned char, ostreambuf_iterator<unsigned char, quorel::CodeUnitTraits<unsigned char>>>;
extern template class QRL_EXPORT
    num_get<unsigned short, istreambuf_iterator<unsigned short, quorel::CodeUnitTraits<unsigned short>>>;
extern template class QRL_EXPORT
    num_put<unsigned short, ostreambuf_iterator<unsigned short, quorel::CodeUnitTraits<unsigned short>>>;

}  // namespace std

namespace quorel {
namespace utility {

/// Returns inBase with the facets that streams of unsigned char and unsigned
/// short need.  The numeric punctuation of the new facets is inBase's own: the
/// UTF-16 facet takes the decimal point and thousands separator as characters
/// (from the wide punctuation when inBase has it), the UTF-8 facet takes them
/// when they are ASCII, and otherwise keeps "." and "," (without grouping for
/// a separator it cannot represent).  Facets of these types that inBase
/// already has are replaced.
QRL_EXPORT std::locale WithCodeUnitFacets(std::locale const& inBase);

/// True when inLocale has every facet that WithCodeUnitFacets adds.
QRL_EXPORT bool HasCodeUnitFacets(std::locale const& inLocale);

}  // namespace utility
}  // namespace quorel

#endif
