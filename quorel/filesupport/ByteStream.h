// The root classes of the library's binary streams.
//
// An IByteStream hands out bytes one at a time (or in blocks), an OByteStream
// takes them; both have a 64-bit position.  How values are laid out as bytes is
// fixed by the operators of ByteStreamOperators.h, not by these classes.  The
// concrete streams (memory, buffered, run-length, CRC, files, ...) derive from
// these two.  A stream belongs to one thread at a time and is never copied:
// streams are passed by reference, and a wrapper does not own what it wraps.
#ifndef QUOREL_FILESUPPORT_BYTESTREAM_H
#define QUOREL_FILESUPPORT_BYTESTREAM_H

#include <quorel/utility/Export.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace quorel {
namespace filesupport {

/// The polymorphic root of both directions.  It keeps per-stream user data in
/// the manner of std::ios_base: a table of 32-bit words, a table of pointers,
/// and callbacks that run when the stream is destroyed.  The two tables and the
/// callback list are independent; an index in one means nothing in another.
class QRL_EXPORT ByteStream_base {
public:
    /// What a callback is told.  The library only ever passes `destroyed`.
    enum event { destroyed = 0 };

    /// A callback: the event, the stream, and the index given at registration.
    using event_callback = void (*)(event, ByteStream_base&, int);

    /// Runs every registered callback once, in registration order, with
    /// `destroyed`.  By then the derived part of the stream is gone: a callback
    /// may use iword, pword and its index, no concrete stream operation.
    virtual ~ByteStream_base();

    ByteStream_base(ByteStream_base const&) = delete;
    ByteStream_base& operator=(ByteStream_base const&) = delete;

    /// Returns a process-wide counter and adds one to it; the first call gives
    /// 0.  It only hands out numbers for use with iword and pword and reserves
    /// nothing in any stream.
    static int xalloc();

    /// The inIndex-th user word of this stream.  The table grows to inIndex + 1
    /// entries when it is shorter, new entries being 0.  The reference holds
    /// until the table grows again.  inIndex must not be negative.
    std::int32_t& iword(int inIndex);

    /// The inIndex-th user pointer; as iword, with null for new entries.
    void*& pword(int inIndex);

    /// Appends (inCallback, inIndex) to the callbacks run at destruction.  The
    /// same pair may be registered more than once and then runs as often.
    void register_callback(event_callback inCallback, int inIndex);

protected:
    ByteStream_base();

private:
    std::vector<std::int32_t> mWords;
    std::vector<void*> mPointers;
    std::vector<std::pair<event_callback, int>> mCallbacks;
    std::int32_t mDiscardedWord = 0;     // answers a negative index when the contract check returns
    void* mDiscardedPointer = nullptr;
};

/// The input interface.  End of data is reported by eof_error from Get,
/// ReadBlock or a seek; nothing is returned to mark it.
class QRL_EXPORT IByteStream : public ByteStream_base {
public:
    ~IByteStream() override;

    /// The byte at the current position; moves on by one.
    virtual unsigned char Get() = 0;

    /// Reads inCount bytes to outDest.  The default calls Get inCount times.
    virtual void ReadBlock(unsigned char* outDest, std::uint32_t inCount);

    /// Moves to the absolute position inPosition.
    virtual void CurPos(std::uint64_t inPosition) = 0;

    /// The current position, in bytes from the start.
    virtual std::uint64_t CurPos() const = 0;

    /// The length of the data.  0 also means "not known": the default.
    virtual std::uint64_t Length() const;

protected:
    IByteStream() = default;
};

/// The output interface.  It has neither Length nor Flush: the classes that
/// have them declare them.
class QRL_EXPORT OByteStream : public ByteStream_base {
public:
    ~OByteStream() override;

    /// Writes one byte at the current position and moves on.
    virtual void Put(unsigned char inByte) = 0;

    /// Writes inCount bytes from inSource.  The default calls Put inCount times.
    virtual void WriteBlock(unsigned char const* inSource, std::uint32_t inCount);

    /// Moves to the absolute position inPosition.
    virtual void CurPos(std::uint64_t inPosition) = 0;

    /// The current position, in bytes from the start.
    virtual std::uint64_t CurPos() const = 0;

protected:
    OByteStream() = default;
};

}  // namespace filesupport
}  // namespace quorel

#endif
