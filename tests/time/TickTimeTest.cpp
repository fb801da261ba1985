#include <quorel/debug/Debug.h>
#include <quorel/time/TickTime.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <iomanip>
#include <limits>
#include <sstream>

using namespace quorel::time;
using namespace quorel::testing;

namespace {

constexpr std::int64_t kMinTicks = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMaxTicks = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kPAL = 10160640000;  // ticks per frame at 25 fps
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TickTime Ticks(std::int64_t inTicks) { return TickTime::TicksToTickTime(inTicks); }

// The ticks of inTicks after inChange, e.g. an alignment or a compound operator.
std::int64_t After(std::int64_t inTicks, std::function<void(TickTime&)> const& inChange) {
    TickTime time = Ticks(inTicks);
    inChange(time);
    return time.GetTicks();
}

// Pairs of a computed number (ticks, frames, a count) and the number it must be.
void ExpectAll(std::initializer_list<std::pair<std::int64_t, std::int64_t>> inCases) {
    for (auto c = inCases.begin(); c != inCases.end(); ++c) EXPECT_EQ(c->first, c->second) << c - inCases.begin();
}

}  // namespace

TEST(FrameRate, NamedRatesHoldTheirTicksAndOrderBySpeed) {
    // From the slowest rate to the fastest.
    std::pair<FrameRate, std::int64_t> const rows[] = {
        {kFrameRate_Zero, kMaxTicks}, {kFrameRate_Video10, 25401600000}, {kFrameRate_Video12, 21168000000},
        {kFrameRate_Video12_5, 20321280000}, {kFrameRate_Video15, 16934400000}, {kFrameRate_23976, 10594584000},
        {kFrameRate_Film24, 10584000000}, {kFrameRate_VideoPAL, kPAL}, {kFrameRate_VideoNTSC, 8475667200},
        {kFrameRate_Video30, 8467200000}, {kFrameRate_VideoPAL_HD, 5080320000}, {kFrameRate_VideoNTSC_HD, 4237833600},
        {kFrameRate_Video60, 4233600000}, {kFrameRate_Video100, 2540160000}, {kFrameRate_Video1000, 254016000},
        {kFrameRate_Audio8000, 31752000}, {kFrameRate_Audio11025, 23040000}, {kFrameRate_Audio22050, 11520000},
        {kFrameRate_Audio32000, 7938000}, {kFrameRate_Audio44100, 5760000}, {kFrameRate_Audio48000, 5292000},
        {kFrameRate_Audio88200, 2880000}, {kFrameRate_Audio96000, 2646000}, {kFrameRate_Audio192000, 1323000},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        FrameRate const &rate = rows[i].first, &slower = rows[i > 0 ? i - 1 : 0].first;
        EXPECT_EQ(rate.GetTicksPerFrame(), rows[i].second) << i;
        EXPECT_TRUE(i == 0 || (slower < rate && rate > slower && !(rate <= slower) && !(slower >= rate))) << i;
    }
    // 23.976: 24000/1001 is the same rational as the tick quotient, so the same double.
    ExpectAll({{kFrameRate_Zero.GetValue() == 0.0, true}, {kFrameRate_VideoNTSC.GetValue() == 29.97002997002997, true},
               {kFrameRate_23976.GetValue() == 24000 / 1001.0, true}, {FrameRate() == kFrameRate_Zero, true},
               {FrameRate(0.0) == kFrameRate_Zero, true}, {FrameRate(25.0).GetTicksPerFrame(), kPAL},
               {FrameRate(-25.0).GetTicksPerFrame(), -kPAL}, {FrameRate(1e-30).GetTicksPerFrame(), kMinTicks},
               {FrameRate(kNaN).GetTicksPerFrame(), kMinTicks}, {FrameRate(1e300 * 1e300).GetTicksPerFrame(), 0}});
}

