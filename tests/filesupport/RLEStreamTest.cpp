// PackBits coding: the packet choices of the coder, the decoder, round trips,
// and libtiff decoding an image whose rows the coder wrote.
#include <quorel/filesupport/PlatformByteStream.h>
#include <quorel/filesupport/RLEByteStream.h>

#include "filesupport/FileSupportTesting.h"

#include <numeric>

using namespace quorel;
using namespace quorel::filesupport;
using namespace quorel::testing;

namespace {

// The packets the coder writes for inInput: those sent during the Puts go to
// outBeforeFlush, and all of them are returned after a Flush.
Bytes Encode(Bytes const& inInput, Bytes* outBeforeFlush = nullptr) {
    RecordingOutput target;
    ORLEByteStream coder(target);
    coder.WriteBlock(inInput.data(), static_cast<std::uint32_t>(inInput.size()));
    if (outBeforeFlush != nullptr) {
        *outBeforeFlush = target.mData;
    }
    coder.Flush();
    return target.mData;
}

Bytes Decode(Bytes const& inCoded) {
    IBufferByteStream source(inCoded.data(), inCoded.size());
    IRLEByteStream decoder(source);
    return Written([&](OByteStream& ioOut) { ioOut << decoder; });
}

// inHead, then the bytes 0, 1, 2, ... inCount - 1, then inTail.
Bytes Counting(Bytes inHead, int inCount, Bytes const& inTail = {}) {
    inHead.resize(inHead.size() + inCount);
    std::iota(inHead.end() - inCount, inHead.end(), 0);
    inHead.insert(inHead.end(), inTail.begin(), inTail.end());
    return inHead;
}

constexpr unsigned char A = 0x41;
constexpr unsigned char B = 0x42;

TEST(ORLEByteStream, ChoosesPacketsAsPackBits) {
    struct Case {
        Bytes mInput;
        Bytes mCoded;
        Bytes mBeforeFlush;  // the full packets, sent at once
    };
    Case const cases[] = {
        {{A}, {0x00, A}, {}}, {{A, A}, {0xFF, A}, {}}, {{A, A, A}, {0xFE, A}, {}}, {{A, B}, {0x01, A, B}, {}},
        {{A, A, B}, {0xFF, A, 0x00, B}, {0xFF, A}}, {{A, B, B}, {0x02, A, B, B}, {}},
        {{A, B, B, B}, {0x00, A, 0xFE, B}, {0x00, A}}, {{}, {}, {}},
        {{A, B, A, B, B, B, B, A}, {0x02, A, B, A, 0xFD, B, 0x00, A}, {0x02, A, B, A, 0xFD, B}},
        {Bytes(128, A), {0x81, A}, {0x81, A}}, {Bytes(129, A), {0x81, A, 0x00, A}, {0x81, A}},
        {Counting({}, 128), Counting({0x7F}, 128), Counting({0x7F}, 128)},
        // The third B arrives with 127 bytes pending: the literal packet splits.
        {Counting({}, 125, {B, B, B}), Counting({124}, 125, {0xFE, B}), Counting({124}, 125)},
    };
    for (Case const& c : cases) {
        Bytes beforeFlush;
        EXPECT_EQ(Encode(c.mInput, &beforeFlush), c.mCoded) << "input of " << c.mInput.size();
        EXPECT_EQ(beforeFlush, c.mBeforeFlush) << "input of " << c.mInput.size();
        EXPECT_EQ(Decode(c.mCoded), c.mInput);
    }
}

TEST(RLEByteStream, FlushStartsANewPacketNoOpHeadersAreSkippedAndNothingSeeks) {
    RecordingOutput target;
    {
        ORLEByteStream coder(target);
        for (unsigned char byte : {A, A}) {
            coder.Put(byte);
            coder.Flush();
        }
        coder.Flush();
        coder.Put(B);
        EXPECT_THROW(coder.CurPos(0), byte_stream_exception);
        EXPECT_THROW(coder.CurPos(), byte_stream_exception);
    }
    EXPECT_EQ(target.mData, (Bytes{0x00, A, 0x00, A})) << "the destructor does not flush";
    IBufferByteStream empty(nullptr, 0);
    EXPECT_THROW(IRLEByteStream(empty).CurPos(0), byte_stream_exception);
    EXPECT_THROW(IRLEByteStream(empty).CurPos(), byte_stream_exception);

    EXPECT_EQ(Decode({0x80, 0x80, 0x01, A, B, 0x80, 0xFD, A, 0x80}), (Bytes{A, B, A, A, A, A}));
    EXPECT_EQ(Decode({0x05, A, B}), (Bytes{A, B})) << "a cut packet ends with the source's eof_error";
}

TEST(RLEByteStream, RandomDataRoundTripsWithoutNoOpHeaders) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        Bytes plain = RandomBytes(seed * 131, seed);
        while (seed % 2 == 0 && plain.size() < 5000) {  // runs, a quarter of them of 0x80
            std::size_t const run = random() % 4 == 0 ? random() % 300 : 1 + random() % 3;
            plain.insert(plain.end(), run, static_cast<unsigned char>(random() % 4 == 0 ? 0x80 : random()));
        }
        Bytes const coded = Encode(plain);
        ASSERT_EQ(Decode(coded), plain) << "seed " << seed;
        for (std::size_t i = 0; i < coded.size(); i += coded[i] < 0x80 ? coded[i] + 2 : 2) {
            ASSERT_NE(coded[i], 0x80);
        }
    }
}

