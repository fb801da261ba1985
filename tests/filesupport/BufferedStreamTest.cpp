// The buffering wrappers: the input window and the rewritable output window.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/StringByteStream.h>

#include "filesupport/StreamTestSupport.h"

#include <gtest/gtest.h>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::Bytes;
using quorel::testing::CountingInput;
using quorel::testing::RandomBytes;
using quorel::testing::RecordingOutput;

namespace {

TEST(IBufferedByteStream, SeeksUpToTheLengthAndNoFurther) {
    CountingInput source(RandomBytes(10, 1));
    IBufferedByteStream in(source, 8, 4);
    EXPECT_NO_THROW(in.CurPos(10));
    EXPECT_THROW(in.Get(), eof_error);
    EXPECT_THROW(in.CurPos(11), eof_error);
    EXPECT_EQ(in.CurPos(), 10u);
    in.CurPos(9);
    EXPECT_EQ(in.Get(), source.mData[9]);
    EXPECT_EQ(in.Length(), 10u);
}

TEST(IBufferedByteStream, ABlockReadPastTheEndRaisesEofAndReadsNothing) {
    CountingInput source(RandomBytes(10, 2));
    IBufferedByteStream in(source, 8, 4);
    in.CurPos(8);
    unsigned char block[4];
    EXPECT_THROW(in.ReadBlock(block, 3), eof_error);
    EXPECT_EQ(in.CurPos(), 8u);
    in.ReadBlock(block, 2);
    EXPECT_EQ(block[1], source.mData[9]);
}

TEST(IBufferedByteStream, ReadingJustBehindThePositionHitsTheWindow) {
    CountingInput source(RandomBytes(100000, 3));
    IBufferedByteStream in(source, 32768, 4096);
    in.CurPos(50000);
    EXPECT_EQ(in.Get(), source.mData[50000]);
    std::uint64_t const afterFirst = source.mBytesRead;
    // The window reaches one block behind the request: about 4 KiB back is free.
    for (std::uint64_t position : {50001u, 49999u, 49152u - 4096u, 49152u + 20000u}) {
        in.CurPos(position);
        EXPECT_EQ(in.Get(), source.mData[position]) << position;
    }
    EXPECT_EQ(source.mBytesRead, afterFirst) << "all inside the window";
}

TEST(IBufferedByteStream, ARefillKeepsTheOverlapInsteadOfReadingItAgain) {
    CountingInput source(RandomBytes(200000, 4));
    IBufferedByteStream in(source, 32768, 4096);
    in.CurPos(40000);
    in.Get();  // window 32768 .. 65536 (one block back from 36864)
    in.CurPos(70000);
    in.Get();  // window 65536 .. 98304: nothing shared, all read
    in.CurPos(40000);
    in.Get();  // back to 32768 .. 65536: the new window ends where the old begins
    std::uint64_t const before = source.mBytesRead;
    in.CurPos(66000);  // new window 61440 .. 94208 shares 4096 bytes with the old one
    EXPECT_EQ(in.Get(), source.mData[66000]);
    EXPECT_EQ(source.mBytesRead - before, 32768u - 4096u);

    std::uint64_t const beforeBack = source.mBytesRead;
    in.CurPos(50000);  // window 45056 .. 77824: only the front 16384 are new
    EXPECT_EQ(in.Get(), source.mData[50000]);
    EXPECT_EQ(source.mBytesRead - beforeBack, 61440u - 45056u);
    in.CurPos(73000);
    EXPECT_EQ(in.Get(), source.mData[73000]) << "the moved part is the right data";
}

TEST(IBufferedByteStream, LargeBlocksBypassTheWindow) {
    CountingInput source(RandomBytes(100000, 5));
    IBufferedByteStream in(source, 8192, 1024);
    Bytes block(8192 - 1024 + 1);
    in.CurPos(100);
    in.ReadBlock(block.data(), static_cast<std::uint32_t>(block.size()));
    EXPECT_EQ(block, Bytes(source.mData.begin() + 100, source.mData.begin() + 100 + block.size()));
    EXPECT_EQ(source.mBlockReads, 1) << "one direct read";
    EXPECT_EQ(in.CurPos(), 100 + block.size());
}

// Every access pattern gives the source's bytes, whatever the window does.
TEST(IBufferedByteStream, RandomAccessMatchesTheSource) {
    struct Sizes {
        std::uint32_t mBuffer, mBlock;
    };
    for (Sizes const sizes : {Sizes{2, 1}, Sizes{64, 16}, Sizes{100, 7}, Sizes{32768, 4096}}) {
        CountingInput source(RandomBytes(50000, sizes.mBuffer));
        IBufferedByteStream in(source, sizes.mBuffer, sizes.mBlock);
        std::mt19937 random(sizes.mBlock);
        for (int step = 0; step < 3000; ++step) {
            std::uint64_t const position = random() % 50000;
            in.CurPos(position);
            std::uint32_t const count =
                static_cast<std::uint32_t>(std::min<std::uint64_t>(random() % (2 * sizes.mBuffer), 50000 - position));
            Bytes block(count);
            in.ReadBlock(block.data(), count);
            ASSERT_EQ(block, Bytes(source.mData.begin() + position, source.mData.begin() + position + count))
                << "buffer " << sizes.mBuffer << " at " << position << " count " << count;
            if (position + count < 50000) {
                ASSERT_EQ(in.Get(), source.mData[position + count]);
            }
        }
    }
}

TEST(IBufferedByteStream, ValuesReadThroughTheWindow) {
    std::string bytes;
    OStringByteStream out(bytes);
    for (std::int32_t i = 0; i < 5000; ++i) {
        out << i << std::string(i % 7, 'x');
    }
    IStringByteStream source(bytes);
    IBufferedByteStream in(source, 256, 64);
    for (std::int32_t i = 0; i < 5000; ++i) {
        std::int32_t value;
        std::string text;
        in >> value >> text;
        ASSERT_EQ(value, i);
        ASSERT_EQ(text.size(), static_cast<std::size_t>(i % 7));
    }
    EXPECT_THROW(in.Get(), eof_error);
}

TEST(OBufferedByteStream, ARewriteInsideTheWindowGoesOutAsOneBlock) {
    RecordingOutput target;
    OBufferedByteStream out(target, 16, 4);
    for (unsigned char byte : {1, 2, 3, 4, 5}) {
        out.Put(byte);
    }
    out.CurPos(1);
    out.Put(20);
    out.Put(30);
    EXPECT_TRUE(target.mCalls.empty()) << "nothing leaves before a flush";
    out.CurPos(5);  // the window's end is inside
    EXPECT_TRUE(target.mCalls.empty());
    out.Flush();
    ASSERT_EQ(target.mCalls.size(), 2u);
    EXPECT_EQ(target.mCalls[0].mKind, 's');
    EXPECT_EQ(target.mCalls[0].mValue, 0u);
    EXPECT_EQ(target.mCalls[1].mKind, 'w');
    EXPECT_EQ(target.mCalls[1].mValue, 5u);
    EXPECT_EQ(target.mData, (Bytes{1, 20, 30, 4, 5}));
    out.Flush();
    EXPECT_EQ(target.mCalls.size(), 2u) << "nothing pending, nothing written";
}

TEST(OBufferedByteStream, SeekingOutsideTheWindowFlushesFirst) {
    RecordingOutput target;
    OBufferedByteStream out(target, 16, 4);
    out << std::uint32_t(0x01020304);
    out.CurPos(10);
    ASSERT_EQ(target.mCalls.size(), 2u);
    out.Put(0xAA);
    out.CurPos(2);  // before the new window at 10
    out.Put(0xBB);
    out.Flush();
    EXPECT_EQ(target.mData, (Bytes{1, 2, 0xBB, 4, 0, 0, 0, 0, 0, 0, 0xAA}));
}

TEST(OBufferedByteStream, AFullWindowFlushesBeforeTheByteThatDoesNotFit) {
    RecordingOutput target;
    OBufferedByteStream out(target, 4, 4);
    Bytes const data = RandomBytes(10, 6);
    for (unsigned char byte : data) {
        out.Put(byte);
    }
    EXPECT_EQ(target.mData.size(), 8u);
    out.Flush();
    EXPECT_EQ(target.mData, data);
}

TEST(OBufferedByteStream, LargeBlocksGoOutAtOnceAfterThePendingBytes) {
    RecordingOutput target;
    OBufferedByteStream out(target, 8, 4);
    out.Put(1);
    out.Put(2);
    Bytes const big = RandomBytes(9, 7);
    out.WriteBlock(big.data(), 9);
    ASSERT_EQ(target.mCalls.size(), 4u);
    EXPECT_EQ(target.mCalls[1].mValue, 2u) << "the pending bytes first";
    EXPECT_EQ(target.mCalls[2].mKind, 's');
    EXPECT_EQ(target.mCalls[2].mValue, 2u);
    EXPECT_EQ(target.mCalls[3].mValue, 9u);
    EXPECT_EQ(out.CurPos(), 11u);
    Bytes expected{1, 2};
    expected.insert(expected.end(), big.begin(), big.end());
    EXPECT_EQ(target.mData, expected);
}

TEST(OBufferedByteStream, DestructionFlushesAndSwallowsAFailure) {
    RecordingOutput target;
    {
        OBufferedByteStream out(target, 64, 4);
        out << std::string("keep");
    }
    EXPECT_EQ(target.mData, (Bytes{0, 4, 'k', 'e', 'e', 'p'}));

    unsigned char small[2];
    OBufferByteStream tooSmall(small, sizeof small);
    {
        OBufferedByteStream out(tooSmall, 64, 4);
        out << std::uint32_t(1);
        EXPECT_THROW(out.Flush(), eof_error) << "a caller who flushes hears of the failure";
    }  // the destructor tries again and stays quiet
}

// Random writes, seeks and block sizes land exactly as on an unbuffered target.
TEST(OBufferedByteStream, RandomWritesMatchAnUnbufferedTarget) {
    for (std::uint32_t bufferSize : {1u, 5u, 64u, 4096u}) {
        RecordingOutput direct;
        RecordingOutput buffered;
        {
            OBufferedByteStream out(buffered, bufferSize, 4);
            std::mt19937 random(bufferSize);
            std::uint64_t end = 0;
            for (int step = 0; step < 2000; ++step) {
                if (random() % 5 == 0) {
                    std::uint64_t const position = end == 0 ? 0 : random() % end;
                    out.CurPos(position);
                    direct.CurPos(position);
                }
                Bytes const block = RandomBytes(random() % (2 * bufferSize + 2), step);
                out.WriteBlock(block.data(), static_cast<std::uint32_t>(block.size()));
                direct.WriteBlock(block.data(), static_cast<std::uint32_t>(block.size()));
                end = std::max<std::uint64_t>(end, direct.CurPos());
                ASSERT_EQ(out.CurPos(), direct.CurPos());
            }
        }
        EXPECT_EQ(buffered.mData, direct.mData) << "buffer " << bufferSize;
    }
}

}  // namespace
