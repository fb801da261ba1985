// The byte stream core: the wire form of every value type, the stream copy,
// and the per-stream user data of ByteStream_base.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/StringByteStream.h>

#include "filesupport/StreamTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::Bytes;

namespace {

template <class T>
Bytes Encode(T const& inValue) {
    std::string text;
    OStringByteStream out(text);
    out << inValue;
    return Bytes(text.begin(), text.end());
}

template <class T>
T Decode(Bytes const& inBytes) {
    IBufferByteStream in(inBytes.data(), inBytes.size());
    T value{};
    in >> value;
    EXPECT_EQ(in.CurPos(), inBytes.size()) << "a value must consume exactly its bytes";
    return value;
}

template <class T>
void ExpectWire(T const& inValue, Bytes const& inBytes) {
    EXPECT_EQ(Encode(inValue), inBytes);
    T const back = Decode<T>(inBytes);
    EXPECT_EQ(back, inValue);
}

Bytes Text(char const* inText) { return Bytes(inText, inText + std::char_traits<char>::length(inText)); }

Bytes Prefixed(Bytes inBody) {
    Bytes bytes{static_cast<unsigned char>(inBody.size() >> 8), static_cast<unsigned char>(inBody.size())};
    bytes.insert(bytes.end(), inBody.begin(), inBody.end());
    return bytes;
}

TEST(ByteStreamWire, WholeNumbersAreBigEndianTwosComplement) {
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
}

TEST(ByteStreamWire, AnyNonZeroByteReadsAsTrue) {
    for (unsigned char byte : {0x01, 0x7F, 0x80, 0xFF}) {
        EXPECT_TRUE(Decode<bool>({byte})) << int(byte);
    }
}

TEST(ByteStreamWire, StringsCarryA16BitLengthPrefix) {
    ExpectWire(std::string("abc"), {0x00, 0x03, 0x61, 0x62, 0x63});
    ExpectWire(std::string(), {0x00, 0x00});
    ExpectWire(std::string("a\0b", 3), {0x00, 0x03, 'a', 0x00, 'b'});
    ExpectWire(UTF16String(1, 0x20AC), {0x00, 0x01, 0x20, 0xAC});
    ExpectWire(UTF16String{0x0041, 0xD83D, 0xDE00}, {0x00, 0x03, 0x00, 0x41, 0xD8, 0x3D, 0xDE, 0x00});
}

TEST(ByteStreamWire, FloatingPointIsPrecision36Text) {
    EXPECT_EQ(Encode(1.5), Prefixed(Text("1.5")));
    EXPECT_EQ(Encode(0.0), Prefixed(Text("0")));
    EXPECT_EQ(Encode(-250.0), Prefixed(Text("-250")));
    EXPECT_EQ(Encode(1e100), Prefixed(Text("1.00000000000000001590289110975991805e+100")));
    EXPECT_EQ(Encode(0.1f), Prefixed(Text("0.100000001490116119384765625")));  // the widened float
    EXPECT_EQ(Encode(1.5L), Prefixed(Text("1.5")));
}

TEST(ByteStreamWire, FloatingPointRoundTripsThroughText) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        EXPECT_EQ(Decode<double>(Encode(value)), value);
        float const single = static_cast<float>(value);
        if (std::isfinite(single)) {
            EXPECT_EQ(Decode<float>(Encode(single)), single);
        }
        long double const wide = static_cast<long double>(value) / 3;
        EXPECT_EQ(Decode<long double>(Encode(wide)), wide);
    }
    for (double special : {std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(),
                           -std::numeric_limits<double>::min(), -0.0}) {
        double const back = Decode<double>(Encode(special));
        EXPECT_EQ(back, special);
        EXPECT_EQ(std::signbit(back), std::signbit(special));
    }
}

TEST(ByteStreamWire, NonFiniteValuesReadBack) {
    double const inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Decode<double>(Encode(inf)), inf);
    EXPECT_EQ(Decode<double>(Encode(-inf)), -inf);
    EXPECT_EQ(Decode<float>(Encode(-std::numeric_limits<float>::infinity())), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(Decode<double>(Encode(std::numeric_limits<double>::quiet_NaN()))));
}

