// The byte stream core (the wire form of every value type, the stream copy,
// the per-stream user data), the plain adapters (memory buffers, the counter,
// deques, strings, standard streams) and the CRC-32 tap.
#include <quorel/filesupport/CRCByteStream.h>
#include <quorel/filesupport/CountingByteStream.h>
#include <quorel/filesupport/DequeByteStream.h>
#include <quorel/filesupport/RLEByteStream.h>
#include <quorel/filesupport/StdByteStream.h>

#include "filesupport/FileSupportTesting.h"

#include <cmath>
#include <cstring>
#include <dlfcn.h>
#include <limits>
#include <sstream>

using namespace quorel;
using namespace quorel::filesupport;
using namespace quorel::testing;

namespace {

template <class T>
void ExpectWire(T const& inValue, Bytes const& inBytes) {
    EXPECT_EQ(Encode(inValue), inBytes);
    EXPECT_EQ(Decode<T>(inBytes), inValue);
}

TEST(ByteStreamWire, BigEndianExamplesRoundTrip) {
    ExpectWire(true, {0x01});
    ExpectWire(false, {0x00});
    ExpectWire('A', {0x41});
    ExpectWire(static_cast<signed char>(-1), {0xFF});
    ExpectWire(static_cast<unsigned char>(0xFE), {0xFE});
    ExpectWire(static_cast<short>(-2), {0xFF, 0xFE});
    ExpectWire(static_cast<unsigned short>(0x1234), {0x12, 0x34});
    ExpectWire(std::int32_t(-1), {0xFF, 0xFF, 0xFF, 0xFF});
    ExpectWire(std::uint32_t(0xFFFFFFFFu), {0xFF, 0xFF, 0xFF, 0xFF});
    ExpectWire(std::uint32_t(0x01020304u), {0x01, 0x02, 0x03, 0x04});
    ExpectWire(std::int32_t(std::numeric_limits<std::int32_t>::min()), {0x80, 0x00, 0x00, 0x00});
    ExpectWire(std::uint64_t(0x0102030405060708ull), {1, 2, 3, 4, 5, 6, 7, 8});
    ExpectWire(std::int64_t(-2), {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE});
    ExpectWire(static_cast<long long>(-3), {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFD});
    ExpectWire(static_cast<unsigned long long>(0x8000000000000001ull), {0x80, 0, 0, 0, 0, 0, 0, 1});
    ExpectWire(std::string("abc"), {0x00, 0x03, 0x61, 0x62, 0x63});
    ExpectWire(std::string(), {0x00, 0x00});
    ExpectWire(std::string("a\0b", 3), {0x00, 0x03, 'a', 0x00, 'b'});
    ExpectWire(UTF16String(1, 0x20AC), {0x00, 0x01, 0x20, 0xAC});
    ExpectWire(UTF16String{0x0041, 0xD83D, 0xDE00}, {0x00, 0x03, 0x00, 0x41, 0xD8, 0x3D, 0xDE, 0x00});
    for (unsigned char byte : {0x01, 0x7F, 0x80, 0xFF}) {
        EXPECT_TRUE(Decode<bool>({byte})) << "any non-zero byte is true: " << int(byte);
    }
}

TEST(ByteStreamWire, FloatingPointIsPrecision36TextAndRoundTrips) {
    EXPECT_EQ(Encode(1e100), Encode(std::string("1.00000000000000001590289110975991805e+100")));
    EXPECT_EQ(Encode(-250.0L), Encode(std::string("-250")));
    EXPECT_EQ(Encode(0.1f), Encode(std::string("0.100000001490116119384765625"))) << "widened to double";
    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        std::uint64_t const bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) {
            EXPECT_EQ(Decode<double>(Encode(value)), value);
            EXPECT_EQ(Decode<long double>(Encode(value / 3.0L)), value / 3.0L);
            float const single = static_cast<float>(value);
            EXPECT_TRUE(!std::isfinite(single) || Decode<float>(Encode(single)) == single) << single;
        }
    }
    double const inf = std::numeric_limits<double>::infinity();
    for (double special : {std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(),
                           -std::numeric_limits<double>::min(), -0.0, inf, -inf}) {
        EXPECT_EQ(std::signbit(Decode<double>(Encode(special))), std::signbit(special));
        EXPECT_EQ(Decode<double>(Encode(special)), special);
    }
    EXPECT_EQ(Decode<float>(Encode(-std::numeric_limits<float>::infinity())), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(Decode<double>(Encode(std::numeric_limits<double>::quiet_NaN()))));
    EXPECT_EQ(Decode<double>(Encode(std::string("12abc"))), 12.0) << "text that is no number raises nothing";
}

