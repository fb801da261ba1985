// Fuzz target: reading every value type of the wire form from arbitrary bytes.
//
// The first input byte picks the stream the values are read through (plain
// memory, a buffered window, a standard stream); each following read takes its
// type from a byte of the input.  Reads may end in eof_error and nothing else.
// Every whole number and string that was read must write back to exactly the
// bytes it consumed.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/StdByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

namespace fs = quorel::filesupport;

namespace {

template <class T>
std::string Written(T const& inValue) {
    std::string bytes;
    fs::OStringByteStream out(bytes);
    out << inValue;
    return bytes;
}

// Reads a T and checks that it writes back to the bytes it was read from.
template <class T>
void ReadExact(fs::IByteStream& ioIn, std::uint8_t const* inData) {
    std::uint64_t const start = ioIn.CurPos();
    T value{};
    ioIn >> value;
    std::string const again = Written(value);
    std::uint64_t const consumed = ioIn.CurPos() - start;
    if (again.size() != consumed || std::memcmp(again.data(), inData + start, again.size()) != 0) {
        std::abort();
    }
}

template <class T>
void ReadAny(fs::IByteStream& ioIn) {
    T value{};
    ioIn >> value;
    Written(value);  // whatever was read can be written
}

void ReadOne(fs::IByteStream& ioIn, std::uint8_t inType, std::uint8_t const* inData) {
    switch (inType % 15) {
        case 0: ReadAny<bool>(ioIn); break;
        case 1: ReadExact<char>(ioIn, inData); break;
        case 2: ReadExact<signed char>(ioIn, inData); break;
        case 3: ReadExact<unsigned char>(ioIn, inData); break;
        case 4: ReadExact<short>(ioIn, inData); break;
        case 5: ReadExact<unsigned short>(ioIn, inData); break;
        case 6: ReadExact<std::int32_t>(ioIn, inData); break;
        case 7: ReadExact<std::uint32_t>(ioIn, inData); break;
        case 8: ReadExact<std::int64_t>(ioIn, inData); break;
        case 9: ReadExact<std::uint64_t>(ioIn, inData); break;
        case 10: ReadAny<float>(ioIn); break;
        case 11: ReadAny<double>(ioIn); break;
        case 12: ReadAny<long double>(ioIn); break;
        case 13: ReadExact<std::string>(ioIn, inData); break;
        default: ReadExact<quorel::UTF16String>(ioIn, inData); break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    if (inSize == 0) {
        return 0;
    }
    fs::IBufferByteStream memory(inData, inSize);
    fs::IBufferedByteStream buffered(memory, 32, 8);
    std::istringstream text(std::string(reinterpret_cast<char const*>(inData), inSize));
    fs::IStdByteStream standard(text);
    fs::IByteStream* const streams[] = {&memory, &buffered, &standard};
    fs::IByteStream& in = *streams[inData[0] % 3];
    in.CurPos(1);
    try {
        // Types come from the input itself, from its end backwards, so that the
        // same bytes serve as both program and data.
        for (std::size_t step = 1; step <= inSize; ++step) {
            ReadOne(in, inData[inSize - step], inData);
        }
    } catch (fs::eof_error const&) {
        // The data ran out: the one failure allowed.
    }
    return 0;
}
