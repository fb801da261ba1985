// Byte streams over files.
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/FileExceptions.h>
#include <quorel/filesupport/PlatformByteStream.h>

#include "FilePlatform.h"

namespace quorel {
namespace filesupport {

/// The file and its open handle, owned by a platform stream.
struct PlatformFileRecord {
    PlatformFileRecord(File const& inFile, platform::OpenMode inMode) : mFile(inFile) {
        FileErrorCode const code = platform::OpenFile(inFile.Helper().FullNativePath(), inMode, mHandle);
        if (code == kError_FileNotFound || code == kError_PathNotFound) {
            throw file_not_found_exception(inFile);
        }
        if (code != kError_None) {
            throw io_error();
        }
    }
    ~PlatformFileRecord() { platform::CloseFile(mHandle); }

    PlatformFileRecord(PlatformFileRecord const&) = delete;
    PlatformFileRecord& operator=(PlatformFileRecord const&) = delete;

    File mFile;
    platform::FileHandle mHandle = platform::kInvalidHandle;
    // The handle's position as the stream's own calls left it, so that a seek
    // to where the file already stands (as every refill and flush of a
    // buffered stream makes) and a position query cost no system call.  Only
    // this record uses the handle; after a failed call the position is asked
    // of the system again.
    std::uint64_t mPosition = 0;
    bool mPositionKnown = true;
};

namespace {

// Raises io_error for a failed call, after which the position is not known.
void CheckIo(PlatformFileRecord& ioRecord, FileErrorCode inCode) {
    if (inCode != kError_None) {
        ioRecord.mPositionKnown = false;
        throw io_error();
    }
}

void Read(PlatformFileRecord& ioRecord, unsigned char* outDest, std::uint32_t inCount) {
    std::uint32_t got = 0;
    FileErrorCode const code = platform::ReadFile(ioRecord.mHandle, outDest, inCount, got);
    ioRecord.mPosition += got;
    if (code == kError_HandleEof || (code == kError_None && got < inCount)) {
        throw eof_error();
    }
    CheckIo(ioRecord, code);
}

void Write(PlatformFileRecord& ioRecord, unsigned char const* inSource, std::uint32_t inCount) {
    CheckIo(ioRecord, platform::WriteFile(ioRecord.mHandle, inSource, inCount));
    ioRecord.mPosition += inCount;
}

void Seek(PlatformFileRecord& ioRecord, std::uint64_t inPosition) {
    if (ioRecord.mPositionKnown && ioRecord.mPosition == inPosition) {
        return;
    }
    CheckIo(ioRecord, platform::SeekFile(ioRecord.mHandle, inPosition));
    ioRecord.mPosition = inPosition;
    ioRecord.mPositionKnown = true;
}

std::uint64_t Tell(PlatformFileRecord& ioRecord) {
    if (!ioRecord.mPositionKnown) {
        CheckIo(ioRecord, platform::TellFile(ioRecord.mHandle, ioRecord.mPosition));
        ioRecord.mPositionKnown = true;
    }
    return ioRecord.mPosition;
}

std::uint64_t Size(PlatformFileRecord& ioRecord) {
    std::uint64_t size = 0;
    CheckIo(ioRecord, platform::SizeOfFile(ioRecord.mHandle, size));
    return size;
}

}  // namespace

IPlatformByteStream::IPlatformByteStream(File const& inFile)
    : mRecord(new PlatformFileRecord(inFile, platform::OpenMode::kReadShared)) {}

IPlatformByteStream::~IPlatformByteStream() = default;

unsigned char IPlatformByteStream::Get() {
    unsigned char byte = 0;
    Read(*mRecord, &byte, 1);
    return byte;
}

void IPlatformByteStream::ReadBlock(unsigned char* outDest, std::uint32_t inCount) { Read(*mRecord, outDest, inCount); }

void IPlatformByteStream::CurPos(std::uint64_t inPosition) { Seek(*mRecord, inPosition); }

std::uint64_t IPlatformByteStream::CurPos() const { return Tell(*mRecord); }

std::uint64_t IPlatformByteStream::Length() const { return Size(*mRecord); }

OPlatformByteStream::OPlatformByteStream(File const& inFile)
    : mRecord(new PlatformFileRecord(inFile, platform::OpenMode::kWriteExclusive)) {}

OPlatformByteStream::~OPlatformByteStream() = default;

void OPlatformByteStream::Put(unsigned char inByte) { Write(*mRecord, &inByte, 1); }

void OPlatformByteStream::WriteBlock(unsigned char const* inSource, std::uint32_t inCount) {
    Write(*mRecord, inSource, inCount);
}

void OPlatformByteStream::CurPos(std::uint64_t inPosition) { Seek(*mRecord, inPosition); }

std::uint64_t OPlatformByteStream::CurPos() const { return Tell(*mRecord); }

std::uint64_t OPlatformByteStream::Length() const { return Size(*mRecord); }

}  // namespace filesupport
}  // namespace quorel
