// Helpers shared by the byte stream tests.
#ifndef QUOREL_TESTS_FILESUPPORT_STREAMTESTSUPPORT_H
#define QUOREL_TESTS_FILESUPPORT_STREAMTESTSUPPORT_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace quorel {
namespace testing {

using Bytes = std::vector<unsigned char>;

inline Bytes RandomBytes(std::size_t inCount, std::uint32_t inSeed) {
    std::mt19937 random(inSeed);
    Bytes bytes(inCount);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(random());
    }
    return bytes;
}

// Bytes with runs of random lengths, the food of a run-length coder.
inline Bytes RunnyBytes(std::size_t inCount, std::uint32_t inSeed) {
    std::mt19937 random(inSeed);
    Bytes bytes;
    while (bytes.size() < inCount) {
        std::size_t const run = random() % 4 == 0 ? random() % 300 : 1 + random() % 3;
        unsigned char const value = static_cast<unsigned char>(random() % 4 == 0 ? 0x80 : random());
        bytes.insert(bytes.end(), std::min(run, inCount - bytes.size()), value);
    }
    return bytes;
}

// A seekable output stream over a vector that records the calls made on it,
// so that tests can see what a wrapper hands to its target.
class RecordingOutput : public filesupport::OByteStream {
public:
    struct Call {
        char mKind;  // 'p' Put, 'w' WriteBlock, 's' seek
        std::uint64_t mValue;  // the byte, the count, or the position
    };

    void Put(unsigned char inByte) override {
        mCalls.push_back({'p', inByte});
        Store(&inByte, 1);
    }
    void WriteBlock(unsigned char const* inSource, std::uint32_t inCount) override {
        mCalls.push_back({'w', inCount});
        Store(inSource, inCount);
    }
    void CurPos(std::uint64_t inPosition) override {
        mCalls.push_back({'s', inPosition});
        mPosition = inPosition;
    }
    std::uint64_t CurPos() const override { return mPosition; }

    Bytes mData;
    std::vector<Call> mCalls;

private:
    void Store(unsigned char const* inSource, std::uint32_t inCount) {
        if (mData.size() < mPosition + inCount) {
            mData.resize(mPosition + inCount);
        }
        std::copy(inSource, inSource + inCount, mData.begin() + static_cast<std::ptrdiff_t>(mPosition));
        mPosition += inCount;
    }

    std::uint64_t mPosition = 0;
};

// A seekable input stream over a vector that counts the bytes read from it.
class CountingInput : public filesupport::IByteStream {
public:
    explicit CountingInput(Bytes inData) : mData(std::move(inData)) {}

    unsigned char Get() override {
        if (mPosition >= mData.size()) {
            throw filesupport::eof_error();
        }
        ++mBytesRead;
        return mData[mPosition++];
    }
    void ReadBlock(unsigned char* outDest, std::uint32_t inCount) override {
        ++mBlockReads;
        IByteStream::ReadBlock(outDest, inCount);
    }
    void CurPos(std::uint64_t inPosition) override { mPosition = inPosition; }
    std::uint64_t CurPos() const override { return mPosition; }
    std::uint64_t Length() const override { return mData.size(); }

    Bytes mData;
    std::uint64_t mPosition = 0;
    std::uint64_t mBytesRead = 0;
    int mBlockReads = 0;
};

}  // namespace testing
}  // namespace quorel

#endif