TEST(ByteStreamWire, StringLengthsWrapAt16BitsAndCutStringsKeepWhatTheyGot) {
    // (length, how many units survive)
    for (auto const& c : std::vector<std::pair<std::size_t, std::size_t>>{{65535, 65535}, {65536, 0}, {70000, 4464}}) {
        auto const check = [&c](auto const& inText, std::size_t inUnitSize) {
            Bytes const bytes = Encode(inText);
            EXPECT_EQ(bytes.size(), 2 + inUnitSize * c.second) << c.first;
            EXPECT_EQ(Decode<std::decay_t<decltype(inText)>>(bytes), inText.substr(0, c.second));
        };
        check(std::string(c.first, 'n'), 1);
        check(UTF16String(c.first, 0x1234), 2);
    }

    auto const readCut = [](Bytes const& inBytes, auto&& outValue) {
        IBufferByteStream in(inBytes.data(), inBytes.size());
        EXPECT_THROW(in >> outValue, eof_error);
        return outValue;
    };
    readCut({1, 2, 3}, std::int32_t());
    EXPECT_EQ(readCut({0x00, 0x05, 'a', 'b'}, std::string("old")), "ab") << "emptied first, then the units read";
    EXPECT_EQ(readCut({0x00, 0x02, 0x12, 0x34, 0x56}, U16("old")), UTF16String(1, 0x1234));
    readCut({0, 3, '1', '2'}, 0.0);
}

TEST(ByteStreamCopy, CopiesLengthBytesOrToAnUnknownEnd) {
    for (std::size_t packets : {0u, 1u, 8u}) {
        Bytes coded;
        for (std::size_t i = 0; i < packets; ++i) {
            coded.insert(coded.end(), {0x81, 0x5A});  // 128 times 0x5A
        }
        IBufferByteStream source(coded.data(), coded.size());
        IRLEByteStream unknownLength(source);  // Length 0, ends by eof_error
        RecordingOutput target;
        EXPECT_NO_THROW(target << unknownLength) << "the end of an unknown length is quiet";
        EXPECT_EQ(target.mData, Bytes(128 * packets, 0x5A));
        EXPECT_EQ(target.mCalls.size(), target.mData.size()) << "byte by byte";
    }
    Bytes const data = RandomBytes(100, 1);
    IBufferByteStream whole(data.data(), data.size());
    EXPECT_EQ(Written([&](OByteStream& ioOut) { ioOut << whole; }), data);
    whole.CurPos(60);
    RecordingOutput rest;
    EXPECT_THROW(rest << whole, eof_error) << "Length bytes are asked of a stream with 40 left";
    EXPECT_EQ(rest.mData, Bytes(data.begin() + 60, data.end()));
}

std::vector<std::string> gCallbackLog;

void LogCallback(ByteStream_base::event inEvent, ByteStream_base& ioStream, int inIndex) {
    gCallbackLog.push_back(std::to_string(inIndex) + "e" + std::to_string(inEvent) + "w" +
                           std::to_string(ioStream.iword(inIndex)) + (ioStream.pword(inIndex) ? "p" : "-"));
}

