// Media time as an exact count of ticks.
//
// A TickTime is a signed 64-bit number of ticks (kTicksPerSecond to the
// second).  Adding frames, converting between frames and time and comparing
// times are integer operations without drift; doubles appear only where
// seconds or scale factors come in or go out.
#ifndef QUOREL_TIME_TICKTIME_H
#define QUOREL_TIME_TICKTIME_H

#include <quorel/time/FrameRate.h>
#include <quorel/utility/Export.h>

#include <cstdint>
#include <iosfwd>

namespace quorel {
namespace time {

/// A point in or a span of media time, in ticks; may be negative.
///
/// Arithmetic rules:
/// - Addition, subtraction, negation and multiplication by integers wrap in
///   64 bits and are never checked.  Nothing clamps a result to
///   kTickTime_Min / kTickTime_Max, and kTickTime_Invalid is an ordinary
///   number to every operation.
/// - Operations with a double truncate the double result toward zero; a
///   result that does not fit in 64 bits (NaN included) gives
///   0x8000000000000000 ticks.
/// - Integer division truncates toward zero.  The most negative value divided
///   by -1 wraps back to itself.
///
/// Contracts: a zero divisor, constructing from frames of kFrameRate_Zero and
/// aligning to kFrameRate_Zero or to a rate of 0 ticks per frame are input
/// contract violations (QRL_INPUT_CONTRACT: fatal error, module 105, number
/// 25).  The check comes before any change, so an error manager that throws
/// leaves the value as it was.  If the manager returns, an integer division or
/// an alignment that would divide by zero leaves the value unchanged; the
/// other operations go on with their arithmetic.
///
/// One 64-bit word, no allocation, no shared state.
class QRL_EXPORT TickTime {
public:
    /// 0 ticks.
    constexpr TickTime() noexcept : mTicks(0) {}

    /// inSeconds times kTicksPerSecond, multiplied in double and truncated
    /// toward zero; 0.0 gives exactly 0 ticks.
    constexpr explicit TickTime(double inSeconds) noexcept
        : mTicks(detail::TruncateToTicks(inSeconds * static_cast<double>(kTicksPerSecond))) {}

    /// The start of frame inFrames at inFrameRate: frames times ticks per frame,
    /// wrapping.  Contract: inFrameRate != kFrameRate_Zero.
    TickTime(std::int64_t inFrames, FrameRate const& inFrameRate);

    /// A time of exactly inTicks ticks.
    static constexpr TickTime TicksToTickTime(std::int64_t inTicks) noexcept { return TickTime(inTicks); }

    /// The count of ticks.
    constexpr std::int64_t GetTicks() const noexcept { return mTicks; }

    /// The frame that holds this time: ticks divided by ticks per frame,
    /// truncating toward zero, so every time in (-1 frame, +1 frame) is frame 0.
    /// kFrameRate_Zero gives 0 without a contract report; so does a rate of
    /// 0 ticks per frame, where no frame count exists.
    constexpr std::int64_t ToFrame64(FrameRate const& inFrameRate) const noexcept {
        std::int64_t const ticksPerFrame = inFrameRate.GetTicksPerFrame();
        if (inFrameRate == FrameRate() || ticksPerFrame == 0) return 0;
        return detail::DivideTruncating(mTicks, ticksPerFrame);
    }

    /// ToFrame64 cut to its low 32 bits.
    constexpr std::int32_t ToFrame32(FrameRate const& inFrameRate) const noexcept {
        std::int64_t const low = static_cast<std::int64_t>(static_cast<std::uint32_t>(ToFrame64(inFrameRate)));
        return static_cast<std::int32_t>(low > 0x7FFFFFFF ? low - (std::int64_t{1} << 32) : low);
    }

    /// Adds inFrames times the rate's ticks per frame, wrapping.  No contract:
    /// kFrameRate_Zero takes part with its field like any other rate.
    constexpr void AddFrames(std::int64_t inFrames, FrameRate const& inFrameRate) noexcept {
        mTicks = detail::WrappingAdd(
            mTicks, detail::WrappingMultiply(inFrames, static_cast<std::uint64_t>(inFrameRate.GetTicksPerFrame())));
    }

    /// Moves the time onto the start of its frame, toward zero: a positive time
    /// moves down, a negative one up; a time on a boundary stays.
    /// Contracts: inFrameRate != kFrameRate_Zero, and its ticks per frame != 0.
    void AlignToFrame(FrameRate const& inFrameRate);

    /// Treats this time as a duration that holds inFrameCount frames and sets
    /// outFrameRate to the rate whose frame lasts ticks / count (truncating
    /// signed division; the count's 64 bits are read as signed).  A zero time
    /// gives kFrameRate_Zero whatever the count; so does a count of 0, since
    /// frames of no number make no rate.
    constexpr void CalculateFrameRate(std::uint64_t inFrameCount, FrameRate& outFrameRate) const noexcept {
        std::int64_t const count = detail::ToSigned(inFrameCount);
        outFrameRate = (mTicks == 0 || count == 0) ? FrameRate()
                                                   : FrameRate::Create(detail::DivideTruncating(mTicks, count));
    }

    /// Makes a negative time positive, in place.  The most negative 64-bit
    /// value has no positive counterpart and stays as it is.
    constexpr TickTime& Abs() noexcept {
        if (mTicks < 0) mTicks = detail::WrappingNegate(mTicks);
        return *this;
    }

