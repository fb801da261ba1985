// The exceptions of the byte streams.
//
// All three are thrown by value and caught by reference.  They carry no text
// of their own: what() is the one inherited from std::exception.  A caller that
// wants to handle any stream failure catches byte_stream_exception.
#ifndef QUOREL_FILESUPPORT_BYTESTREAMERRORS_H
#define QUOREL_FILESUPPORT_BYTESTREAMERRORS_H

#include <quorel/utility/Export.h>

#include <exception>

namespace quorel {
namespace filesupport {

/// An operation the stream does not support (seeking a run-length stream), and
/// the common root of eof_error and io_error.
class QRL_EXPORT byte_stream_exception : public std::exception {
public:
    byte_stream_exception() noexcept = default;
    ~byte_stream_exception() override;
};

/// A read past the end of the data, a write past the end of a fixed buffer, or
/// a seek past the end of a buffered input.
class QRL_EXPORT eof_error : public byte_stream_exception {
public:
    eof_error() noexcept = default;
    ~eof_error() override;
};

/// The operating system reported a failure on a file stream.
class QRL_EXPORT io_error : public byte_stream_exception {
public:
    io_error() noexcept = default;
    ~io_error() override;
};

}  // namespace filesupport
}  // namespace quorel

#endif
