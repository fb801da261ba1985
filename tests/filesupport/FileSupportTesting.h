// Helpers shared by the filesupport tests: byte patterns, coding values to
// bytes, an output stream that records its calls, and a temporary directory.
#ifndef QUOREL_TESTS_FILESUPPORT_FILESUPPORTTESTING_H
#define QUOREL_TESTS_FILESUPPORT_FILESUPPORTTESTING_H

#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/StringByteStream.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorel {
namespace testing {

using Bytes = std::vector<unsigned char>;

inline Bytes RandomBytes(std::size_t inCount, std::uint32_t inSeed) {
    std::mt19937 random(inSeed);
    Bytes bytes(inCount);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<unsigned char>(random()); });
    return bytes;
}

// What inWrite puts on an output stream.
template <class Write>
Bytes Written(Write inWrite) {
    std::string text;
    filesupport::OStringByteStream out(text);
    inWrite(out);
    return Bytes(text.begin(), text.end());
}

template <class T>
Bytes Encode(T const& inValue) {
    return Written([&](filesupport::OByteStream& ioOut) { ioOut << inValue; });
}

// Reads a T from inBytes, which it must consume exactly.
template <class T>
T Decode(Bytes const& inBytes) {
    filesupport::IBufferByteStream in(inBytes.data(), inBytes.size());
    T value{};
    in >> value;
    EXPECT_EQ(in.CurPos(), inBytes.size()) << "a value must consume exactly its bytes";
    return value;
}

// A seekable output stream over a vector that records the calls made on it:
// ('p', byte) for Put, ('w', count) for WriteBlock, ('s', position) for a seek.
class RecordingOutput : public filesupport::OByteStream {
public:
    using Call = std::pair<char, std::uint64_t>;

    void Put(unsigned char inByte) override { Store({'p', inByte}, &inByte, 1); }
    void WriteBlock(unsigned char const* inSource, std::uint32_t inCount) override {
        Store({'w', inCount}, inSource, inCount);
    }
    void CurPos(std::uint64_t inPosition) override {
        mPosition = inPosition;
        mCalls.push_back({'s', inPosition});
    }
    std::uint64_t CurPos() const override { return mPosition; }

    Bytes mData;
    std::vector<Call> mCalls;

private:
    void Store(Call inCall, unsigned char const* inSource, std::uint32_t inCount) {
        mCalls.push_back(inCall);
        mData.resize(std::max<std::size_t>(mData.size(), mPosition + inCount));
        std::copy(inSource, inSource + inCount, mData.begin() + static_cast<std::ptrdiff_t>(mPosition));
        mPosition += inCount;
    }

    std::uint64_t mPosition = 0;
};

// A fresh directory under the system's temporary directory, removed with
// everything in it at the end.
class TempDirectory {
public:
    TempDirectory() {
        char const* base = std::getenv("TMPDIR");
        mPath = std::string(base != nullptr && *base != 0 ? base : "/tmp") + "/quorel-files-XXXXXX";
        if (mkdtemp(mPath.data()) == nullptr) {
            throw std::runtime_error("cannot make a temporary directory");
        }
    }
    ~TempDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TempDirectory(TempDirectory const&) = delete;
    TempDirectory& operator=(TempDirectory const&) = delete;

    std::string Path(std::string const& inName) const { return mPath + "/" + inName; }
    filesupport::Dir AsDir() const { return filesupport::Dir(U16(mPath.c_str())); }
    filesupport::File FileNamed(char const* inName) const { return filesupport::File(AsDir(), U16(inName)); }

private:
    std::string mPath;
};

}  // namespace testing
}  // namespace quorel

#endif