TEST(ByteStreamBase, UserTablesGrowAndCallbacksRunAtDestruction) {
    int const first = ByteStream_base::xalloc();
    EXPECT_EQ(ByteStream_base::xalloc(), first + 1);
    gCallbackLog.clear();
    {
        IBufferByteStream stream(nullptr, 0);
        stream.iword(5) = 55;
        stream.iword(100) = 1;  // growth keeps earlier values and fills with zeroes
        stream.pword(3) = &stream;
        EXPECT_EQ(stream.iword(99), 0);
        EXPECT_EQ(stream.pword(40), nullptr);
        EXPECT_EQ(stream.iword(3), 0) << "the tables are independent";
        for (int index : {5, 3, 5}) {
            stream.register_callback(LogCallback, index);
        }
        EXPECT_TRUE(gCallbackLog.empty());
    }
    EXPECT_EQ(gCallbackLog, (std::vector<std::string>{"5e0w55-", "3e0w0p", "5e0w55-"})) << "in registration order";
}

// The input rules the memory, deque and string streams share: reads up to the
// end, free seeks (past the end too: the next Get fails), Length the size.
TEST(MemoryByteStreams, InputsSeekFreelyOutputsCountTheHighestPositionOrAppend) {
    unsigned char const data[] = {1, 2, 3};
    std::deque<unsigned char> deque(data, data + 3);
    std::string text(data, data + 3);
    IBufferByteStream fromBuffer(data, 3);
    IDequeByteStream fromDeque(deque);
    IStringByteStream fromString(text);
    for (IByteStream* in : std::initializer_list<IByteStream*>{&fromBuffer, &fromDeque, &fromString}) {
        EXPECT_EQ(in->Length(), 3u);
        EXPECT_EQ(in->Get(), 1);
        EXPECT_EQ(in->CurPos(), 1u);
        in->CurPos(2);
        EXPECT_EQ(in->Get(), 3);
        EXPECT_THROW(in->Get(), eof_error);
        in->CurPos(1000);
        EXPECT_THROW(in->Get(), eof_error);
    }

    unsigned char memory[4] = {};
    OBufferByteStream buffer(memory, 4);
    OCountingByteStream counter;
    for (OByteStream* out : std::initializer_list<OByteStream*>{&buffer, &counter}) {
        *out << std::uint32_t(0x01020304);
        out->CurPos(1);
        out->Put(9);
        EXPECT_EQ(out->CurPos(), 2u);
        out->CurPos(1000);
    }
    EXPECT_EQ(Bytes(memory, memory + 4), (Bytes{1, 9, 3, 4}));
    EXPECT_EQ(buffer.Length(), 4u);
    EXPECT_EQ(buffer.Count(), 1000u) << "seeking forward counts for a buffer";
    EXPECT_EQ(counter.Count(), 4u) << "but not for the counter";
    buffer.CurPos(4);
    EXPECT_THROW(buffer.Put(0), eof_error) << "full at its size";

    std::string appended = "ab";
    std::deque<unsigned char> appendedDeque{'a', 'b'};
    OStringByteStream toString(appended);
    ODequeByteStream toDeque(appendedDeque);
    for (OByteStream* out : std::initializer_list<OByteStream*>{&toString, &toDeque}) {
        EXPECT_EQ(out->CurPos(), 2u);
        out->CurPos(0);
        *out << 'c' << 'd';
        EXPECT_EQ(out->CurPos(), 4u) << "only appends";
    }
    EXPECT_EQ(appended, "abcd");
    EXPECT_EQ(appendedDeque, (std::deque<unsigned char>{'a', 'b', 'c', 'd'}));
}

