// Byte streams over files, through the operating system's file calls.
//
// They hold no buffer: every Put and Get is one system call, so they are
// normally wrapped in OBufferedByteStream or IBufferedByteStream.  The file
// must exist; neither stream creates or truncates it.  Opening takes the
// file's sharing mode: an input stream lets others read but not write, an
// output stream lets no one else open the file at all (on POSIX these are
// advisory flock locks, which the library's own file calls respect).
#ifndef QUOREL_FILESUPPORT_PLATFORMBYTESTREAM_H
#define QUOREL_FILESUPPORT_PLATFORMBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/filesupport/File.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <memory>

namespace quorel {
namespace filesupport {

struct PlatformFileRecord;

/// Reads a file.  Opening raises file_not_found_exception when the file or its
/// directory is missing and io_error for any other failure (a directory, no
/// permission, a file open for writing).
class QRL_EXPORT IPlatformByteStream : public IByteStream {
public:
    explicit IPlatformByteStream(File const& inFile);
    /// Closes the file, ignoring a failure.
    ~IPlatformByteStream() override;

    /// The next byte; eof_error at the end of the file, io_error on failure.
    unsigned char Get() override;
    /// Reads inCount bytes; eof_error when the file ends first (the bytes
    /// before its end are consumed), io_error on failure.
    void ReadBlock(unsigned char* outDest, std::uint32_t inCount) override;
    /// Sets the file position from the start; io_error on failure.
    void CurPos(std::uint64_t inPosition) override;
    /// The file position; io_error on failure.
    std::uint64_t CurPos() const override;
    /// The file's size; io_error on failure.
    std::uint64_t Length() const override;

private:
    std::unique_ptr<PlatformFileRecord> mRecord;
};

/// Writes over an existing file from position 0; bytes past the last one
/// written stay.  Delete and create the file first for a fresh one.  Opening
/// raises file_not_found_exception when the file or its directory is missing
/// and io_error for any other failure (a file open elsewhere among them).
class QRL_EXPORT OPlatformByteStream : public OByteStream {
public:
    explicit OPlatformByteStream(File const& inFile);
    /// Closes the file, ignoring a failure.
    ~OPlatformByteStream() override;

    /// Writes one byte; io_error on failure.
    void Put(unsigned char inByte) override;
    /// Writes inCount bytes; io_error on failure.
    void WriteBlock(unsigned char const* inSource, std::uint32_t inCount) override;
    /// Sets the file position from the start; io_error on failure.
    void CurPos(std::uint64_t inPosition) override;
    /// The file position; io_error on failure.
    std::uint64_t CurPos() const override;
    /// The file's size; io_error on failure.
    virtual std::uint64_t Length() const;

private:
    std::unique_ptr<PlatformFileRecord> mRecord;
};

}  // namespace filesupport
}  // namespace quorel

#endif
