#include <quorel/threads/Barrier.h>

#include <quorel/debug/Debug.h>
#include <quorel/threads/ThreadErrors.h>
#include <quorel/threads/ThreadTraceScope.h>

#include <stdexcept>
#include <utility>

namespace quorel {
namespace threads {

namespace {

constexpr char kClass[] = "Barrier";

std::unique_ptr<boost::barrier> NewBarrier(unsigned int inCount) {
    return CallTranslatingThreadErrors([&] {
        // Boost rejects a count of 0 with an exception type that has changed
        // between its versions; the barrier promises std::invalid_argument.
        if (inCount == 0) {
            throw std::invalid_argument("count cannot be zero.");
        }
        return std::make_unique<boost::barrier>(inCount);
    });
}

}  // namespace

Barrier::Barrier(unsigned int inCount) : mBarrier(NewBarrier(inCount)) {}

Barrier::Barrier(std::string const& inName, unsigned int inCount) : mName(inName) {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Default Constructor", false);
    mBarrier = NewBarrier(inCount);
}

Barrier::Barrier(Barrier& inOther) noexcept : mName(inOther.mName), mBarrier(std::move(inOther.mBarrier)) {}

Barrier::Barrier(Barrier&& inOther) noexcept : Barrier(inOther) {}

Barrier& Barrier::operator=(Barrier& inOther) noexcept {
    if (this != &inOther) {
        mName = inOther.mName;
        mBarrier = std::move(inOther.mBarrier);
    }
    return *this;
}

Barrier& Barrier::operator=(Barrier&& inOther) noexcept { return *this = inOther; }

Barrier::~Barrier() = default;

bool Barrier::Wait() {
    ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, mName, kClass, "Wait", false);
    QRL_INPUT_CONTRACT(mBarrier != nullptr);
    if (!mBarrier) {
        return false;
    }
    return CallTranslatingThreadErrors([&] { return mBarrier->wait(); });
}

}  // namespace threads
}  // namespace quorel
