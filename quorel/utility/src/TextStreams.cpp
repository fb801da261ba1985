#include <quorel/utility/Locale.h>
#include <quorel/utility/TextStreams.h>

namespace quorel {

namespace {

// The text of a nul-terminated array; null is empty text.
template <class String>
String CopyOf(typename String::value_type const* inText) {
    return inText != nullptr ? String(inText) : String();
}

}  // namespace

UTF16BasicOStream& operator<<(UTF16BasicOStream& ioStream, char inChar) {
    return ioStream << UTF16String(1, ioStream.widen(inChar));
}

UTF16OutputStream::UTF16OutputStream() : UTF16BasicOStream(nullptr) {}

UTF16OutputStream::UTF16OutputStream(UTF16StreamBuffer* inBuffer) : UTF16BasicOStream(inBuffer) {
    imbue(Locale::Default());
}

UTF16OutputStream::~UTF16OutputStream() = default;

iUTF16StringStream::iUTF16StringStream(UTF16String const& inText) : basic_istringstream(inText, std::ios_base::in) {
    imbue(Locale::Default());
}

iUTF16StringStream::iUTF16StringStream(unsigned short const* inText)
    : basic_istringstream(CopyOf<UTF16String>(inText), std::ios_base::in) {
    imbue(Locale::Default());
}

iUTF16StringStream::~iUTF16StringStream() = default;

oUTF16StringStream::oUTF16StringStream() : basic_ostringstream(std::ios_base::out) {
    imbue(Locale::Default());
}

oUTF16StringStream::~oUTF16StringStream() = default;

iUTF8StringStream::iUTF8StringStream(UTF8String const& inText) : basic_istringstream(inText, std::ios_base::in) {
    imbue(Locale::Default());
}

iUTF8StringStream::iUTF8StringStream(unsigned char const* inText)
    : basic_istringstream(CopyOf<UTF8String>(inText), std::ios_base::in) {
    imbue(Locale::Default());
}

iUTF8StringStream::~iUTF8StringStream() = default;

oUTF8StringStream::oUTF8StringStream() : basic_ostringstream(std::ios_base::out) {
    imbue(Locale::Default());
}

oUTF8StringStream::~oUTF8StringStream() = default;

}  // namespace quorel
