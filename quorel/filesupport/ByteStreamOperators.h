// The wire form of values on byte streams.
//
// Every value is written without tag, marker or padding; the reader must know
// what comes next.  Whole numbers are big-endian two's complement, so a value
// reads back the same on every machine:
//
//   bool                         1 byte, 1 or 0; any non-zero byte reads as true
//   char, signed/unsigned char   1 byte
//   short, unsigned short        2 bytes
//   std::int32_t, std::uint32_t  4 bytes (the library's 32-bit "long")
//   std::int64_t, std::uint64_t  8 bytes
//   std::string                  2-byte length in bytes, then the bytes
//   UTF16String                  2-byte length in code units, then each unit as
//                                2 bytes, high byte first
//   float, double, long double   decimal text (see below) written as a std::string
//
// String lengths: the prefix is the low 16 bits of the length and exactly that
// many units follow, so 65,535 units is the longest string that survives; a
// string of 65,536 units writes an empty string.  Nothing is reported: callers
// keep their strings short.  Reading empties the target first and appends the
// units one at a time, so a read that ends in eof_error keeps the units it got.
//
// Floating point is written as the text a std::ostringstream with default flags
// and precision 36 gives (the %.36g form), in the global locale; a float is
// widened to double first.  Reading extracts the value from that text with the
// standard extraction of its type and does not look at the parse state: text
// that is not a number leaves the target as the extraction left it.  The texts
// written for infinities and NaN ("inf", "-inf", "nan", "-nan") are also read
// back as those values.
//
// Failures pass through: eof_error and io_error of the stream reach the caller,
// and a value read that fails part way has consumed the bytes it got.
#ifndef QUOREL_FILESUPPORT_BYTESTREAMOPERATORS_H
#define QUOREL_FILESUPPORT_BYTESTREAMOPERATORS_H

#include <quorel/filesupport/ByteStream.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>

namespace quorel {
namespace filesupport {

QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, bool& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, char& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, signed char& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, unsigned char& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, short& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, unsigned short& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, std::int32_t& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, std::uint32_t& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, std::int64_t& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, std::uint64_t& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, float& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, double& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, long double& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, std::string& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, UTF16String& outValue);

QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, bool const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, char const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, signed char const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, unsigned char const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, short const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, unsigned short const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, std::int32_t const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, std::uint32_t const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, std::int64_t const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, std::uint64_t const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, float const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, double const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, long double const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, std::string const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, UTF16String const& inValue);

#if LONG_MAX > INT_MAX && LLONG_MAX == LONG_MAX
// Where std::int64_t is `long`, `long long` is a type of its own with the same
// 8-byte form; without these a long long value would match no operator exactly.
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, long long& outValue);
QRL_EXPORT IByteStream& operator>>(IByteStream& ioStream, unsigned long long& outValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, long long const& inValue);
QRL_EXPORT OByteStream& operator<<(OByteStream& ioStream, unsigned long long const& inValue);
#endif

/// Pointers and arrays have no wire form.  Without these a string literal or
/// any pointer would silently convert to bool and be written as one byte.
/// Write text as a std::string or UTF16String.
template <class T>
OByteStream& operator<<(OByteStream& ioStream, T* const& inPointer) = delete;
template <class T, std::size_t inSize>
OByteStream& operator<<(OByteStream& ioStream, T const (&inArray)[inSize]) = delete;

/// Copies inSource to ioTarget byte by byte, through Get and Put, from the
/// source's current position (no seek).  When inSource.Length() is L > 0,
/// exactly L bytes are copied, and an eof_error of a source with fewer bytes
/// left reaches the caller after the bytes it had.  When Length() is 0 the
/// copy runs until the source raises eof_error, which then ends it quietly.
/// Any other exception passes on.  Returns ioTarget.
QRL_EXPORT OByteStream& operator<<(OByteStream& ioTarget, IByteStream& inSource);

}  // namespace filesupport
}  // namespace quorel

#endif
