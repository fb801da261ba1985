#include <quorel/utility/NumberSeparators.h>

#include "LocaleSeparators.h"

#include <atomic>
#include <cstdint>

namespace quorel {
namespace utility {

namespace {

// Both separators in one word, decimal in the high half; 0 until read.  A
// word of 0 can't come from a reading, since neither separator is ever 0.
std::atomic<std::uint32_t> gSeparators{0};
std::atomic<NumberSeparatorSource> gSource{nullptr};

std::uint32_t Pack(NumberSeparators const& inSeparators) {
    return (static_cast<std::uint32_t>(inSeparators.mDecimal) << 16) | inSeparators.mThousands;
}

NumberSeparators Unpack(std::uint32_t inWord) {
    NumberSeparators result;
    result.mDecimal = static_cast<unsigned short>(inWord >> 16);
    result.mThousands = static_cast<unsigned short>(inWord & 0xFFFFu);
    return result;
}

NumberSeparators ReadFromSource() {
    NumberSeparators result;
    NumberSeparatorSource const source = gSource.load();
    if (source != nullptr) {
        source(result);
    } else {
        platform::ReadUserNumberSeparators(result);
    }
    NumberSeparators const defaults;
    if (result.mDecimal == 0) {
        result.mDecimal = defaults.mDecimal;
    }
    if (result.mThousands == 0) {
        result.mThousands = defaults.mThousands;
    }
    return result;
}

}  // namespace

NumberSeparators GetNumberSeparators() {
    std::uint32_t word = gSeparators.load(std::memory_order_acquire);
    if (word == 0) {
        // Threads that get here together may all read; the first to store
        // wins and the others take its values.
        std::uint32_t const read = Pack(ReadFromSource());
        if (gSeparators.compare_exchange_strong(word, read, std::memory_order_acq_rel)) {
            word = read;
        }
    }
    return Unpack(word);
}

void SetNumberSeparatorSource(NumberSeparatorSource inSource) {
    gSource.store(inSource);
    gSeparators.store(0, std::memory_order_release);
}

}  // namespace utility
}  // namespace quorel