TEST(ByteStreamWire, FloatTextThatIsNoNumberRaisesNothing) {
    double value = 0;
    Bytes const bytes = Prefixed(Text("12abc"));
    IBufferByteStream in(bytes.data(), bytes.size());
    EXPECT_NO_THROW(in >> value);
    EXPECT_EQ(value, 12.0);
    Bytes const garbage = Prefixed(Text("xyz"));
    IBufferByteStream in2(garbage.data(), garbage.size());
    EXPECT_NO_THROW(in2 >> value);
    EXPECT_EQ(in2.CurPos(), garbage.size());
}

TEST(ByteStreamWire, StringLengthsWrapAt16Bits) {
    struct Case {
        std::size_t mLength;
        std::size_t mSurvives;
    };
    for (Case const& c : {Case{65535, 65535}, Case{65536, 0}, Case{70000, 4464}}) {
        std::string narrow(c.mLength, 'n');
        narrow[0] = 'a';
        Bytes const bytes = Encode(narrow);
        EXPECT_EQ(bytes.size(), 2 + c.mSurvives) << c.mLength;
        EXPECT_EQ(Decode<std::string>(bytes), narrow.substr(0, c.mSurvives));

        UTF16String wide(c.mLength, 0x1234);
        Bytes const wideBytes = Encode(wide);
        EXPECT_EQ(wideBytes.size(), 2 + 2 * c.mSurvives) << c.mLength;
        EXPECT_EQ(Decode<UTF16String>(wideBytes), wide.substr(0, c.mSurvives));
    }
}

TEST(ByteStreamWire, ReadingAStringEmptiesTheTargetAndKeepsAPartialRead) {
    Bytes const empty{0x00, 0x00, 0x7A};
    IBufferByteStream in(empty.data(), empty.size());
    std::string target = "old";
    in >> target;
    EXPECT_EQ(target, "");
    EXPECT_EQ(in.CurPos(), 2u) << "an empty string reads no further";

    Bytes const cut{0x00, 0x05, 'a', 'b'};
    IBufferByteStream cutIn(cut.data(), cut.size());
    EXPECT_THROW(cutIn >> target, eof_error);
    EXPECT_EQ(target, "ab");

    Bytes const cutWide{0x00, 0x02, 0x12, 0x34, 0x56};
    IBufferByteStream wideIn(cutWide.data(), cutWide.size());
    UTF16String wide;
    EXPECT_THROW(wideIn >> wide, eof_error);
    EXPECT_EQ(wide, UTF16String(1, 0x1234));
}

TEST(ByteStreamWire, ShortDataRaisesEofForEveryWidth) {
    Bytes const three{1, 2, 3};
    std::vector<std::function<void(IByteStream&)>> const reads = {
        [](IByteStream& s) { std::int32_t v; s >> v; },
        [](IByteStream& s) { std::uint64_t v; s >> v; },
        [](IByteStream& s) { double v; s >> v; },
    };
    for (auto const& read : reads) {
        IBufferByteStream in(three.data(), 3);
        EXPECT_THROW(read(in), eof_error);
    }
    IBufferByteStream none(nullptr, 0);
    bool flag;
    EXPECT_THROW(none >> flag, eof_error);
}

// A source of unknown length (Length 0) that ends by eof_error.
class UnknownLengthSource : public IByteStream {
public:
    explicit UnknownLengthSource(std::size_t inCount) : mLeft(inCount) {}
    unsigned char Get() override {
        if (mLeft == 0) {
            throw eof_error();
        }
        --mLeft;
        return 0x5A;
    }
    void CurPos(std::uint64_t) override {}
    std::uint64_t CurPos() const override { return 0; }

private:
    std::size_t mLeft;
};

