#include <quorel/utility/StandardStreams.h>
#include <quorel/utility/UTF16StreamBuffers.h>

#include <atomic>
#include <iostream>
#include <new>

namespace quorel {
namespace debug {

namespace {
std::atomic<DebugOutputHook> gDebugOutputHook{nullptr};
}  // namespace

void SetDebugOutputHook(DebugOutputHook inHook) noexcept { gDebugOutputHook.store(inHook); }

DebugOutputHook GetDebugOutputHook() noexcept { return gDebugOutputHook.load(); }

template class UTF16StreamBufferImpl<unsigned short, CodeUnitTraits<unsigned short>>;
template class DebugStreamBuffer<unsigned short, CodeUnitTraits<unsigned short>>;
template class UTF16StdOutStreamBuffer<unsigned short, CodeUnitTraits<unsigned short>>;

}  // namespace debug

namespace utility {

namespace {

// Built at load in this order, each buffer before its stream, and destroyed at
// unload in the reverse order; each buffer hands on what it still holds then.
debug::UTF16StdOutStreamBuffer<> gStdOutBuffer;
UTF16OutputStream gUTF16Out(&gStdOutBuffer);
debug::DebugStreamBuffer<> gDebugBuffer;
UTF16OutputStream gDebug(&gDebugBuffer);

// Destroys the Stream object at ioStream and builds a new one on inBuffer.
// Should that construction throw, a stream without a buffer takes its place,
// so that the object stays alive for its owner.
template <class Stream, class Buffer>
Buffer* RebuildOn(Stream& ioStream, Buffer* inBuffer) {
    Buffer* const former = ioStream.rdbuf();
    ioStream.Stream::~Stream();
    try {
        ::new (static_cast<void*>(&ioStream)) Stream(inBuffer);
    } catch (...) {
        ::new (static_cast<void*>(&ioStream)) Stream(nullptr);
        throw;
    }
    return former;
}

}  // namespace

namespace streams {
std::istream& In = std::cin;
std::ostream& Out = std::cout;
std::ostream& Log = std::clog;
std::ostream& Err = std::cerr;
UTF16OutputStream& UTF16Out = gUTF16Out;
UTF16OutputStream& Debug = gDebug;
}  // namespace streams

std::streambuf* SetStreamBuffer(std::ostream& ioStream, std::streambuf* inBuffer) {
    return RebuildOn(ioStream, inBuffer);
}

UTF16StreamBuffer* SetStreamBuffer(UTF16OutputStream& ioStream, UTF16StreamBuffer* inBuffer) {
    return RebuildOn(ioStream, inBuffer);
}

}  // namespace utility
}  // namespace quorel
