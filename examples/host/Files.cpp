// Files and byte streams as a host uses them: a fresh file is deleted and
// created, a buffered stream over the platform stream writes values in the
// library's big-endian form while a CRC tap checksums them, and the values
// are read back through a buffered input stream.
#include "Files.h"

#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/CRCByteStream.h>
#include <quorel/filesupport/CountingByteStream.h>
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/FileExceptions.h>
#include <quorel/filesupport/PlatformByteStream.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace fs = quorel::filesupport;
namespace util = quorel::utility;

namespace {

quorel::UTF16String Wide(std::string const& inText) {
    return util::UTF8to16(quorel::UTF8String(inText.begin(), inText.end()));
}

// The values of a small clip record, written in one fixed order.
struct ClipRecord {
    std::string mName;
    std::int32_t mTrack;
    std::int64_t mStartTicks;
    double mGain;
};

template <class Stream>
void WriteRecord(Stream& ioOut, ClipRecord const& inClip) {
    ioOut << inClip.mName << inClip.mTrack << inClip.mStartTicks << inClip.mGain;
}

fs::File DemoFile() {
    char const* base = std::getenv("TMPDIR");
    fs::Dir const temp(Wide(base != nullptr && *base != 0 ? base : "/tmp"));
    return fs::File(temp, Wide("quorel-example-clips.bin"));
}

// Writes the records and returns the CRC-32 of the bytes written.
std::uint32_t Save(fs::File const& inFile, ClipRecord const* inClips, int inCount) {
    if (inFile.Exists()) {
        inFile.Delete();
    }
    inFile.Create();
    fs::OPlatformByteStream file(inFile);
    fs::OBufferedByteStream buffered(file, 32768, 4096);
    fs::OCRCByteStream crc(buffered);
    crc << static_cast<std::int32_t>(inCount);
    for (int i = 0; i < inCount; ++i) {
        WriteRecord(crc, inClips[i]);
    }
    buffered.Flush();  // so that a failed write is heard of
    return crc.Value();
}

void Load(fs::File const& inFile) {
    fs::IPlatformByteStream file(inFile);
    fs::IBufferedByteStream in(file, 32768, 4096);
    std::int32_t count = 0;
    in >> count;
    for (std::int32_t i = 0; i < count; ++i) {
        ClipRecord clip;
        in >> clip.mName >> clip.mTrack >> clip.mStartTicks >> clip.mGain;
        std::printf("  read back: %-10s track %" PRId32 " at %" PRId64 " ticks, gain %.2f\n", clip.mName.c_str(),
                    clip.mTrack, clip.mStartTicks, clip.mGain);
    }
}

}  // namespace

void ShowFiles() {
    ClipRecord const clips[] = {
        {"intro", 1, 0, 1.0},
        {"dialogue", 2, 254016000000LL * 12, 0.8},
        {"music", 3, 254016000000LL * 30 + 5, 0.35},
    };
    fs::File const file = DemoFile();
    quorel::UTF8String const native = util::UTF16to8(file.Helper().FullNativePath());
    std::printf("Files and byte streams (%s):\n", reinterpret_cast<char const*>(native.c_str()));

    fs::OCountingByteStream counter;
    for (ClipRecord const& clip : clips) {
        WriteRecord(counter, clip);
    }
    std::printf("  %d records take %" PRIu64 " bytes on the wire\n", 3, counter.Count() + 4);

    try {
        std::uint32_t const checksum = Save(file, clips, 3);
        std::printf("  wrote %" PRIu64 " bytes, CRC-32 %08" PRIX32 "\n", file.Size(fs::kFileSize_DataLogical),
                    checksum);
        Load(file);
        file.Delete();
    } catch (fs::file_exception const& e) {
        std::printf("  file error: %s (%s)\n", e.what(), e.GetFile().FullPathMultiByte().c_str());
    } catch (fs::byte_stream_exception const&) {
        std::printf("  stream error\n");
    }
}