TEST(StdByteStream, ReadsWritesSeeksAndCopiesToTheEnd) {
    std::istringstream text(std::string("\xFF\x00xyz", 5));
    IStdByteStream in(text);
    EXPECT_EQ(in.Get(), 0xFF) << "a real 0xFF byte is data, not the end";
    EXPECT_EQ(in.Get(), 0x00);
    EXPECT_EQ(in.Length(), 5u);
    EXPECT_EQ(in.CurPos(), 2u) << "Length seeks back";
    in.CurPos(4);
    EXPECT_EQ(in.Get(), 'z');
    EXPECT_THROW(in.Get(), eof_error);

    std::ostringstream written;
    OStdByteStream out(written);
    out << std::uint32_t(0x41424344);
    EXPECT_EQ(out.CurPos(), 4u);
    out.CurPos(1);
    out.Put('x');
    EXPECT_EQ(written.str(), "AxCD");

    // A stream buffer that cannot seek, like a pipe: Length is unknown (0).
    struct PipeBuffer : std::stringbuf {
        explicit PipeBuffer(std::string const& inText) : std::stringbuf(inText) {}
        pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override { return pos_type(-1); }
        pos_type seekpos(pos_type, std::ios_base::openmode) override { return pos_type(-1); }
    };
    PipeBuffer pipe("piped");
    std::istream piped(&pipe);
    IStdByteStream pipeIn(piped);
    EXPECT_EQ(pipeIn.Length(), 0u);
    EXPECT_EQ(Written([&](OByteStream& ioOut) { ioOut << pipeIn; }), Bytes({'p', 'i', 'p', 'e', 'd'}));
}

TEST(OCRCByteStream, GivesTheCheckValuePassesBytesOnAndAgreesWithZlib) {
    RecordingOutput target;
    OCRCByteStream crc(target);
    EXPECT_EQ(crc.Value(), 0u) << "nothing written";
    crc.Put('1');
    crc.WriteBlock(reinterpret_cast<unsigned char const*>("23456789"), 8);
    EXPECT_EQ(crc.Value(), 0xCBF43926u);
    EXPECT_EQ(target.mData, Bytes({'1', '2', '3', '4', '5', '6', '7', '8', '9'}));
    EXPECT_EQ(target.mCalls, (std::vector<RecordingOutput::Call>{{'p', '1'}, {'w', 8}})) << "one call each";
    crc.CurPos(7);
    EXPECT_EQ(target.CurPos(), 7u);
    EXPECT_EQ(crc.CurPos(), 7u);
    EXPECT_EQ(crc.Value(), 0xCBF43926u) << "a seek leaves the checksum";

    using ZlibCrc32 = unsigned long (*)(unsigned long, unsigned char const*, unsigned int);
    void* const zlib = dlopen("libz.so.1", RTLD_NOW | RTLD_LOCAL);
    if (zlib == nullptr) {
        GTEST_SKIP() << "libz.so.1 not found";
    }
    auto const zlibCrc32 = reinterpret_cast<ZlibCrc32>(dlsym(zlib, "crc32"));
    std::mt19937 random(2024);
    for (std::size_t length = 0; length < 120000; length += length < 300 ? 1 : 997 + random() % 3000) {
        Bytes const storage = RandomBytes(length + 16, static_cast<std::uint32_t>(length));
        unsigned char const* const data = storage.data() + length % 16;
        std::uint32_t const expected = zlibCrc32(0, data, static_cast<unsigned int>(length));
        RecordingOutput sink;
        OCRCByteStream whole(sink);
        whole.WriteBlock(data, static_cast<std::uint32_t>(length));
        ASSERT_EQ(whole.Value(), expected) << "length " << length;
        OCRCByteStream pieces(sink);
        for (std::size_t done = 0; done < length;) {
            std::size_t const piece = std::min<std::size_t>(length - done, random() % 300);
            if (piece <= 1 || random() % 4 == 0) {
                pieces.Put(data[done++]);
            } else {
                pieces.WriteBlock(data + done, static_cast<std::uint32_t>(piece));
                done += piece;
            }
        }
        ASSERT_EQ(pieces.Value(), expected) << "in pieces, length " << length;
        ASSERT_EQ(sink.mData.size(), 2 * length);
        ASSERT_TRUE(std::equal(data, data + length, sink.mData.begin()) &&
                    std::equal(data, data + length, sink.mData.begin() + length))
            << "passed on unchanged";
    }
}

}  // namespace
