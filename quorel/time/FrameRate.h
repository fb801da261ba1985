// Frame rates of the media clock.
//
// Media time is counted in ticks, 254016000000 to the second.  That number is
// divisible by every common film, video and audio rate, the 1001-based NTSC
// rates included, so a frame rate is stored as the whole number of ticks one
// frame lasts and conversions between frames and time stay exact integers.
#ifndef QUOREL_TIME_FRAMERATE_H
#define QUOREL_TIME_FRAMERATE_H

#include <quorel/utility/Export.h>

#include <cstdint>
#include <limits>

namespace quorel {
namespace time {

/// Ticks in one second (0x3B24889000).
inline constexpr std::int64_t kTicksPerSecond = 254016000000;

namespace detail {

inline constexpr std::int64_t kMinInt64 = std::numeric_limits<std::int64_t>::min();
inline constexpr std::int64_t kMaxInt64 = std::numeric_limits<std::int64_t>::max();

/// The two's-complement reading of a 64-bit pattern, without relying on the
/// implementation-defined unsigned-to-signed conversion.
constexpr std::int64_t ToSigned(std::uint64_t inBits) noexcept {
    return inBits <= static_cast<std::uint64_t>(kMaxInt64)
               ? static_cast<std::int64_t>(inBits)
               : static_cast<std::int64_t>(inBits - static_cast<std::uint64_t>(kMinInt64)) + kMinInt64;
}

// Wrapping 64-bit arithmetic: done on the unsigned patterns, where overflow is
// defined, then read back as signed.
constexpr std::int64_t WrappingAdd(std::int64_t inA, std::int64_t inB) noexcept {
    return ToSigned(static_cast<std::uint64_t>(inA) + static_cast<std::uint64_t>(inB));
}
constexpr std::int64_t WrappingSubtract(std::int64_t inA, std::int64_t inB) noexcept {
    return ToSigned(static_cast<std::uint64_t>(inA) - static_cast<std::uint64_t>(inB));
}
constexpr std::int64_t WrappingMultiply(std::int64_t inA, std::uint64_t inB) noexcept {
    return ToSigned(static_cast<std::uint64_t>(inA) * inB);
}
constexpr std::int64_t WrappingNegate(std::int64_t inA) noexcept {
    return ToSigned(std::uint64_t{0} - static_cast<std::uint64_t>(inA));
}

/// Signed division truncating toward zero.  inDivisor must not be 0.  The one
/// quotient that does not fit, the most negative value divided by -1, wraps
/// back to the most negative value instead of trapping.
constexpr std::int64_t DivideTruncating(std::int64_t inDividend, std::int64_t inDivisor) noexcept {
    return inDivisor == -1 ? WrappingNegate(inDividend) : inDividend / inDivisor;
}

/// A double truncated toward zero, or the most negative 64-bit value when the
/// truncated number does not fit in 64 bits (NaN and infinities included).
constexpr std::int64_t TruncateToTicks(double inValue) noexcept {
    // -2^63 and 2^63 are exact doubles; every double in between truncates to a
    // representable value.  NaN fails both comparisons.
    return (inValue >= -0x1p63 && inValue < 0x1p63) ? static_cast<std::int64_t>(inValue) : kMinInt64;
}

}  // namespace detail

/// A frame rate, held as the duration of one frame in ticks.
///
/// The absence of a rate (kFrameRate_Zero, also the default) is the largest
/// representable duration, a frame that never ends, not 0 ticks per frame.
/// A rate of 0 ticks per frame can still be made with Create(0); it has no
/// name, and operations that would divide by it guard against it.
///
/// Rates order by speed: a < b when a frame of a lasts longer than a frame of
/// b, which is the reverse of the order of GetTicksPerFrame().  One 64-bit
/// word; copies are member-wise.
class QRL_EXPORT FrameRate {
public:
    /// The value of kFrameRate_Zero.
    constexpr FrameRate() noexcept : mTicksPerFrame(detail::kMaxInt64) {}

    /// A rate of inFramesPerSecond frames per second.  0.0 gives kFrameRate_Zero;
    /// any other value gives kTicksPerSecond / inFramesPerSecond, divided in
    /// double and truncated toward zero.  Negative rates are accepted.  A
    /// quotient that does not fit in 64 bits, or NaN, gives 0x8000000000000000
    /// ticks per frame.
    constexpr explicit FrameRate(double inFramesPerSecond) noexcept
        : mTicksPerFrame(inFramesPerSecond == 0.0
                             ? detail::kMaxInt64
                             : detail::TruncateToTicks(static_cast<double>(kTicksPerSecond) / inFramesPerSecond)) {}

