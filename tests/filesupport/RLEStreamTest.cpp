// PackBits coding: the packet choices of the coder, the decoder, round trips,
// and libtiff decoding an image whose strips the coder wrote.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/PlatformByteStream.h>
#include <quorel/filesupport/RLEByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

#include "filesupport/StreamTestSupport.h"
#include "filesupport/TempDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::Bytes;

namespace {

// What the coder writes for inInput: the packets written during the Puts,
// and all of them after a Flush.
struct Coded {
    Bytes mBeforeFlush;
    Bytes mAfterFlush;
};

Coded Encode(Bytes const& inInput) {
    quorel::testing::RecordingOutput target;
    ORLEByteStream coder(target);
    for (unsigned char byte : inInput) {
        coder.Put(byte);
    }
    Coded coded{target.mData, {}};
    coder.Flush();
    coded.mAfterFlush = target.mData;
    return coded;
}

Bytes Decode(Bytes const& inCoded) {
    IBufferByteStream source(inCoded.data(), inCoded.size());
    IRLEByteStream decoder(source);
    std::string plain;
    OStringByteStream out(plain);
    out << decoder;
    return Bytes(plain.begin(), plain.end());
}

Bytes Join(std::initializer_list<Bytes> inParts) {
    Bytes all;
    for (Bytes const& part : inParts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

constexpr unsigned char A = 0x41;
constexpr unsigned char B = 0x42;

TEST(ORLEByteStream, ChoosesPacketsAsPackBits) {
    struct Case {
        Bytes mInput;
        Bytes mCoded;
    };
    Case const cases[] = {
        {{A}, {0x00, A}},
        {{A, A}, {0xFF, A}},
        {{A, A, A}, {0xFE, A}},
        {{A, B}, {0x01, A, B}},
        {{A, A, B}, {0xFF, A, 0x00, B}},
        {{A, B, B}, {0x02, A, B, B}},
        {{A, B, B, B}, {0x00, A, 0xFE, B}},
        {{A, B, A, B, B, B, B, A}, {0x02, A, B, A, 0xFD, B, 0x00, A}},
        {{}, {}},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(Encode(c.mInput).mAfterFlush, c.mCoded) << "input of " << c.mInput.size();
        EXPECT_EQ(Decode(c.mCoded), c.mInput);
    }
}

TEST(ORLEByteStream, FullPacketsLeaveAtOnce) {
    Coded const run128 = Encode(Bytes(128, A));
    EXPECT_EQ(run128.mBeforeFlush, (Bytes{0x81, A}));
    EXPECT_EQ(run128.mAfterFlush, (Bytes{0x81, A}));

    Coded const run129 = Encode(Bytes(129, A));
    EXPECT_EQ(run129.mBeforeFlush, (Bytes{0x81, A}));
    EXPECT_EQ(run129.mAfterFlush, (Bytes{0x81, A, 0x00, A}));

    Bytes literal(128);
    for (int i = 0; i < 128; ++i) {
        literal[i] = static_cast<unsigned char>(i);
    }
    EXPECT_EQ(Encode(literal).mBeforeFlush, Join({{0x7F}, literal}));
}

TEST(ORLEByteStream, ARunThatStartsAtTheLiteralLimitSplitsThePacket) {
    Bytes input(125);
    for (int i = 0; i < 125; ++i) {
        input[i] = static_cast<unsigned char>(i);
    }
    Bytes const literal = input;
    input.insert(input.end(), {B, B, B});  // the third B arrives with 127 bytes pending
    Coded const coded = Encode(input);
    EXPECT_EQ(coded.mBeforeFlush, Join({{124}, literal}));
    EXPECT_EQ(coded.mAfterFlush, Join({{124}, literal, {0xFE, B}}));
}

TEST(ORLEByteStream, WritingGoesOnAfterAFlushInANewPacket) {
    quorel::testing::RecordingOutput target;
    ORLEByteStream coder(target);
    coder.Put(A);
    coder.Flush();
    coder.Put(A);
    coder.Flush();
    coder.Flush();
    EXPECT_EQ(target.mData, (Bytes{0x00, A, 0x00, A}));
}

TEST(ORLEByteStream, TheDestructorDoesNotFlush) {
    quorel::testing::RecordingOutput target;
    { ORLEByteStream(target).Put(A); }
    EXPECT_TRUE(target.mData.empty());
}

TEST(RLEByteStream, NeitherDirectionSeeks) {
    quorel::testing::RecordingOutput target;
    ORLEByteStream coder(target);
    EXPECT_THROW(coder.CurPos(0), byte_stream_exception);
    EXPECT_THROW(coder.CurPos(), byte_stream_exception);
    IBufferByteStream source(nullptr, 0);
    IRLEByteStream decoder(source);
    EXPECT_THROW(decoder.CurPos(0), byte_stream_exception);
    EXPECT_THROW(decoder.CurPos(), byte_stream_exception);
    EXPECT_EQ(decoder.Length(), 0u);
}

TEST(IRLEByteStream, SkipsNoOpHeadersAndPassesTheEndOn) {
    EXPECT_EQ(Decode({0x80, 0x80, 0x01, A, B, 0x80, 0xFD, A, 0x80}), (Bytes{A, B, A, A, A, A}));
    EXPECT_EQ(Decode({0x81, B}), Bytes(128, B));

    Bytes const truncated{0x05, A, B};
    IBufferByteStream source(truncated.data(), truncated.size());
    IRLEByteStream decoder(source);
    EXPECT_EQ(decoder.Get(), A);
    EXPECT_EQ(decoder.Get(), B);
    EXPECT_THROW(decoder.Get(), eof_error);
}

TEST(RLEByteStream, RandomDataRoundTrips) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Bytes const plain = seed % 2 == 0 ? quorel::testing::RunnyBytes(5000 + seed * 97, seed)
                                          : quorel::testing::RandomBytes(seed * 131, seed);
        Bytes const coded = Encode(plain).mAfterFlush;
        ASSERT_EQ(Decode(coded), plain) << "seed " << seed;
        for (std::size_t i = 0; i < coded.size();) {  // the coder never writes the no-op header
            signed char const header = static_cast<signed char>(coded[i]);
            ASSERT_NE(coded[i], 0x80);
            i += header >= 0 ? header + 2 : 2;
        }
    }
}

// ---- An outside decoder: libtiff reads strips coded by ORLEByteStream ----

constexpr std::uint32_t kWidth = 300;  // rows longer than one packet
constexpr std::uint32_t kHeight = 40;
constexpr std::uint32_t kRowsPerStrip = 16;

Bytes TestImage() {
    Bytes pixels(kWidth * kHeight);
    Bytes const noise = quorel::testing::RandomBytes(pixels.size(), 99);
    for (std::uint32_t y = 0; y < kHeight; ++y) {
        for (std::uint32_t x = 0; x < kWidth; ++x) {
            unsigned char& pixel = pixels[y * kWidth + x];
            pixel = x < 100 ? static_cast<unsigned char>(y * 6) : (x < 200 ? noise[y * kWidth + x] : (x / 3) % 2 * 255);
        }
    }
    return pixels;
}

// PackBits strips as TIFF wants them: each row coded on its own.
std::vector<std::string> CodeStrips(Bytes const& inPixels) {
    std::vector<std::string> strips;
    for (std::uint32_t top = 0; top < kHeight; top += kRowsPerStrip) {
        std::string strip;
        OStringByteStream out(strip);
        ORLEByteStream coder(out);
        for (std::uint32_t y = top; y < std::min(kHeight, top + kRowsPerStrip); ++y) {
            coder.WriteBlock(&inPixels[y * kWidth], kWidth);
            coder.Flush();
        }
        strips.push_back(strip);
    }
    return strips;
}

void WriteEntry(OByteStream& ioOut, std::uint16_t inTag, std::uint16_t inType, std::uint32_t inCount,
                std::uint32_t inValue) {
    ioOut << inTag << inType << inCount;
    if (inType == 3 && inCount == 1) {
        ioOut << static_cast<std::uint16_t>(inValue) << static_cast<std::uint16_t>(0);
    } else {
        ioOut << inValue;
    }
}

// A big-endian 8-bit greyscale TIFF with PackBits strips.
std::string PackBitsTiff(Bytes const& inPixels) {
    std::vector<std::string> const strips = CodeStrips(inPixels);
    std::uint32_t const stripCount = static_cast<std::uint32_t>(strips.size());
    std::uint16_t const entries = 9;
    std::uint32_t const offsetsAt = 8 + 2 + entries * 12 + 4;
    std::uint32_t const countsAt = offsetsAt + 4 * stripCount;
    std::uint32_t dataAt = countsAt + 4 * stripCount;

    std::string tiff;
    OStringByteStream out(tiff);
    out << 'M' << 'M' << std::uint16_t(42) << std::uint32_t(8) << entries;
    WriteEntry(out, 256, 3, 1, kWidth);
    WriteEntry(out, 257, 3, 1, kHeight);
    WriteEntry(out, 258, 3, 1, 8);
    WriteEntry(out, 259, 3, 1, 32773);  // PackBits
    WriteEntry(out, 262, 3, 1, 1);      // black is zero
    WriteEntry(out, 273, 4, stripCount, offsetsAt);
    WriteEntry(out, 277, 3, 1, 1);
    WriteEntry(out, 278, 3, 1, kRowsPerStrip);
    WriteEntry(out, 279, 4, stripCount, countsAt);
    out << std::uint32_t(0);
    for (std::string const& strip : strips) {
        out << dataAt;
        dataAt += static_cast<std::uint32_t>(strip.size());
    }
    for (std::string const& strip : strips) {
        out << static_cast<std::uint32_t>(strip.size());
    }
    for (std::string const& strip : strips) {
        tiff += strip;
    }
    return tiff;
}

// The value list of a SHORT or LONG entry of a big-endian TIFF directory.
std::vector<std::uint32_t> EntryValues(IByteStream& ioIn, std::uint16_t inType, std::uint32_t inCount) {
    std::uint32_t const size = inType == 3 ? 2 : 4;
    std::uint64_t const back = ioIn.CurPos() + 4;
    if (size * inCount > 4) {
        std::uint32_t offset;
        ioIn >> offset;
        ioIn.CurPos(offset);
    }
    std::vector<std::uint32_t> values;
    for (std::uint32_t i = 0; i < inCount; ++i) {
        if (inType == 3) {
            std::uint16_t value;
            ioIn >> value;
            values.push_back(value);
        } else {
            std::uint32_t value;
            ioIn >> value;
            values.push_back(value);
        }
    }
    ioIn.CurPos(back);
    return values;
}

// The image data of an uncompressed big-endian TIFF, strip after strip.
Bytes UncompressedPixels(File const& inTiff) {
    IPlatformByteStream file(inTiff);
    IBufferedByteStream in(file, 32768, 4096);
    char m1, m2;
    std::uint16_t magic, entries;
    std::uint32_t directory;
    in >> m1 >> m2 >> magic >> directory;
    EXPECT_EQ(std::string({m1, m2}), "MM");
    EXPECT_EQ(magic, 42);
    in.CurPos(directory);
    in >> entries;
    std::map<std::uint16_t, std::vector<std::uint32_t>> tags;
    for (std::uint16_t i = 0; i < entries; ++i) {
        std::uint16_t tag, type;
        std::uint32_t count;
        in >> tag >> type >> count;
        if (type == 3 || type == 4) {
            tags[tag] = EntryValues(in, type, count);
        } else {
            in.CurPos(in.CurPos() + 4);
        }
    }
    EXPECT_EQ(tags[259], std::vector<std::uint32_t>{1}) << "not uncompressed";
    Bytes pixels;
    for (std::size_t i = 0; i < tags[273].size(); ++i) {
        Bytes strip(tags[279][i]);
        in.CurPos(tags[273][i]);
        in.ReadBlock(strip.data(), static_cast<std::uint32_t>(strip.size()));
        pixels.insert(pixels.end(), strip.begin(), strip.end());
    }
    return pixels;
}

TEST(RLEByteStream, LibtiffDecodesThePackBitsStrips) {
    if (std::system("command -v tiffcp >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "tiffcp is not installed (Debian package libtiff-tools)";
    }
    quorel::testing::TempDirectory temp;
    Bytes const pixels = TestImage();
    File const packed = temp.FileNamed("packbits.tif");
    packed.Create();
    {
        std::string const tiff = PackBitsTiff(pixels);
        IStringByteStream source(const_cast<std::string&>(tiff));
        OPlatformByteStream out(packed);
        out << source;
    }
    std::string const command =
        "tiffcp -c none -B '" + temp.Path("packbits.tif") + "' '" + temp.Path("plain.tif") + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    EXPECT_EQ(UncompressedPixels(temp.FileNamed("plain.tif")), pixels);
}

}  // namespace
