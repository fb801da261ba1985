// Byte stream benchmarks.
//
//   Crc32/*          OCRCByteStream::WriteBlock against zlib's crc32, per block size.
//   FileWrite/*      256 MiB written in records of N bytes through
//                    OBufferedByteStream(32 KiB) over OPlatformByteStream, against
//                    fwrite on a FILE with a 32 KiB buffer (setvbuf).
//   FileRead/*       the same file read back through IBufferedByteStream over
//                    IPlatformByteStream, against fread.
//   PackBits/*       ORLEByteStream coding and IRLEByteStream decoding of data
//                    with runs, in memory.
//
// Every benchmark reports bytes per second; the ratios quorel/peer are the
// numbers to compare.  The files go to $TMPDIR (or /tmp) and are removed.
#include <quorel/filesupport/BufferByteStream.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/CRCByteStream.h>
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/PlatformByteStream.h>
#include <quorel/filesupport/RLEByteStream.h>
#include <quorel/utility/UnicodeConversion.h>

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace fs = quorel::filesupport;

namespace {

constexpr std::uint64_t kFileBytes = 256ull << 20;
constexpr std::uint32_t kBufferSize = 32768;
constexpr std::uint32_t kBlockSize = 4096;

std::vector<unsigned char> RandomBytes(std::size_t inCount) {
    std::mt19937 random(42);
    std::vector<unsigned char> bytes(inCount);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(random());
    }
    return bytes;
}

// Runs of 1 to 3 and of up to 300 equal bytes, mixed.
std::vector<unsigned char> RunnyBytes(std::size_t inCount) {
    std::mt19937 random(7);
    std::vector<unsigned char> bytes;
    while (bytes.size() < inCount) {
        std::size_t const run = random() % 4 == 0 ? random() % 300 : 1 + random() % 3;
        bytes.insert(bytes.end(), std::min(run, inCount - bytes.size()), static_cast<unsigned char>(random()));
    }
    return bytes;
}

// An output stream that throws its bytes away.
class NullOutput : public fs::OByteStream {
public:
    void Put(unsigned char inByte) override { mLast = inByte; }
    void WriteBlock(unsigned char const* inSource, std::uint32_t inCount) override {
        mLast = inCount != 0 ? inSource[inCount - 1] : mLast;
    }
    void CurPos(std::uint64_t) override {}
    std::uint64_t CurPos() const override { return 0; }
    unsigned char mLast = 0;
};

std::string TempPath(char const* inName) {
    char const* base = std::getenv("TMPDIR");
    return std::string(base != nullptr && *base != 0 ? base : "/tmp") + "/" + inName;
}

fs::File AsFile(std::string const& inPath) {
    return fs::File(quorel::utility::UTF8to16(quorel::UTF8String(inPath.begin(), inPath.end())));
}

// ---- CRC-32 ----

void Crc32Quorel(benchmark::State& ioState) {
    std::vector<unsigned char> const data = RandomBytes(static_cast<std::size_t>(ioState.range(0)));
    NullOutput sink;
    fs::OCRCByteStream crc(sink);
    for (auto _ : ioState) {
        crc.WriteBlock(data.data(), static_cast<std::uint32_t>(data.size()));
        benchmark::DoNotOptimize(crc.Value());
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * data.size()));
}

void Crc32Zlib(benchmark::State& ioState) {
    std::vector<unsigned char> const data = RandomBytes(static_cast<std::size_t>(ioState.range(0)));
    uLong crc = crc32(0, nullptr, 0);
    for (auto _ : ioState) {
        crc = crc32(crc, data.data(), static_cast<uInt>(data.size()));
        benchmark::DoNotOptimize(crc);
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * data.size()));
}

void Crc32QuorelPut(benchmark::State& ioState) {
    std::vector<unsigned char> const data = RandomBytes(static_cast<std::size_t>(ioState.range(0)));
    NullOutput sink;
    fs::OCRCByteStream crc(sink);
    for (auto _ : ioState) {
        for (unsigned char byte : data) {
            crc.Put(byte);
        }
        benchmark::DoNotOptimize(crc.Value());
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * data.size()));
}

// ---- Files: 256 MiB in records of range(0) bytes ----

void FileWriteQuorel(benchmark::State& ioState) {
    std::uint32_t const record = static_cast<std::uint32_t>(ioState.range(0));
    std::vector<unsigned char> const data = RandomBytes(record);
    fs::File const file = AsFile(TempPath("quorel-bench-write.bin"));
    for (auto _ : ioState) {
        file.Create();
        fs::OPlatformByteStream target(file);
        fs::OBufferedByteStream out(target, kBufferSize, kBlockSize);
        for (std::uint64_t done = 0; done < kFileBytes; done += record) {
            out.WriteBlock(data.data(), record);
        }
        out.Flush();
    }
    file.Delete();
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * kFileBytes));
}