TEST(TickTime, ConversionsAndArithmetic) {
    auto const align = [](TickTime& t) { t.AlignToFrame(kFrameRate_VideoPAL); };
    // The ticks per frame that CalculateFrameRate gives (the output starts as another rate).
    auto const rateOf = [](TickTime inDuration, std::uint64_t inCount) {
        FrameRate rate = kFrameRate_Film24;
        return inDuration.CalculateFrameRate(inCount, rate), rate.GetTicksPerFrame();
    };
    ExpectAll({
        {TickTime(0.0).GetTicks(), 0}, {TickTime(1.5).GetTicks(), 381024000000}, {TickTime(kNaN).GetTicks(), kMinTicks},
        {TickTime(-0.5).GetTicks(), -127008000000}, {TickTime(360000.0).GetTicks(), kTickTime_Max.GetTicks()},
        {kTickTime_Min.GetTicks(), -91445760000000000}, {kTickTime_Invalid.GetTicks(), -101606400000000000},
        {TickTime(1e300).GetTicks(), kMinTicks}, {TickTime(3, kFrameRate_VideoPAL).GetTicks(), 3 * kPAL},
        // Frame numbers truncate toward zero: (-1 frame, +1 frame) is all frame 0.
        {Ticks(5 * kPAL - 1).ToFrame64(kFrameRate_VideoPAL), 4}, {Ticks(-1).ToFrame64(kFrameRate_VideoPAL), 0},
        {Ticks(-kPAL).ToFrame64(kFrameRate_VideoPAL), -1}, {Ticks(-kPAL - 1).ToFrame64(kFrameRate_VideoPAL), -1},
        {Ticks(kMinTicks).ToFrame64(FrameRate::Create(-1)), kMinTicks}, {Ticks(123).ToFrame64(FrameRate::Create(0)), 0},
        // ToFrame32 keeps the low 32 bits.
        {Ticks((std::int64_t{1} << 32) + 5).ToFrame32(FrameRate::Create(1)), 5},
        {Ticks(0x80000000LL).ToFrame32(FrameRate::Create(1)), std::numeric_limits<std::int32_t>::min()},
        // Aligning moves toward zero; a boundary stays.
        {After(kPAL * 3 / 2, align), kPAL}, {After(-kPAL * 3 / 2, align), -kPAL}, {After(-2 * kPAL, align), -2 * kPAL},
        {After(10, [](TickTime& t) { t.AddFrames(-2, kFrameRate_Audio48000); }), 10 - 2 * 5292000},
        // CalculateFrameRate: a zero duration or count gives no rate; the count's bits are read as signed.
        {rateOf(TickTime(1.0), 25), kPAL}, {rateOf(kTickTime_Zero, 25), kMaxTicks}, {rateOf(Ticks(-10), 3), -3},
        {rateOf(kTickTime_Zero, 0), kMaxTicks}, {rateOf(TickTime(1.0), 0), kMaxTicks}, {rateOf(Ticks(10), ~0ull), -10},
        // Integer arithmetic wraps and never clamps; kTickTime_Invalid is an ordinary number.
        {kTickTime_Invalid < kTickTime_Min, true}, {kTickTime_Max + kTickTime_Max - kTickTime_Max == kTickTime_Max, 1},
        {After(100, [](TickTime& t) { t *= 3; t /= 7u; t -= Ticks(2); t += Ticks(1); t *= 0.5; }), 20},
        {(Ticks(kMaxTicks) + Ticks(1)).GetTicks(), kMinTicks}, {(Ticks(kMinTicks) - Ticks(1)).GetTicks(), kMaxTicks},
        {(-Ticks(kMinTicks)).GetTicks(), kMinTicks}, {Ticks(-5).Abs().GetTicks(), 5}, {(Ticks(7) * -2).GetTicks(), -14},
        {Ticks(kMinTicks).Abs().GetTicks(), kMinTicks}, {(Ticks(kMaxTicks) * 2).GetTicks(), -2},
        {(Ticks(2) * 0xFFFFFFFFu).GetTicks(), 0x1FFFFFFFELL}, {(Ticks(3) * 0xFFFFFFFFFFFFFFFFul).GetTicks(), -3},
        // Doubles truncate toward zero; out of range is the most negative value.
        {(Ticks(-10) * 0.25).GetTicks(), -2}, {(Ticks(-7) / 2.0).GetTicks(), -3},
        {(Ticks(kMaxTicks) * 2.0).GetTicks(), kMinTicks}, {(Ticks(1) * 0x1p63).GetTicks(), kMinTicks},
        {(Ticks(1) * 9223372036854774784.0).GetTicks(), 9223372036854774784},  // the largest double that fits
        {(Ticks(1) / 1e-300).GetTicks(), kMinTicks}, {TickTime(3.0) / TickTime(-2.0) == -1.5, true},
        // Integer division truncates toward zero; unsigned divisors keep the sign of the time.
        {(Ticks(-10) / 3u).GetTicks(), -3}, {(Ticks(-10) / 3ul).GetTicks(), -3}, {(Ticks(-10) / -3).GetTicks(), 3},
        {(Ticks(kMinTicks) / -1).GetTicks(), kMinTicks}, {(Ticks(kMinTicks) / -1L).GetTicks(), kMinTicks},
        {(Ticks(kMaxTicks) / 0xFFFFFFFFFFFFFFFFul).GetTicks(), 0},
        {(Ticks(kMinTicks) / 0x8000000000000000ul).GetTicks(), -1},
    });
    std::ostringstream out;  // seconds, with the stream's own formatting
    out << TickTime(1.0) << ' ' << TickTime(-0.25) << ' ' << std::fixed << std::setprecision(2) << TickTime(1.5);
    EXPECT_EQ(out.str(), "1 -0.25 1.50");
}

