// Fuzz target: PackBits decoding of arbitrary bytes.
//
// Whatever the input, decoding must end with the source's end and nothing
// else; coding the decoded bytes again and decoding that must give them back.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/RLEByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace fs = quorel::filesupport;

namespace {

std::string Decode(fs::IByteStream& ioCoded) {
    fs::IRLEByteStream decoder(ioCoded);
    std::string plain;
    fs::OStringByteStream out(plain);
    out << decoder;  // ends quietly at the coded data's end
    return plain;
}

std::string Encode(std::string const& inPlain) {
    std::string coded;
    fs::OStringByteStream out(coded);
    fs::ORLEByteStream coder(out);
    coder.WriteBlock(reinterpret_cast<unsigned char const*>(inPlain.data()),
                     static_cast<std::uint32_t>(inPlain.size()));
    coder.Flush();
    return coded;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* inData, std::size_t inSize) {
    fs::IBufferByteStream direct(inData, inSize);
    std::string const plain = Decode(direct);

    // The same bytes through a small read window decode the same.
    fs::IBufferByteStream source(inData, inSize);
    fs::IBufferedByteStream buffered(source, 64, 16);
    if (Decode(buffered) != plain) {
        std::abort();
    }

    std::string coded = Encode(plain);
    if (coded.size() > plain.size() + (plain.size() + 127) / 128) {
        std::abort();  // PackBits never grows data by more than one byte in 128
    }
    fs::IStringByteStream again(coded);
    if (Decode(again) != plain) {
        std::abort();
    }
    return 0;
}