void FileWriteStdio(benchmark::State& ioState) {
    std::size_t const record = static_cast<std::size_t>(ioState.range(0));
    std::vector<unsigned char> const data = RandomBytes(record);
    std::string const path = TempPath("quorel-bench-write.bin");
    for (auto _ : ioState) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        std::setvbuf(file, nullptr, _IOFBF, kBufferSize);
        for (std::uint64_t done = 0; done < kFileBytes; done += record) {
            std::fwrite(data.data(), 1, record, file);
        }
        std::fclose(file);
    }
    std::remove(path.c_str());
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * kFileBytes));
}

// The file both read benchmarks share, written once.
std::string const& ReadSample() {
    static std::string const path = [] {
        std::string const name = TempPath("quorel-bench-read.bin");
        std::vector<unsigned char> const data = RandomBytes(1 << 20);
        std::FILE* file = std::fopen(name.c_str(), "wb");
        for (std::uint64_t done = 0; done < kFileBytes; done += data.size()) {
            std::fwrite(data.data(), 1, data.size(), file);
        }
        std::fclose(file);
        std::atexit([] { std::remove(TempPath("quorel-bench-read.bin").c_str()); });
        return name;
    }();
    return path;
}

void FileReadQuorel(benchmark::State& ioState) {
    std::uint32_t const record = static_cast<std::uint32_t>(ioState.range(0));
    std::vector<unsigned char> data(record);
    fs::File const file = AsFile(ReadSample());
    for (auto _ : ioState) {
        fs::IPlatformByteStream source(file);
        fs::IBufferedByteStream in(source, kBufferSize, kBlockSize);
        for (std::uint64_t done = 0; done < kFileBytes; done += record) {
            in.ReadBlock(data.data(), record);
        }
        benchmark::DoNotOptimize(data.data());
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * kFileBytes));
}

void FileReadStdio(benchmark::State& ioState) {
    std::size_t const record = static_cast<std::size_t>(ioState.range(0));
    std::vector<unsigned char> data(record);
    std::string const& path = ReadSample();
    for (auto _ : ioState) {
        std::FILE* file = std::fopen(path.c_str(), "rb");
        std::setvbuf(file, nullptr, _IOFBF, kBufferSize);
        for (std::uint64_t done = 0; done < kFileBytes; done += record) {
            if (std::fread(data.data(), 1, record, file) != record) {
                ioState.SkipWithError("short read");
                break;
            }
        }
        std::fclose(file);
        benchmark::DoNotOptimize(data.data());
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * kFileBytes));
}

// ---- PackBits ----

void PackBitsEncode(benchmark::State& ioState) {
    std::vector<unsigned char> const data = RunnyBytes(1 << 20);
    NullOutput sink;
    for (auto _ : ioState) {
        fs::ORLEByteStream coder(sink);
        coder.WriteBlock(data.data(), static_cast<std::uint32_t>(data.size()));
        coder.Flush();
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * data.size()));
}

void PackBitsDecode(benchmark::State& ioState) {
    std::vector<unsigned char> const plain = RunnyBytes(1 << 20);
    std::vector<unsigned char> coded(2 * plain.size());
    fs::OBufferByteStream codedOut(coded.data(), coded.size());
    {
        fs::ORLEByteStream coder(codedOut);
        coder.WriteBlock(plain.data(), static_cast<std::uint32_t>(plain.size()));
        coder.Flush();
    }
    std::vector<unsigned char> decoded(plain.size());
    for (auto _ : ioState) {
        fs::IBufferByteStream source(coded.data(), codedOut.Count());
        fs::IRLEByteStream decoder(source);
        decoder.ReadBlock(decoded.data(), static_cast<std::uint32_t>(decoded.size()));
        benchmark::DoNotOptimize(decoded.data());
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations() * plain.size()));
}

}  // namespace

BENCHMARK(Crc32Quorel)->Arg(64)->Arg(4096)->Arg(1 << 20);
BENCHMARK(Crc32Zlib)->Arg(64)->Arg(4096)->Arg(1 << 20);
BENCHMARK(Crc32QuorelPut)->Arg(4096);
BENCHMARK(FileWriteQuorel)->Arg(4)->Arg(256)->Arg(65536)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FileWriteStdio)->Arg(4)->Arg(256)->Arg(65536)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FileReadQuorel)->Arg(4)->Arg(256)->Arg(65536)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FileReadStdio)->Arg(4)->Arg(256)->Arg(65536)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(PackBitsEncode);
BENCHMARK(PackBitsDecode);

BENCHMARK_MAIN();