    /// A rate whose frame lasts exactly inTicksPerFrame ticks; no check.
    static constexpr FrameRate Create(std::int64_t inTicksPerFrame) noexcept {
        FrameRate rate;
        rate.mTicksPerFrame = inTicksPerFrame;
        return rate;
    }

    /// The duration of one frame in ticks.
    constexpr std::int64_t GetTicksPerFrame() const noexcept { return mTicksPerFrame; }

    /// Frames per second: 0.0 for kFrameRate_Zero, otherwise
    /// kTicksPerSecond / GetTicksPerFrame() in double (an infinity for a rate
    /// of 0 ticks per frame).
    constexpr double GetValue() const noexcept {
        if (mTicksPerFrame == detail::kMaxInt64) return 0.0;
        if (mTicksPerFrame == 0) return std::numeric_limits<double>::infinity();
        return static_cast<double>(kTicksPerSecond) / static_cast<double>(mTicksPerFrame);
    }

    /// Equality of the frame durations.
    constexpr bool operator==(FrameRate const& inRHS) const noexcept { return mTicksPerFrame == inRHS.mTicksPerFrame; }
    constexpr bool operator!=(FrameRate const& inRHS) const noexcept { return mTicksPerFrame != inRHS.mTicksPerFrame; }

    /// Order of the rates: a faster rate (shorter frame) is the greater one.
    constexpr bool operator<(FrameRate const& inRHS) const noexcept { return mTicksPerFrame > inRHS.mTicksPerFrame; }
    constexpr bool operator<=(FrameRate const& inRHS) const noexcept { return mTicksPerFrame >= inRHS.mTicksPerFrame; }
    constexpr bool operator>(FrameRate const& inRHS) const noexcept { return mTicksPerFrame < inRHS.mTicksPerFrame; }
    constexpr bool operator>=(FrameRate const& inRHS) const noexcept { return mTicksPerFrame <= inRHS.mTicksPerFrame; }

private:
    std::int64_t mTicksPerFrame;
};

// The named rates, exported by the library and constant-initialised: they hold
// their values before any code of a host runs, its static initialisers included.
// The comment gives frames per second and ticks per frame.
QRL_EXPORT extern FrameRate const kFrameRate_Zero;          ///< no rate; 0x7FFFFFFFFFFFFFFF
QRL_EXPORT extern FrameRate const kFrameRate_Video10;       ///< 10; 25401600000
QRL_EXPORT extern FrameRate const kFrameRate_Video12;       ///< 12; 21168000000
QRL_EXPORT extern FrameRate const kFrameRate_Video12_5;     ///< 12.5; 20321280000
QRL_EXPORT extern FrameRate const kFrameRate_Video15;       ///< 15; 16934400000
QRL_EXPORT extern FrameRate const kFrameRate_23976;         ///< 24000/1001; 10594584000
QRL_EXPORT extern FrameRate const kFrameRate_Film24;        ///< 24; 10584000000
QRL_EXPORT extern FrameRate const kFrameRate_VideoPAL;      ///< 25; 10160640000
QRL_EXPORT extern FrameRate const kFrameRate_VideoNTSC;     ///< 30000/1001; 8475667200
QRL_EXPORT extern FrameRate const kFrameRate_Video30;       ///< 30; 8467200000
QRL_EXPORT extern FrameRate const kFrameRate_VideoPAL_HD;   ///< 50; 5080320000
QRL_EXPORT extern FrameRate const kFrameRate_VideoNTSC_HD;  ///< 60000/1001; 4237833600
QRL_EXPORT extern FrameRate const kFrameRate_Video60;       ///< 60; 4233600000
QRL_EXPORT extern FrameRate const kFrameRate_Video100;      ///< 100; 2540160000
QRL_EXPORT extern FrameRate const kFrameRate_Video1000;     ///< 1000; 254016000
QRL_EXPORT extern FrameRate const kFrameRate_Audio8000;     ///< 8000; 31752000
QRL_EXPORT extern FrameRate const kFrameRate_Audio11025;    ///< 11025; 23040000
QRL_EXPORT extern FrameRate const kFrameRate_Audio22050;    ///< 22050; 11520000
QRL_EXPORT extern FrameRate const kFrameRate_Audio32000;    ///< 32000; 7938000
QRL_EXPORT extern FrameRate const kFrameRate_Audio44100;    ///< 44100; 5760000
QRL_EXPORT extern FrameRate const kFrameRate_Audio48000;    ///< 48000; 5292000
QRL_EXPORT extern FrameRate const kFrameRate_Audio88200;    ///< 88200; 2880000
QRL_EXPORT extern FrameRate const kFrameRate_Audio96000;    ///< 96000; 2646000
QRL_EXPORT extern FrameRate const kFrameRate_Audio192000;   ///< 192000; 1323000

}  // namespace time
}  // namespace quorel

#endif
