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

namespace utility {

template <class Unit>
InputStringStream<Unit>::InputStringStream(StreamText<Unit> const& inText)
    : InputStringStream::basic_istringstream(inText, std::ios_base::in) {
    this->imbue(Locale::Default());
}

template <class Unit>
InputStringStream<Unit>::InputStringStream(Unit const* inText) : InputStringStream(CopyOf<StreamText<Unit>>(inText)) {}

template <class Unit>
InputStringStream<Unit>::~InputStringStream() = default;

template <class Unit>
OutputStringStream<Unit>::OutputStringStream() : OutputStringStream::basic_ostringstream(std::ios_base::out) {
    this->imbue(Locale::Default());
}

template <class Unit>
OutputStringStream<Unit>::~OutputStringStream() = default;

template class InputStringStream<unsigned short>;
template class InputStringStream<unsigned char>;
template class OutputStringStream<unsigned short>;
template class OutputStringStream<unsigned char>;

}  // namespace utility

}  // namespace quorel