    // Addition and subtraction, wrapping.
    constexpr TickTime operator+(TickTime const& inRHS) const noexcept {
        return TickTime(detail::WrappingAdd(mTicks, inRHS.mTicks));
    }
    constexpr TickTime operator-(TickTime const& inRHS) const noexcept {
        return TickTime(detail::WrappingSubtract(mTicks, inRHS.mTicks));
    }
    constexpr TickTime& operator+=(TickTime const& inRHS) noexcept {
        mTicks = detail::WrappingAdd(mTicks, inRHS.mTicks);
        return *this;
    }
    constexpr TickTime& operator-=(TickTime const& inRHS) noexcept {
        mTicks = detail::WrappingSubtract(mTicks, inRHS.mTicks);
        return *this;
    }
    constexpr TickTime operator-() const noexcept { return TickTime(detail::WrappingNegate(mTicks)); }

    // Scaling by an integer: the operand widened to 64 bits (with its sign for
    // the signed types, with zeros for the unsigned ones), the product wrapping.
    constexpr TickTime operator*(int inValue) const noexcept { return Scaled(SignExtended(inValue)); }
    constexpr TickTime operator*(long inValue) const noexcept { return Scaled(SignExtended(inValue)); }
    constexpr TickTime operator*(unsigned int inValue) const noexcept { return Scaled(inValue); }
    constexpr TickTime operator*(unsigned long inValue) const noexcept { return Scaled(inValue); }
    constexpr TickTime& operator*=(int inValue) noexcept { return *this = *this * inValue; }
    constexpr TickTime& operator*=(long inValue) noexcept { return *this = *this * inValue; }
    constexpr TickTime& operator*=(unsigned int inValue) noexcept { return *this = *this * inValue; }
    constexpr TickTime& operator*=(unsigned long inValue) noexcept { return *this = *this * inValue; }

    /// Scaling by a double: ticks as double times inValue, truncated toward
    /// zero; a product out of the 64-bit range gives 0x8000000000000000.
    constexpr TickTime operator*(double inValue) const noexcept {
        return TickTime(detail::TruncateToTicks(static_cast<double>(mTicks) * inValue));
    }
    constexpr TickTime& operator*=(double inValue) noexcept { return *this = *this * inValue; }

    /// Division by an integer, truncating toward zero.  Contract: inValue != 0.
    /// The unsigned forms divide the signed time by the non-negative operand,
    /// so a negative time stays negative (-10 ticks / 3u is -3 ticks).
    TickTime& operator/=(int inValue);
    TickTime& operator/=(long inValue);
    TickTime& operator/=(unsigned int inValue);
    TickTime& operator/=(unsigned long inValue);

    /// Division by a double: ticks as double divided by inValue, truncated
    /// toward zero; a quotient out of the 64-bit range (NaN included, and the
    /// infinity of a zero divisor when the error manager returns) gives
    /// 0x8000000000000000.  Contract: inValue != 0.
    TickTime& operator/=(double inValue);

    /// The by-value divisions check the divisor and then apply the compound
    /// form to a copy, which checks again: with an error manager that returns,
    /// a zero divisor is reported twice.
    TickTime operator/(int inValue) const;
    TickTime operator/(long inValue) const;
    TickTime operator/(unsigned int inValue) const;
    TickTime operator/(unsigned long inValue) const;
    TickTime operator/(double inValue) const;

    /// The ratio of two times, both tick counts divided as doubles.
    /// Contract: inRHS is not 0 ticks.
    double operator/(TickTime const& inRHS) const;

    /// Signed comparison of the tick counts.
    constexpr bool operator==(TickTime const& inRHS) const noexcept { return mTicks == inRHS.mTicks; }
    constexpr bool operator!=(TickTime const& inRHS) const noexcept { return mTicks != inRHS.mTicks; }
    constexpr bool operator<(TickTime const& inRHS) const noexcept { return mTicks < inRHS.mTicks; }
    constexpr bool operator<=(TickTime const& inRHS) const noexcept { return mTicks <= inRHS.mTicks; }
    constexpr bool operator>(TickTime const& inRHS) const noexcept { return mTicks > inRHS.mTicks; }
    constexpr bool operator>=(TickTime const& inRHS) const noexcept { return mTicks >= inRHS.mTicks; }

private:
    constexpr explicit TickTime(std::int64_t inTicks) noexcept : mTicks(inTicks) {}

    // The 64-bit pattern of a signed factor, widened with its sign.
    static constexpr std::uint64_t SignExtended(std::int64_t inFactor) noexcept {
        return static_cast<std::uint64_t>(inFactor);
    }
    constexpr TickTime Scaled(std::uint64_t inFactorBits) const noexcept {
        return TickTime(detail::WrappingMultiply(mTicks, inFactorBits));
    }

    std::int64_t mTicks;
};

/// Writes the time in seconds (ticks / kTicksPerSecond as double) with the
/// stream's own formatting of a double: its precision and flags apply.
QRL_EXPORT std::ostream& operator<<(std::ostream& ioStream, TickTime const& inTime);

// The named times, exported by the library and constant-initialised.
QRL_EXPORT extern TickTime const kTickTime_Zero;     ///< 0 ticks
QRL_EXPORT extern TickTime const kTickTime_Max;      ///< 360000 s (100 hours): 91445760000000000 ticks
QRL_EXPORT extern TickTime const kTickTime_Min;      ///< -kTickTime_Max
QRL_EXPORT extern TickTime const kTickTime_Invalid;  ///< -400000 s, below kTickTime_Min: a marker for callers only

}  // namespace time
}  // namespace quorel

#endif
