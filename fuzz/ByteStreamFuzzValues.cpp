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
#include <quorel/filesupport/StdByteStream.h>

#include "FuzzSupport.h"

#include <cstring>
#include <sstream>

namespace fs = quorel::filesupport;

namespace {

// Reads a T; when inExact, it must write back to the bytes it was read from,
// and in any case it can be written.
template <class T, bool inExact = true>
void Read(fs::IByteStream& ioIn, std::uint8_t const* inData) {
    std::uint64_t const start = ioIn.CurPos();
    T value{};
    ioIn >> value;
    std::string const again = quorel::fuzzing::Written([&](fs::OByteStream& ioOut) { ioOut << value; });
    quorel::fuzzing::Require(!inExact || (again.size() == ioIn.CurPos() - start &&
                                          std::memcmp(again.data(), inData + start, again.size()) == 0));
}

// One reader for each value type; a byte of the input picks one.
using Reader = void (*)(fs::IByteStream& ioIn, std::uint8_t const* inData);
constexpr Reader kReaders[] = {
    &Read<bool, false>, &Read<char>,          &Read<signed char>,      &Read<unsigned char>, &Read<short>,
    &Read<unsigned short>, &Read<std::int32_t>, &Read<std::uint32_t>, &Read<std::int64_t>, &Read<std::uint64_t>,
    &Read<float, false>, &Read<double, false>, &Read<long double, false>, &Read<std::string>,
    &Read<quorel::UTF16String>};

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
            kReaders[inData[inSize - step] % (sizeof kReaders / sizeof kReaders[0])](in, inData);
        }
    } catch (fs::eof_error const&) {
        // The data ran out: the one failure allowed.
    }
    return 0;
}
