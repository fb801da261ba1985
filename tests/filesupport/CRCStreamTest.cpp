// The CRC-32 tap: the check value, agreement with zlib, and pass-through.
#include <quorel/filesupport/CRCByteStream.h>
#include <quorel/filesupport/CountingByteStream.h>

#include "filesupport/StreamTestSupport.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::Bytes;
using quorel::testing::RandomBytes;
using quorel::testing::RecordingOutput;

namespace {

// zlib's crc32, loaded at run time so that the tests link nothing but quorel.
using ZlibCrc32 = unsigned long (*)(unsigned long, unsigned char const*, unsigned int);

ZlibCrc32 LoadZlibCrc32() {
    static ZlibCrc32 const function = [] {
        void* library = dlopen("libz.so.1", RTLD_NOW | RTLD_LOCAL);
        return library == nullptr ? nullptr : reinterpret_cast<ZlibCrc32>(dlsym(library, "crc32"));
    }();
    return function;
}

// The definition, one bit at a time.
std::uint32_t BitwiseCrc32(Bytes const& inData) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char byte : inData) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
    }
    return ~crc;
}

TEST(OCRCByteStream, CheckValueThroughPutAndWriteBlock) {
    Bytes const digits{'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    RecordingOutput bytewiseTarget;
    OCRCByteStream bytewise(bytewiseTarget);
    for (unsigned char digit : digits) {
        bytewise.Put(digit);
    }
    EXPECT_EQ(bytewise.Value(), 0xCBF43926u);
    EXPECT_EQ(bytewiseTarget.mData, digits);

    RecordingOutput blockTarget;
    OCRCByteStream block(blockTarget);
    EXPECT_EQ(block.Value(), 0u) << "nothing written";
    block.WriteBlock(digits.data(), 9);
    EXPECT_EQ(block.Value(), 0xCBF43926u);
    ASSERT_EQ(blockTarget.mCalls.size(), 1u) << "one block call on the target";
    EXPECT_EQ(blockTarget.mCalls[0].mKind, 'w');
    EXPECT_EQ(block.Value(), 0xCBF43926u) << "Value leaves the register alone";
}

// Lengths around the block method's thresholds (64 bytes, 16-byte steps) and
// random ones, at every alignment, in pieces of random size.
TEST(OCRCByteStream, AgreesWithZlibAndTheDefinition) {
    ZlibCrc32 const zlib = LoadZlibCrc32();
    std::mt19937 random(2024);
    std::vector<std::size_t> lengths{0, 1, 15, 16, 63, 64, 65, 79, 80, 127, 128, 129, 1000, 4096, 100003};
    for (int i = 0; i < 60; ++i) {
        lengths.push_back(random() % 20000);
    }
    for (std::size_t length : lengths) {
        Bytes const storage = RandomBytes(length + 16, static_cast<std::uint32_t>(length));
        std::size_t const offset = length % 16;
        Bytes const data(storage.begin() + offset, storage.begin() + offset + length);
        std::uint32_t const expected = BitwiseCrc32(data);
        if (zlib != nullptr) {
            ASSERT_EQ(zlib(0, data.data(), static_cast<unsigned int>(length)), expected) << length;
        }

        OCountingByteStream sink;
        OCRCByteStream pieces(sink);
        for (std::size_t done = 0; done < length;) {
            std::size_t const piece = std::min<std::size_t>(length - done, random() % 300);
            if (piece == 1 || random() % 4 == 0) {
                pieces.Put(data[done]);
                ++done;
            } else {
                pieces.WriteBlock(data.data() + done, static_cast<std::uint32_t>(piece));
                done += piece;
            }
        }
        ASSERT_EQ(pieces.Value(), expected) << "length " << length;
        EXPECT_EQ(sink.Count(), length);

        OCountingByteStream wholeSink;
        OCRCByteStream whole(wholeSink);
        whole.WriteBlock(storage.data() + offset, static_cast<std::uint32_t>(length));
        ASSERT_EQ(whole.Value(), expected) << "length " << length << " at offset " << offset;
    }
    if (zlib == nullptr) {
        GTEST_SKIP() << "libz.so.1 not found: checked against the bitwise definition only";
    }
}

TEST(OCRCByteStream, SeeksGoToTheTargetAndLeaveTheChecksum) {
    RecordingOutput target;
    OCRCByteStream crc(target);
    crc.Put('1');
    std::uint32_t const value = crc.Value();
    crc.CurPos(7);
    EXPECT_EQ(target.CurPos(), 7u);
    EXPECT_EQ(crc.CurPos(), 7u);
    EXPECT_EQ(crc.Value(), value);
}

}  // namespace
