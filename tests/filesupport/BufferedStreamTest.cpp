// The buffering wrappers: the input window and the rewritable output window.
#include <quorel/filesupport/BufferedByteStream.h>

#include "filesupport/FileSupportTesting.h"

using namespace quorel;
using namespace quorel::filesupport;
using namespace quorel::testing;

namespace {

// A memory source that counts the blocks read from it.
struct CountingInput : IBufferByteStream {
    explicit CountingInput(Bytes const& inData) : IBufferByteStream(inData.data(), inData.size()) {}
    void ReadBlock(unsigned char* outDest, std::uint32_t inCount) override {
        ++mBlockReads;
        IByteStream::ReadBlock(outDest, inCount);
    }
    int mBlockReads = 0;
};

Bytes Slice(Bytes const& inData, std::uint64_t inStart, std::size_t inCount) {
    return Bytes(inData.begin() + inStart, inData.begin() + inStart + inCount);
}

TEST(IBufferedByteStream, EndsAtTheSourcesLengthAndPassesLargeBlocksStraightOn) {
    Bytes const data = RandomBytes(100000, 1);
    CountingInput source(data);
    IBufferedByteStream in(source, 32768, 4096);
    Bytes block(32768 - 4096 + 1);
    in.CurPos(100);
    in.ReadBlock(block.data(), static_cast<std::uint32_t>(block.size()));
    EXPECT_EQ(block, Slice(data, 100, block.size()));
    EXPECT_EQ(source.mBlockReads, 1) << "a large block: one read, straight from the source";
    EXPECT_EQ(in.Length(), 100000u);
    EXPECT_NO_THROW(in.CurPos(100000));
    EXPECT_THROW(in.Get(), eof_error);
    EXPECT_THROW(in.CurPos(100001), eof_error);
    EXPECT_EQ(in.CurPos(), 100000u);
    in.CurPos(99998);
    EXPECT_THROW(in.ReadBlock(block.data(), 3), eof_error) << "a block past the end reads nothing";
    in.ReadBlock(block.data(), 2);
    EXPECT_EQ(Bytes(block.begin(), block.begin() + 2), Slice(data, 99998, 2));
}

TEST(IBufferedByteStream, RandomAccessMatchesTheSource) {
    for (auto const& [buffer, block] : {std::pair{2u, 1u}, {64u, 16u}, {100u, 7u}, {32768u, 4096u}}) {
        Bytes const data = RandomBytes(50000, buffer);
        CountingInput source(data);
        IBufferedByteStream in(source, buffer, block);
        std::mt19937 random(block);
        for (int step = 0; step < 3000; ++step) {
            std::uint64_t const at = random() % 50000;
            auto const count = static_cast<std::uint32_t>(std::min<std::uint64_t>(random() % (2 * buffer), 50000 - at));
            Bytes bytes(count);
            in.CurPos(at);
            in.ReadBlock(bytes.data(), count);
            ASSERT_EQ(bytes, Slice(data, at, count)) << "buffer " << buffer << " at " << at;
            ASSERT_TRUE(at + count == 50000 || in.Get() == data[at + count]);
        }
    }
}

using Calls = std::vector<RecordingOutput::Call>;

TEST(OBufferedByteStream, TheWindowLeavesAsOneBlockWhenFullOrFlushed) {
    RecordingOutput target;
    OBufferedByteStream out(target, 8, 4);
    out << std::uint32_t(0x01020304) << 'x';
    out.CurPos(1);
    out.Put(20);
    out.CurPos(5);  // the window's end is still inside
    EXPECT_TRUE(target.mCalls.empty()) << "nothing leaves before a flush";
    out.Flush();
    out.Flush();
    EXPECT_EQ(target.mData, (Bytes{1, 20, 3, 4, 'x'}));
    Bytes const big = RandomBytes(9, 7);
    out.WriteBlock(big.data(), 8);  // fills the window,
    out.Put(0xBB);                  // which leaves before the byte that does not fit
    out.WriteBlock(big.data(), 9);  // larger than the buffer: at once, after the pending byte
    EXPECT_EQ(target.mCalls, (Calls{{'s', 0}, {'w', 5}, {'s', 5}, {'w', 8}, {'s', 13}, {'w', 1}, {'s', 14}, {'w', 9}}));
    EXPECT_EQ(out.CurPos(), 23u);
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
    OBufferedByteStream out(tooSmall, 64, 4);
    out << std::uint32_t(1);
    EXPECT_THROW(out.Flush(), eof_error) << "a caller who flushes hears of the failure";
}  // the destructor tries again and stays quiet

TEST(OBufferedByteStream, RandomWritesMatchAnUnbufferedTarget) {
    for (std::uint32_t bufferSize : {1u, 5u, 64u, 4096u}) {
        RecordingOutput direct;
        RecordingOutput buffered;
        {
            OBufferedByteStream out(buffered, bufferSize, 4);
            std::mt19937 random(bufferSize);
            for (int step = 0; step < 2000; ++step) {
                if (random() % 5 == 0) {
                    std::uint64_t const position = direct.mData.empty() ? 0 : random() % direct.mData.size();
                    out.CurPos(position);
                    direct.CurPos(position);
                }
                Bytes const block = RandomBytes(random() % (2 * bufferSize + 2), step);
                out.WriteBlock(block.data(), static_cast<std::uint32_t>(block.size()));
                direct.WriteBlock(block.data(), static_cast<std::uint32_t>(block.size()));
                ASSERT_EQ(out.CurPos(), direct.CurPos());
            }
        }
        EXPECT_EQ(buffered.mData, direct.mData) << "buffer " << bufferSize;
    }
}

}  // namespace
