// What the fuzz targets share: the failure that stops the fuzzer, text and
// number separators taken from the input, and the bytes a byte stream writes.
#ifndef QUOREL_FUZZ_FUZZSUPPORT_H
#define QUOREL_FUZZ_FUZZSUPPORT_H

#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/StringByteStream.h>
#include <quorel/utility/NumberSeparators.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cstdlib>
#include <string>

namespace quorel {
namespace fuzzing {

// Stops the fuzzer at a broken rule, leaving the input behind.
inline void Require(bool inHolds) {
    if (!inHolds) {
        std::abort();
    }
}

// The input after its first byte, read as UTF-8.  Bit 0 of the first byte
// picks the user's separators: "1,234.5" or "1.234,5".  inSize is at least 1.
inline UTF16String TextWithSeparatorsOf(std::uint8_t const* inData, std::size_t inSize) {
    static bool sCommaDecimal;
    sCommaDecimal = (inData[0] & 1) != 0;
    utility::SetNumberSeparatorSource([](utility::NumberSeparators& ioSeparators) {
        ioSeparators.mDecimal = sCommaDecimal ? ',' : '.';
        ioSeparators.mThousands = sCommaDecimal ? '.' : ',';
    });
    return utility::UTF8to16(UTF8String(inData + 1, inData + inSize));
}

// The bytes inWrite puts on a string stream.
template <class Write>
std::string Written(Write inWrite) {
    std::string bytes;
    filesupport::OStringByteStream out(bytes);
    inWrite(out);
    return bytes;
}

}  // namespace fuzzing
}  // namespace quorel

#endif
