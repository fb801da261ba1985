// TickTime: the operations that carry an input contract, the stream output and
// the named times.  Everything else is inline in the header.
#include <quorel/time/TickTime.h>

#include <quorel/debug/Debug.h>

#include <ostream>

namespace quorel {
namespace time {

// Constant expressions, placed in read-only data with their final values, so
// that they are valid before any static initialiser of a host runs.
constexpr TickTime kTickTime_Zero;
constexpr TickTime kTickTime_Max(360000.0);
constexpr TickTime kTickTime_Min = -kTickTime_Max;
constexpr TickTime kTickTime_Invalid(-400000.0);

static_assert(kTickTime_Max.GetTicks() == 91445760000000000, "100 hours");
static_assert(kTickTime_Min.GetTicks() == -91445760000000000, "minus 100 hours");
static_assert(kTickTime_Invalid.GetTicks() == -101606400000000000, "below the minimum");

namespace {

// Signed division of a time by an unsigned 64-bit divisor (not 0), truncating
// toward zero.  A divisor of 2^63 or more exceeds every time's magnitude but
// one: only -2^63 / 2^63 gives a non-zero quotient.
std::int64_t DivideByUnsigned(std::int64_t inDividend, std::uint64_t inDivisor) noexcept {
    if (inDivisor <= static_cast<std::uint64_t>(detail::kMaxInt64)) {
        return inDividend / static_cast<std::int64_t>(inDivisor);
    }
    return (inDividend == detail::kMinInt64 && inDivisor == (std::uint64_t{1} << 63)) ? -1 : 0;
}

}  // namespace

TickTime::TickTime(std::int64_t inFrames, FrameRate const& inFrameRate) : mTicks(0) {
    QRL_INPUT_CONTRACT(inFrameRate != kFrameRate_Zero);
    mTicks = detail::WrappingMultiply(inFrames, static_cast<std::uint64_t>(inFrameRate.GetTicksPerFrame()));
}

void TickTime::AlignToFrame(FrameRate const& inFrameRate) {
    QRL_INPUT_CONTRACT(inFrameRate != kFrameRate_Zero);
    QRL_INPUT_CONTRACT(inFrameRate.GetTicksPerFrame() != 0);
    std::int64_t const ticksPerFrame = inFrameRate.GetTicksPerFrame();
    if (ticksPerFrame == 0) return;  // the error manager returned: nothing to align to
    std::int64_t const frame = detail::DivideTruncating(mTicks, ticksPerFrame);
    mTicks = detail::WrappingMultiply(frame, static_cast<std::uint64_t>(ticksPerFrame));
}

// Compound divisions.  When the error manager returns from a failed check, the
// integer forms leave the time as it is rather than divide by zero.

TickTime& TickTime::operator/=(double inValue) {
    QRL_INPUT_CONTRACT(inValue != 0);
    mTicks = detail::TruncateToTicks(static_cast<double>(mTicks) / inValue);
    return *this;
}

TickTime& TickTime::operator/=(long inValue) {
    QRL_INPUT_CONTRACT(inValue != 0);
    if (inValue != 0) mTicks = detail::DivideTruncating(mTicks, static_cast<std::int64_t>(inValue));
    return *this;
}

TickTime& TickTime::operator/=(unsigned long inValue) {
    QRL_INPUT_CONTRACT(inValue != 0);
    if (inValue != 0) mTicks = DivideByUnsigned(mTicks, inValue);
    return *this;
}

TickTime& TickTime::operator/=(int inValue) {
    QRL_INPUT_CONTRACT(inValue != 0);
    if (inValue != 0) mTicks = detail::DivideTruncating(mTicks, static_cast<std::int64_t>(inValue));
    return *this;
}

TickTime& TickTime::operator/=(unsigned int inValue) {
    QRL_INPUT_CONTRACT(inValue != 0);
    if (inValue != 0) mTicks = DivideByUnsigned(mTicks, inValue);
    return *this;
}

// By-value divisions: check, then let the compound form do the work on a copy.

TickTime TickTime::operator/(double inValue) const {
    QRL_INPUT_CONTRACT(inValue != 0);
    TickTime result(*this);
    return result /= inValue;
}

TickTime TickTime::operator/(long inValue) const {
    QRL_INPUT_CONTRACT(inValue != 0);
    TickTime result(*this);
    return result /= inValue;
}

TickTime TickTime::operator/(unsigned long inValue) const {
    QRL_INPUT_CONTRACT(inValue != 0);
    TickTime result(*this);
    return result /= inValue;
}

TickTime TickTime::operator/(int inValue) const {
    QRL_INPUT_CONTRACT(inValue != 0);
    TickTime result(*this);
    return result /= inValue;
}

TickTime TickTime::operator/(unsigned int inValue) const {
    QRL_INPUT_CONTRACT(inValue != 0);
    TickTime result(*this);
    return result /= inValue;
}

double TickTime::operator/(TickTime const& inRHS) const {
    QRL_INPUT_CONTRACT(inRHS.mTicks != 0);
    return static_cast<double>(mTicks) / static_cast<double>(inRHS.mTicks);
}

std::ostream& operator<<(std::ostream& ioStream, TickTime const& inTime) {
    return ioStream << static_cast<double>(inTime.GetTicks()) / static_cast<double>(kTicksPerSecond);
}

}  // namespace time
}  // namespace quorel
