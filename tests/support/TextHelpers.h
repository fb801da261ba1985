// Small conversions that make test expectations readable.
#ifndef QUOREL_TESTS_SUPPORT_TEXTHELPERS_H
#define QUOREL_TESTS_SUPPORT_TEXTHELPERS_H

#include <quorel/utility/UnicodeString.h>

#include <initializer_list>
#include <string>

namespace quorel {
namespace testing {

inline UTF16String U16(std::initializer_list<unsigned short> inUnits) { return UTF16String(inUnits); }
inline UTF8String U8(std::initializer_list<unsigned char> inBytes) { return UTF8String(inBytes); }

// ASCII text as UTF-16, unit by unit, without going through the library.
inline UTF16String U16(char const* inAscii) {
    UTF16String result;
    for (; *inAscii != 0; ++inAscii) {
        result.push_back(static_cast<unsigned char>(*inAscii));
    }
    return result;
}

inline UTF8String U8(std::string const& inBytes) { return UTF8String(inBytes.begin(), inBytes.end()); }

}  // namespace testing
}  // namespace quorel

#endif
