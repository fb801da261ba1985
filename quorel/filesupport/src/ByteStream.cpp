// The root classes of the byte streams and their exceptions.
#include <quorel/debug/Debug.h>
#include <quorel/filesupport/ByteStream.h>
#include <quorel/filesupport/ByteStreamErrors.h>

#include <atomic>

namespace quorel {
namespace filesupport {

namespace {

std::atomic<int> sNextStreamIndex{0};

// The entry inIndex of ioTable, grown with default values when the table is
// shorter.  A negative index fails the contract and, when the check returns,
// gets ioDiscard (a scratch slot) instead.
template <class T>
T& GrowingEntry(std::vector<T>& ioTable, int inIndex, T& ioDiscard) {
    QRL_INPUT_CONTRACT(inIndex >= 0);
    if (inIndex < 0) {
        ioDiscard = T();
        return ioDiscard;
    }
    std::size_t const index = static_cast<std::size_t>(inIndex);
    if (index >= ioTable.size()) {
        ioTable.resize(index + 1, T());
    }
    return ioTable[index];
}

}  // namespace

byte_stream_exception::~byte_stream_exception() = default;
eof_error::~eof_error() = default;
io_error::~io_error() = default;

ByteStream_base::ByteStream_base() = default;

ByteStream_base::~ByteStream_base() {
    for (std::pair<event_callback, int> const& entry : mCallbacks) {
        entry.first(destroyed, *this, entry.second);
    }
}

int ByteStream_base::xalloc() { return sNextStreamIndex.fetch_add(1, std::memory_order_relaxed); }

std::int32_t& ByteStream_base::iword(int inIndex) { return GrowingEntry(mWords, inIndex, mDiscardedWord); }

void*& ByteStream_base::pword(int inIndex) { return GrowingEntry(mPointers, inIndex, mDiscardedPointer); }

void ByteStream_base::register_callback(event_callback inCallback, int inIndex) {
    mCallbacks.emplace_back(inCallback, inIndex);
}

IByteStream::~IByteStream() = default;

void IByteStream::ReadBlock(unsigned char* outDest, std::uint32_t inCount) {
    for (std::uint32_t i = 0; i < inCount; ++i) {
        outDest[i] = Get();
    }
}

std::uint64_t IByteStream::Length() const { return 0; }

OByteStream::~OByteStream() = default;

void OByteStream::WriteBlock(unsigned char const* inSource, std::uint32_t inCount) {
    for (std::uint32_t i = 0; i < inCount; ++i) {
        Put(inSource[i]);
    }
}

}  // namespace filesupport
}  // namespace quorel
