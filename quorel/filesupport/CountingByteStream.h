// An output stream that stores nothing and counts, to learn the size of a
// serialised form without writing it.
#ifndef QUOREL_FILESUPPORT_COUNTINGBYTESTREAM_H
#define QUOREL_FILESUPPORT_COUNTINGBYTESTREAM_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>

#include <cstdint>

namespace quorel {
namespace filesupport {

/// Counts the bytes put into it.  Seeking moves the position and leaves the
/// count, so the count is the highest position any byte reached.
class QRL_EXPORT OCountingByteStream : public OByteStream {
public:
    OCountingByteStream();
    ~OCountingByteStream() override;

    void Put(unsigned char inByte) override;
    void CurPos(std::uint64_t inPosition) override;
    std::uint64_t CurPos() const override;

    /// The highest position a Put reached.
    std::uint64_t Count() const;

private:
    std::uint64_t mCount = 0;
    std::uint64_t mPosition = 0;
};

}  // namespace filesupport
}  // namespace quorel

#endif
