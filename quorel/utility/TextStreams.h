// quorel's text stream classes: standard streams over UTF-16 and UTF-8 code
// units with the library's character traits and, for the string streams, the
// small-block allocator.
//
// The classes add no formatting of their own; they fix the element type, the
// allocator and the constructors.  Each one starts in quorel::Locale::Default()
// (the "C" locale with the facets of CodeUnitFacets.h), so numbers and words
// stream in and out with "." as the decimal point.  To read or write in
// another locale, imbue one made by utility::WithCodeUnitFacets, such as
// quorel::Locale::Native().
//
// A code unit is an unsigned short, which standard streams treat as a number:
// `stream << unit` writes its decimal value and `stream >> unit` reads one.
// Write single units with put() or as a UTF16String.  A char is written as a
// character, by the inserter declared below.
//
// Streams have no locks: one stream belongs to one thread at a time.
#ifndef QUOREL_UTILITY_TEXTSTREAMS_H
#define QUOREL_UTILITY_TEXTSTREAMS_H

#include <quorel/utility/CodeUnitFacets.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <istream>
#include <ostream>
#include <sstream>
#include <streambuf>

namespace quorel {

/// Standard stream types over UTF-16 and UTF-8 code units.
using UTF16StreamBuffer = std::basic_streambuf<unsigned short, CodeUnitTraits<unsigned short>>;
using UTF16BasicOStream = std::basic_ostream<unsigned short, CodeUnitTraits<unsigned short>>;
using UTF16BasicIStream = std::basic_istream<unsigned short, CodeUnitTraits<unsigned short>>;
using UTF8BasicOStream = std::basic_ostream<unsigned char, CodeUnitTraits<unsigned char>>;
using UTF8BasicIStream = std::basic_istream<unsigned char, CodeUnitTraits<unsigned char>>;

/// Writes inChar as the unit that the stream's widen() gives it, padded to the
/// stream's width like any text.  (The standard inserter for char would pass
/// the widened unit on to the inserter of unsigned short, which writes a
/// number.)
QRL_EXPORT UTF16BasicOStream& operator<<(UTF16BasicOStream& ioStream, char inChar);

/// An output stream of UTF-16 code units over a stream buffer it does not own.
class QRL_EXPORT UTF16OutputStream : public UTF16BasicOStream {
public:
    /// A stream without a buffer: its state is bad and it writes nothing until
    /// utility::SetStreamBuffer gives it one.
    UTF16OutputStream();
    /// A stream that writes to inBuffer (not owned; null gives a bad stream).
    explicit UTF16OutputStream(UTF16StreamBuffer* inBuffer);
    ~UTF16OutputStream() override;
};

namespace utility {

/// The text of quorel's string streams of Unit.
template <class Unit>
using StreamText = std::basic_string<Unit, CodeUnitTraits<Unit>, SmallBlockAllocator::STLAllocator<Unit>>;

/// A standard input string stream of code units that reads its own copy of a
/// text, starting in Locale::Default().  iUTF16StringStream and
/// iUTF8StringStream are its two forms.
template <class Unit>
class InputStringStream
    : public std::basic_istringstream<Unit, CodeUnitTraits<Unit>, SmallBlockAllocator::STLAllocator<Unit>> {
public:
    /// Reads a copy of inText.
    explicit InputStringStream(StreamText<Unit> const& inText);
    /// Reads a copy of the nul-terminated inText; null reads as empty text.
    explicit InputStringStream(Unit const* inText);
    ~InputStringStream() override;
};

/// A standard output string stream of code units, starting in
/// Locale::Default(); str() returns the text.  oUTF16StringStream and
/// oUTF8StringStream are its two forms.
template <class Unit>
class OutputStringStream
    : public std::basic_ostringstream<Unit, CodeUnitTraits<Unit>, SmallBlockAllocator::STLAllocator<Unit>> {
public:
    OutputStringStream();
    ~OutputStringStream() override;
};

extern template class QRL_EXPORT InputStringStream<unsigned short>;
extern template class QRL_EXPORT InputStringStream<unsigned char>;
extern template class QRL_EXPORT OutputStringStream<unsigned short>;
extern template class QRL_EXPORT OutputStringStream<unsigned char>;

}  // namespace utility

/// Reads UTF-16 text from its own copy of a string: constructed from a
/// UTF16String or from a nul-terminated array of units (null reads as empty).
class QRL_EXPORT iUTF16StringStream : public utility::InputStringStream<unsigned short> {
public:
    using InputStringStream::InputStringStream;
};

/// Collects UTF-16 text; str() returns it.
class QRL_EXPORT oUTF16StringStream : public utility::OutputStringStream<unsigned short> {};

/// Reads UTF-8 text from its own copy of a string: constructed from a
/// UTF8String or from a nul-terminated array of bytes (null reads as empty).
class QRL_EXPORT iUTF8StringStream : public utility::InputStringStream<unsigned char> {
public:
    using InputStringStream::InputStringStream;
};

/// Collects UTF-8 text; str() returns it.
class QRL_EXPORT oUTF8StringStream : public utility::OutputStringStream<unsigned char> {};

}  // namespace quorel

#endif
