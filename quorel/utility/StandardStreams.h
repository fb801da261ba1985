// The process-wide stream objects and the rebuilding of a stream on a new buffer.
#ifndef QUOREL_UTILITY_STANDARDSTREAMS_H
#define QUOREL_UTILITY_STANDARDSTREAMS_H

#include <quorel/utility/Export.h>
#include <quorel/utility/TextStreams.h>

#include <istream>
#include <ostream>
#include <streambuf>

namespace quorel {
namespace utility {

namespace streams {

/// The standard input, output, log and error streams.
extern QRL_EXPORT std::istream& In;
extern QRL_EXPORT std::ostream& Out;
extern QRL_EXPORT std::ostream& Log;
extern QRL_EXPORT std::ostream& Err;

/// UTF-16 text to the standard output, one line per flush or per 255 units
/// (a UTF16StdOutStreamBuffer).
extern QRL_EXPORT UTF16OutputStream& UTF16Out;

/// UTF-16 text to the debug output hook (a DebugStreamBuffer); with no hook
/// installed the text goes nowhere.
extern QRL_EXPORT UTF16OutputStream& Debug;

}  // namespace streams

/// Destroys ioStream in place and constructs it again in its storage on
/// inBuffer, so that not only the buffer but also the formatting flags, width,
/// precision, locale and error state return to those of a new stream.
/// Returns the former buffer, which is neither flushed nor destroyed; the
/// caller stays its owner.  ioStream must be a std::ostream object itself, not
/// one of a derived class.  A start-up operation: no other thread may use the
/// stream meanwhile.
QRL_EXPORT std::streambuf* SetStreamBuffer(std::ostream& ioStream, std::streambuf* inBuffer);

/// The same for a UTF16OutputStream (which must not be of a derived class).
/// This is also how a default-constructed UTF16OutputStream gets its first
/// buffer; the null buffer returned then means nothing.
QRL_EXPORT UTF16StreamBuffer* SetStreamBuffer(UTF16OutputStream& ioStream, UTF16StreamBuffer* inBuffer);

}  // namespace utility
}  // namespace quorel

#endif
