// Fuzz target: PackBits decoding of arbitrary bytes.
//
// Whatever the input, decoding must end with the source's end and nothing
// else; coding the decoded bytes again and decoding that must give them back.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/RLEByteStream.h>

#include "FuzzSupport.h"

namespace fs = quorel::filesupport;
using namespace quorel::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    auto const decode = [](fs::IByteStream& ioCoded) {
        fs::IRLEByteStream decoder(ioCoded);
        return Written([&](fs::OByteStream& ioOut) { ioOut << decoder; });  // ends quietly at the coded data's end
    };
    fs::IBufferByteStream direct(inData, inSize);
    std::string const plain = decode(direct);

    // The same bytes through a small read window decode the same.
    fs::IBufferByteStream source(inData, inSize);
    fs::IBufferedByteStream buffered(source, 64, 16);
    Require(decode(buffered) == plain);

    std::string coded = Written([&](fs::OByteStream& ioOut) {
        fs::ORLEByteStream coder(ioOut);
        coder.WriteBlock(reinterpret_cast<unsigned char const*>(plain.data()),
                         static_cast<std::uint32_t>(plain.size()));
        coder.Flush();
    });
    Require(coded.size() <= plain.size() + (plain.size() + 127) / 128);  // at most one byte in 128 more
    fs::IStringByteStream again(coded);
    Require(decode(again) == plain);
    return 0;
}