TEST(TickTime, ContractsAreCheckedBeforeAnyChange) {
    quorel::debug::DisableContractDialog();
    // A throwing manager leaves the value as it was.
    ScopedErrorManager manager(RecordingErrorManager::kThrow);
    TickTime t = Ticks(-12345);
    std::function<void()> const failures[] = {
        [&] { t = TickTime(4, kFrameRate_Zero); }, [&] { t.AlignToFrame(kFrameRate_Zero); },
        [&] { t.AlignToFrame(FrameRate::Create(0)); }, [&] { t = Ticks(t / kTickTime_Zero); },
        [&] { t /= 0; }, [&] { t /= 0L; }, [&] { t /= 0u; }, [&] { t /= 0ul; }, [&] { t /= 0.0; },
        [&] { t = t / 0; }, [&] { t = t / 0L; }, [&] { t = t / 0u; }, [&] { t = t / 0ul; }, [&] { t = t / 0.0; },
    };
    for (std::size_t i = 0; i < std::size(failures); ++i) {
        EXPECT_THROW(failures[i](), RecordedError) << i;
        ASSERT_EQ(manager->mCalls.size(), i + 1) << "one report each";
        RecordedCall const& c = manager->mCalls.back();
        EXPECT_TRUE(c.mLevel == quorel::config::kErrorLevel_Fatal && c.mModuleID == 105u && c.mErrorNumber == 25) << i;
        EXPECT_EQ(t.GetTicks(), -12345) << i;
    }
    // A returning manager: integer divisions and alignments by zero leave the value alone, the rest goes on.
    manager->mReaction = RecordingErrorManager::kReturn;
    manager->mCalls.clear();
    ExpectAll({
        // No contract: frame numbers of no rate, adding its frames, dividing by NaN.
        {Ticks(-5).ToFrame64(kFrameRate_Zero), 0}, {Ticks(-5).ToFrame32(kFrameRate_Zero), 0},
        {After(-5, [](TickTime& t) { t.AddFrames(1, kFrameRate_Zero); }), kMaxTicks - 5},
        {(Ticks(-5) / kNaN).GetTicks(), kMinTicks}, {manager->mCalls.size(), 0},
        {After(-12345, [](TickTime& t) { t /= 0; t /= 0ul; t.AlignToFrame(FrameRate::Create(0)); }), -12345},
        {(Ticks(-12345) / 0u).GetTicks(), -12345},  // reported twice: the by-value form and the compound one
        {(Ticks(-12345) / 0.0).GetTicks(), kMinTicks}, {TickTime(2, kFrameRate_Zero).GetTicks(), -2},  // wraps
        {manager->mCalls.size(), 8},
    });
}