TEST(ByteStreamCopy, UnknownLengthCopiesToTheEndQuietly) {
    for (std::size_t count : {0u, 1u, 1000u}) {
        UnknownLengthSource source(count);
        quorel::testing::RecordingOutput target;
        EXPECT_NO_THROW(target << source);
        EXPECT_EQ(target.mData, Bytes(count, 0x5A));
        for (auto const& call : target.mCalls) {
            EXPECT_EQ(call.mKind, 'p') << "the copy goes byte by byte";
        }
    }
}

TEST(ByteStreamCopy, KnownLengthCopiesLengthBytesFromTheCurrentPosition) {
    Bytes const data = quorel::testing::RandomBytes(100, 1);
    IBufferByteStream whole(data.data(), data.size());
    std::string copy;
    OStringByteStream out(copy);
    out << whole;
    EXPECT_EQ(Bytes(copy.begin(), copy.end()), data);

    IBufferByteStream partial(data.data(), data.size());
    partial.CurPos(60);
    std::string rest;
    OStringByteStream restOut(rest);
    EXPECT_THROW(restOut << partial, eof_error) << "L bytes are asked of a stream with L - 60 left";
    EXPECT_EQ(Bytes(rest.begin(), rest.end()), Bytes(data.begin() + 60, data.end()));
}

TEST(ByteStreamCopy, AFullTargetIsTheCallersProblem) {
    UnknownLengthSource source(10);
    unsigned char buffer[4];
    OBufferByteStream target(buffer, sizeof buffer);
    EXPECT_THROW(target << source, eof_error);
    EXPECT_EQ(target.Count(), 4u);
}

TEST(ByteStreamBase, WordTablesGrowOnUseWithZeroes) {
    IBufferByteStream stream(nullptr, 0);
    EXPECT_EQ(stream.iword(5), 0);
    stream.iword(5) = 55;
    stream.iword(2) = 22;
    EXPECT_EQ(stream.iword(5), 55);
    stream.iword(100) = 1;  // growth keeps earlier values
    EXPECT_EQ(stream.iword(2), 22);
    EXPECT_EQ(stream.iword(5), 55);
    EXPECT_EQ(stream.iword(99), 0);

    EXPECT_EQ(stream.pword(3), nullptr);
    int anchor = 0;
    stream.pword(3) = &anchor;
    EXPECT_EQ(stream.pword(40), nullptr);
    EXPECT_EQ(stream.pword(3), &anchor);
    EXPECT_EQ(stream.iword(3), 0) << "the tables are independent";
}

TEST(ByteStreamBase, XallocHandsOutIncreasingNumbers) {
    int const first = ByteStream_base::xalloc();
    EXPECT_GE(first, 0);
    EXPECT_EQ(ByteStream_base::xalloc(), first + 1);
    EXPECT_EQ(ByteStream_base::xalloc(), first + 2);
}

std::vector<std::string> gCallbackLog;

void LogA(ByteStream_base::event inEvent, ByteStream_base& ioStream, int inIndex) {
    gCallbackLog.push_back("A" + std::to_string(inIndex) + "e" + std::to_string(inEvent) + "w" +
                           std::to_string(ioStream.iword(inIndex)));
}

void LogB(ByteStream_base::event, ByteStream_base& ioStream, int inIndex) {
    gCallbackLog.push_back("B" + std::to_string(inIndex) + "p" + (ioStream.pword(inIndex) ? "set" : "null"));
}

TEST(ByteStreamBase, CallbacksRunAtDestructionInRegistrationOrder) {
    gCallbackLog.clear();
    {
        IBufferByteStream stream(nullptr, 0);
        stream.iword(1) = 11;
        stream.pword(2) = &stream;
        stream.register_callback(LogA, 1);
        stream.register_callback(LogB, 2);
        stream.register_callback(LogA, 1);
        EXPECT_TRUE(gCallbackLog.empty());
    }
    EXPECT_EQ(gCallbackLog, (std::vector<std::string>{"A1e0w11", "B2pset", "A1e0w11"}));
}

}  // namespace
