// The plain adapters: memory buffers, the counter, deques, strings and
// standard streams.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/CountingByteStream.h>
#include <quorel/filesupport/DequeByteStream.h>
#include <quorel/filesupport/StdByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

#include "filesupport/StreamTestSupport.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::Bytes;

namespace {

TEST(BufferByteStream, InputEndsAtItsSize) {
    IBufferByteStream empty(nullptr, 0);
    EXPECT_EQ(empty.Length(), 0u);
    EXPECT_EQ(empty.CurPos(), 0u);
    EXPECT_THROW(empty.Get(), eof_error);

    unsigned char const data[] = {10, 20, 30};
    IBufferByteStream in(data, 3);
    EXPECT_EQ(in.Get(), 10);
    in.CurPos(2);
    EXPECT_EQ(in.Get(), 30);
    EXPECT_THROW(in.Get(), eof_error);
    in.CurPos(1000);  // no check on seeking
    EXPECT_EQ(in.CurPos(), 1000u);
    EXPECT_THROW(in.Get(), eof_error);
    in.CurPos(0);
    unsigned char block[3];
    in.ReadBlock(block, 3);
    EXPECT_EQ(Bytes(block, block + 3), Bytes(data, data + 3));
}

TEST(BufferByteStream, OutputCountsTheHighestPosition) {
    unsigned char data[4] = {};
    OBufferByteStream out(data, 4);
    EXPECT_EQ(out.Length(), 4u);
    for (unsigned char byte : {1, 2, 3, 4}) {
        out.Put(byte);
    }
    EXPECT_THROW(out.Put(5), eof_error);
    EXPECT_EQ(out.Count(), 4u);
    out.CurPos(1);
    out.Put(9);
    EXPECT_EQ(out.Count(), 4u);
    EXPECT_EQ(Bytes(data, data + 4), (Bytes{1, 9, 3, 4}));

    out.CurPos(1000);
    EXPECT_EQ(out.Count(), 1000u) << "seeking forward counts";
    EXPECT_THROW(out.Put(0), eof_error);

    OBufferByteStream none(nullptr, 0);
    EXPECT_THROW(none.Put(0), eof_error);
}

TEST(CountingByteStream, CountsWithoutStoring) {
    OCountingByteStream counter;
    for (int i = 0; i < 10; ++i) {
        counter.Put(0);
    }
    counter.CurPos(0);
    counter.Put(0);
    counter.Put(0);
    counter.Put(0);
    EXPECT_EQ(counter.Count(), 10u);
    EXPECT_EQ(counter.CurPos(), 3u);

    OCountingByteStream sizer;
    sizer << std::string("hello") << std::uint64_t(1);
    EXPECT_EQ(sizer.Count(), 2u + 5u + 8u);
}

TEST(ContainerByteStreams, InputsReadToTheEndAndSeekWithin) {
    std::deque<unsigned char> deque{1, 2, 3};
    std::string text("\x01\x02\x03", 3);
    IDequeByteStream fromDeque(deque);
    IStringByteStream fromString(text);
    for (IByteStream* in : std::initializer_list<IByteStream*>{&fromDeque, &fromString}) {
        EXPECT_EQ(in->Length(), 3u);
        EXPECT_EQ(in->Get(), 1);
        EXPECT_EQ(in->CurPos(), 1u);
        in->CurPos(2);
        EXPECT_EQ(in->Get(), 3);
        EXPECT_THROW(in->Get(), eof_error);
        in->CurPos(0);
        EXPECT_EQ(in->Get(), 1);
        in->CurPos(50);
        EXPECT_THROW(in->Get(), eof_error);
    }
}

TEST(ContainerByteStreams, OutputsOnlyAppend) {
    std::string text = "ab";
    OStringByteStream toString(text);
    EXPECT_EQ(toString.CurPos(), 2u);
    toString.CurPos(0);
    toString.Put('c');
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(toString.CurPos(), 3u);

    std::deque<unsigned char> deque{7};
    ODequeByteStream toDeque(deque);
    toDeque.CurPos(0);
    toDeque << std::uint32_t(0x01020304);
    EXPECT_EQ(deque, (std::deque<unsigned char>{7, 1, 2, 3, 4}));
    EXPECT_EQ(toDeque.CurPos(), 5u);
}

TEST(StdByteStream, ReadsSeeksAndEndsWithEof) {
    std::istringstream text(std::string("\xFF\x00xyz", 5));
    IStdByteStream in(text);
    EXPECT_EQ(in.Length(), 5u);
    EXPECT_EQ(in.Get(), 0xFF) << "a real 0xFF byte is data, not the end";
    EXPECT_EQ(in.Get(), 0x00);
    EXPECT_EQ(in.CurPos(), 2u);
    EXPECT_EQ(in.Length(), 5u);
    EXPECT_EQ(in.CurPos(), 2u) << "Length seeks back";
    in.CurPos(4);
    EXPECT_EQ(in.Get(), 'z');
    EXPECT_THROW(in.Get(), eof_error);
}

TEST(StdByteStream, CopyFromAnEmptyOrUnseekableStreamEnds) {
    std::istringstream empty;
    IStdByteStream in(empty);
    std::string out;
    OStringByteStream target(out);
    EXPECT_NO_THROW(target << in);
    EXPECT_EQ(out, "");

    // A stream buffer that cannot seek, like a pipe: Length is unknown (0) and
    // the copy runs to the end.
    struct PipeBuffer : std::stringbuf {
        explicit PipeBuffer(std::string const& inText) : std::stringbuf(inText) {}
        pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override { return pos_type(-1); }
        pos_type seekpos(pos_type, std::ios_base::openmode) override { return pos_type(-1); }
    } pipe("piped");
    std::istream piped(&pipe);
    IStdByteStream pipeIn(piped);
    EXPECT_EQ(pipeIn.Length(), 0u);
    target << pipeIn;
    EXPECT_EQ(out, "piped");
}

TEST(StdByteStream, WritesAndSeeks) {
    std::ostringstream text;
    OStdByteStream out(text);
    out << std::uint32_t(0x41424344);
    EXPECT_EQ(out.CurPos(), 4u);
    out.CurPos(1);
    out.Put('x');
    EXPECT_EQ(text.str(), "AxCD");
}

}  // namespace