// A big-endian 8-bit greyscale TIFF of inPixels, kWidth to a row, in one
// strip, its rows PackBits-coded one by one when inPackBits.
constexpr std::uint32_t kWidth = 300;  // rows longer than one packet

void WriteTiff(File const& inFile, Bytes const& inPixels, bool inPackBits) {
    Bytes strip;
    for (auto row = inPixels.begin(); row != inPixels.end(); row += kWidth) {
        Bytes const coded = inPackBits ? Encode(Bytes(row, row + kWidth)) : Bytes(row, row + kWidth);
        strip.insert(strip.end(), coded.begin(), coded.end());
    }
    auto const height = static_cast<std::uint32_t>(inPixels.size() / kWidth);
    auto const size = static_cast<std::uint32_t>(strip.size());
    std::uint32_t const entries[][3] = {{256, 3, kWidth}, {257, 3, height}, {258, 3, 8},
                                        {259, 3, inPackBits ? 32773u : 1u}, {262, 3, 1},  // black is zero
                                        {273, 4, 8 + 2 + 7 * 12 + 4}, {279, 4, size}};
    inFile.Create();
    OPlatformByteStream out(inFile);
    out << 'M' << 'M' << std::uint16_t(42) << std::uint32_t(8) << std::uint16_t(7);
    for (auto const& entry : entries) {  // tag, type (3 SHORT, 4 LONG), count 1, value
        out << std::uint16_t(entry[0]) << std::uint16_t(entry[1]) << std::uint32_t(1);
        entry[1] == 3 ? out << std::uint16_t(entry[2]) << std::uint16_t(0) : out << entry[2];
    }
    out << std::uint32_t(0);
    out.WriteBlock(strip.data(), size);
}

TEST(RLEByteStream, LibtiffDecodesThePackBitsRows) {
    if (std::system("command -v tiffcp >/dev/null && command -v tiffcmp >/dev/null") != 0) {
        GTEST_SKIP() << "tiffcp or tiffcmp is not installed (Debian package libtiff-tools)";
    }
    TempDirectory temp;
    Bytes pixels = RandomBytes(kWidth * 40, 99);
    for (std::size_t i = 0; i < pixels.size(); ++i) {  // flat, noisy and striped thirds
        std::uint32_t const x = i % kWidth;
        pixels[i] = x < 100 ? static_cast<unsigned char>(i / kWidth * 6) : (x < 200 ? pixels[i] : (x / 3) % 2 * 255);
    }
    WriteTiff(temp.FileNamed("packbits.tif"), pixels, true);
    WriteTiff(temp.FileNamed("plain.tif"), pixels, false);
    // libtiff decodes the PackBits rows; both copies then carry the same tags,
    // so that tiffcmp goes on to compare the pixels.
    std::string const command = "cd '" + temp.Path("") + "' && tiffcp -c none packbits.tif a.tif && " +
                                "tiffcp -c none plain.tif b.tif && tiffcmp a.tif b.tif";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
}

}  // namespace
