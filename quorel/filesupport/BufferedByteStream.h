// Buffering wrappers: a read window over a seekable source, and a rewritable
// write window in front of a seekable target.
//
// Both hold the wrapped stream by reference; it must outlive the wrapper.  The
// pair the library uses is a buffer of 32,768 bytes in blocks of 4,096.
#ifndef QUOREL_FILESUPPORT_BUFFEREDBYTESTREAM_H
#define QUOREL_FILESUPPORT_BUFFEREDBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <memory>

namespace quorel {
namespace filesupport {

/// Reads a source of known length through a window aligned to inBlockSize.
/// A refill starts one block before the block of the request when there is
/// room, so short backward seeks stay in the window, and it moves the part of
/// the old window that the new one shares instead of reading it again.
/// Block reads larger than inBufferSize - inBlockSize go straight to the source.
///
/// inBlockSize must be at least 1 and inBufferSize at least twice inBlockSize;
/// neither is checked.  The source's length is read once, here; the end of
/// data is judged by that length.
class QRL_EXPORT IBufferedByteStream : public IByteStream {
public:
    IBufferedByteStream(IByteStream& ioSource, std::uint32_t inBufferSize, std::uint32_t inBlockSize);
    ~IBufferedByteStream() override;

    /// The next byte; eof_error at or past the source's length.
    unsigned char Get() override;
    /// Reads inCount bytes.  A block that would run past the source's length
    /// raises eof_error and reads nothing.
    void ReadBlock(unsigned char* outDest, std::uint32_t inCount) override;
    /// Moves to inPosition, which may equal the length but not exceed it
    /// (eof_error).  The source is not touched.
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;
    /// Asks the source for its length afresh.
    std::uint64_t Length() const override;

protected:
    /// Makes the window cover inPosition to inPosition + inCount, which lie
    /// within the source and within inBufferSize - inBlockSize of each other.
    virtual void FillWindow(std::uint64_t inPosition, std::uint32_t inCount);

private:
    void ReadFromSource(std::uint64_t inPosition, unsigned char* outDest, std::uint32_t inCount);

    IByteStream& mSource;
    std::uint64_t mPosition = 0;
    std::unique_ptr<unsigned char[]> mBuffer;
    std::uint32_t mBufferSize;
    std::uint32_t mBlockSize;
    std::uint64_t mWindowStart = 0;
    std::uint32_t mWindowLength = 0;
    std::uint64_t mSourceLength;
};

/// Collects writes in a window that starts at the first pending byte.  The
/// position may move back inside the window and rewrite it; the window goes to
/// the target as one block (a seek to its start, then one WriteBlock) when it
/// is full, when the position leaves it, on Flush and on destruction.  A block
/// write larger than the buffer goes to the target at once, after the pending
/// bytes.  The target must support seeking.
class QRL_EXPORT OBufferedByteStream : public OByteStream {
public:
    /// inBlockSize is kept for symmetry with the input side and not used.
    OBufferedByteStream(OByteStream& ioTarget, std::uint32_t inBufferSize, std::uint32_t inBlockSize);
    /// Flushes, swallowing any exception of the target: pending bytes are then
    /// lost.  Call Flush first to learn about a failed write.
    ~OBufferedByteStream() override;

    void Put(unsigned char inByte) override;
    void WriteBlock(unsigned char const* inSource, std::uint32_t inCount) override;
    /// Moves to inPosition, flushing first when it lies outside the pending
    /// window (its end included).  The target is not touched otherwise.
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;

    /// Writes the pending window to the target.  It does not flush the target.
    virtual void Flush();

private:
    bool Pending() const { return mWindowLength != 0; }
    void Store(unsigned char const* inSource, std::uint32_t inCount);

    OByteStream& mTarget;
    std::uint64_t mPosition = 0;
    std::unique_ptr<unsigned char[]> mBuffer;
    std::uint32_t mBufferSize;
    [[maybe_unused]] std::uint32_t mBlockSize;
    std::uint64_t mWindowStart = 0;
    std::uint32_t mWindowLength = 0;
};

}  // namespace filesupport
}  // namespace quorel

#endif
