// Line-writing stream buffers for UTF-16 output streams.
//
// UTF16StreamBufferImpl collects up to 255 units and hands them on as one
// nul-terminated text, on every flush and whenever its put area is full.  Its
// two concrete forms send that text to the debug output hook
// (DebugStreamBuffer) or to the standard output as one line
// (UTF16StdOutStreamBuffer).  The templates are meant for unsigned short and
// CodeUnitTraits<unsigned short>, their default arguments.
#ifndef QUOREL_UTILITY_UTF16STREAMBUFFERS_H
#define QUOREL_UTILITY_UTF16STREAMBUFFERS_H

#include <quorel/utility/CodeUnitTraits.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cstddef>
#include <cstdio>
#include <streambuf>

namespace quorel {
namespace debug {

/// Receives the text of DebugStreamBuffer as nul-terminated UTF-8.
using DebugOutputHook = void (*)(char const* inUTF8Text);

/// Installs the receiver of streams::Debug's text; null (the state at load)
/// sends it nowhere.  A start-up operation: install before the stream is used.
QRL_EXPORT void SetDebugOutputHook(DebugOutputHook inHook) noexcept;

/// The installed receiver, or null.
QRL_EXPORT DebugOutputHook GetDebugOutputHook() noexcept;

/// An abstract output buffer of 256 units whose put area covers 255.  sync()
/// empties the put area and hands what it held, nul-terminated, to OutputText;
/// overflow() does the same before it stores the new unit.  So a text of 300
/// units without a flush reaches OutputText in two pieces of 255 and 45 units.
///
/// The base class cannot reach OutputText from its destructor: a derived class
/// calls sync() in its own destructor so that no buffered text is lost.
template <class CharT = unsigned short, class Traits = CodeUnitTraits<unsigned short>>
class UTF16StreamBufferImpl : public std::basic_streambuf<CharT, Traits> {
public:
    using int_type = typename Traits::int_type;

    /// The units of the buffer; one stays free for the terminator.
    static constexpr std::size_t kBufferUnits = 256;

    UTF16StreamBufferImpl() { this->setp(mBuffer, mBuffer + (kBufferUnits - 1)); }
    ~UTF16StreamBufferImpl() override = default;

    UTF16StreamBufferImpl(UTF16StreamBufferImpl const&) = delete;
    UTF16StreamBufferImpl& operator=(UTF16StreamBufferImpl const&) = delete;

protected:
    /// Hands on the buffered text, then stores inUnit unless it is eof().
    /// Returns 0 for eof(), otherwise the stored unit.
    int_type overflow(int_type inUnit) override;

    /// Hands the buffered units, if any, to OutputText as one text.  The put
    /// area is empty before OutputText runs, so OutputText may write to a
    /// stream on this buffer again.  A nul unit ends the text at that place.
    int sync() override;

    /// Receives one nul-terminated piece of text.
    virtual void OutputText(CharT const* inText) = 0;

private:
    CharT mBuffer[kBufferUnits];
};

/// Sends its text, converted to UTF-8, to the debug output hook.
template <class CharT = unsigned short, class Traits = CodeUnitTraits<unsigned short>>
class DebugStreamBuffer : public UTF16StreamBufferImpl<CharT, Traits> {
public:
    DebugStreamBuffer() = default;
    ~DebugStreamBuffer() override;

protected:
    void OutputText(CharT const* inText) override;
};

/// Writes its text, converted to UTF-8, to the standard output with puts(),
/// which ends each piece with a line end.
template <class CharT = unsigned short, class Traits = CodeUnitTraits<unsigned short>>
class UTF16StdOutStreamBuffer : public UTF16StreamBufferImpl<CharT, Traits> {
public:
    UTF16StdOutStreamBuffer() = default;
    ~UTF16StdOutStreamBuffer() override;

protected:
    void OutputText(CharT const* inText) override;
};

template <class CharT, class Traits>
typename UTF16StreamBufferImpl<CharT, Traits>::int_type UTF16StreamBufferImpl<CharT, Traits>::overflow(
    int_type inUnit) {
    sync();
    if (Traits::eq_int_type(inUnit, Traits::eof())) {
        return 0;
    }
    return this->sputc(Traits::to_char_type(inUnit));
}

template <class CharT, class Traits>
int UTF16StreamBufferImpl<CharT, Traits>::sync() {
    std::ptrdiff_t const count = this->pptr() - this->pbase();
    if (count < 1) {
        return 0;
    }
    CharT text[kBufferUnits];
    Traits::copy(text, this->pbase(), static_cast<std::size_t>(count));
    text[count] = CharT();
    this->pbump(-static_cast<int>(count));
    OutputText(text);
    return 0;
}

template <class CharT, class Traits>
DebugStreamBuffer<CharT, Traits>::~DebugStreamBuffer() {
    this->sync();
}

template <class CharT, class Traits>
void DebugStreamBuffer<CharT, Traits>::OutputText(CharT const* inText) {
    if (DebugOutputHook const hook = GetDebugOutputHook()) {
        UTF8String const text = utility::UTF16to8(inText);
        hook(reinterpret_cast<char const*>(text.c_str()));
    }
}

template <class CharT, class Traits>
UTF16StdOutStreamBuffer<CharT, Traits>::~UTF16StdOutStreamBuffer() {
    this->sync();
}

template <class CharT, class Traits>
void UTF16StdOutStreamBuffer<CharT, Traits>::OutputText(CharT const* inText) {
    UTF8String const text = utility::UTF16to8(inText);
    std::puts(reinterpret_cast<char const*>(text.c_str()));
}

extern template class QRL_EXPORT UTF16StreamBufferImpl<unsigned short, CodeUnitTraits<unsigned short>>;
extern template class QRL_EXPORT DebugStreamBuffer<unsigned short, CodeUnitTraits<unsigned short>>;
extern template class QRL_EXPORT UTF16StdOutStreamBuffer<unsigned short, CodeUnitTraits<unsigned short>>;

}  // namespace debug
}  // namespace quorel

#endif
