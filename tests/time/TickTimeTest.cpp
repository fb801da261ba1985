#include <quorel/debug/Debug.h>
#include <quorel/time/TickTime.h>

#include "support/RecordingErrorManager.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <iomanip>
#include <limits>
#include <sstream>

using namespace quorel::time;
using quorel::testing::RecordedError;
using quorel::testing::RecordingErrorManager;
using quorel::testing::ScopedErrorManager;

namespace {

constexpr std::int64_t kMinTicks = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMaxTicks = std::numeric_limits<std::int64_t>::max();

TickTime Ticks(std::int64_t inTicks) { return TickTime::TicksToTickTime(inTicks); }

class TimeContracts : public ::testing::Test {
protected:
    void SetUp() override { quorel::debug::DisableContractDialog(); }
};

}  // namespace

TEST(FrameRate, NamedRatesHoldTheirTicksAndOrderBySpeed) {
    struct Row { FrameRate const* mRate; std::int64_t mTicks; double mPerSecond; };
    Row const rows[] = {
        {&kFrameRate_Zero, kMaxTicks, 0.0},                    {&kFrameRate_Video10, 25401600000, 10},
        {&kFrameRate_Video12, 21168000000, 12},                {&kFrameRate_Video12_5, 20321280000, 12.5},
        {&kFrameRate_Video15, 16934400000, 15},                {&kFrameRate_23976, 10594584000, 24000 / 1001.0},
        {&kFrameRate_Film24, 10584000000, 24},                 {&kFrameRate_VideoPAL, 10160640000, 25},
        {&kFrameRate_VideoNTSC, 8475667200, 30000 / 1001.0},   {&kFrameRate_Video30, 8467200000, 30},
        {&kFrameRate_VideoPAL_HD, 5080320000, 50},             {&kFrameRate_VideoNTSC_HD, 4237833600, 60000 / 1001.0},
        {&kFrameRate_Video60, 4233600000, 60},                 {&kFrameRate_Video100, 2540160000, 100},
        {&kFrameRate_Video1000, 254016000, 1000},              {&kFrameRate_Audio8000, 31752000, 8000},
        {&kFrameRate_Audio11025, 23040000, 11025},             {&kFrameRate_Audio22050, 11520000, 22050},
        {&kFrameRate_Audio32000, 7938000, 32000},              {&kFrameRate_Audio44100, 5760000, 44100},
        {&kFrameRate_Audio48000, 5292000, 48000},              {&kFrameRate_Audio88200, 2880000, 88200},
        {&kFrameRate_Audio96000, 2646000, 96000},              {&kFrameRate_Audio192000, 1323000, 192000},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(rows[i].mRate->GetTicksPerFrame(), rows[i].mTicks) << i;
        EXPECT_DOUBLE_EQ(rows[i].mRate->GetValue(), rows[i].mPerSecond) << i;
        if (i > 0) {  // the table runs from the slowest rate to the fastest
            EXPECT_TRUE(*rows[i - 1].mRate < *rows[i].mRate) << i;
            EXPECT_TRUE(*rows[i].mRate >= *rows[i - 1].mRate) << i;
            EXPECT_FALSE(*rows[i - 1].mRate > *rows[i].mRate) << i;
        }
    }
    EXPECT_EQ(kFrameRate_VideoNTSC.GetValue(), 29.97002997002997);
}

TEST(FrameRate, ConstructionFromDoubles) {
    EXPECT_EQ(FrameRate(), kFrameRate_Zero);
    EXPECT_EQ(FrameRate(0.0), kFrameRate_Zero);
    EXPECT_EQ(FrameRate(0.0).GetValue(), 0.0);
    EXPECT_EQ(FrameRate(25.0), kFrameRate_VideoPAL);
    EXPECT_EQ(FrameRate(48000.0), kFrameRate_Audio48000);
    EXPECT_EQ(FrameRate(-25.0).GetTicksPerFrame(), -10160640000);
    EXPECT_EQ(FrameRate(1e-30).GetTicksPerFrame(), kMinTicks);
    EXPECT_EQ(FrameRate(std::nan("")).GetTicksPerFrame(), kMinTicks);
    EXPECT_EQ(FrameRate(std::numeric_limits<double>::infinity()).GetTicksPerFrame(), 0);
}

TEST(TickTime, ConversionsFromSecondsAndFrames) {
    EXPECT_EQ(TickTime(0.0), kTickTime_Zero);
    EXPECT_EQ(TickTime(1.5).GetTicks(), 381024000000);
    EXPECT_EQ(TickTime(-0.5).GetTicks(), -127008000000);
    EXPECT_EQ(TickTime(360000.0), kTickTime_Max);
    EXPECT_EQ(kTickTime_Min.GetTicks(), -91445760000000000);
    EXPECT_EQ(kTickTime_Invalid.GetTicks(), -101606400000000000);
    EXPECT_EQ(TickTime(1e300).GetTicks(), kMinTicks);
    EXPECT_EQ(TickTime(std::nan("")).GetTicks(), kMinTicks);

    TickTime const three(3, kFrameRate_VideoPAL);
    EXPECT_EQ(three.GetTicks(), 30481920000);
    EXPECT_EQ(three.ToFrame64(kFrameRate_VideoPAL), 3);
}

TEST(TickTime, FrameNumbersTruncateTowardZero) {
    std::int64_t const frame = kFrameRate_VideoPAL.GetTicksPerFrame();
    EXPECT_EQ(Ticks(5 * frame - 1).ToFrame64(kFrameRate_VideoPAL), 4);
    EXPECT_EQ(Ticks(-1).ToFrame64(kFrameRate_VideoPAL), 0);
    EXPECT_EQ(Ticks(-frame).ToFrame64(kFrameRate_VideoPAL), -1);
    EXPECT_EQ(Ticks(-frame - 1).ToFrame64(kFrameRate_VideoPAL), -1);
    EXPECT_EQ(Ticks(kMinTicks).ToFrame64(FrameRate::Create(-1)), kMinTicks);
    EXPECT_EQ(Ticks(123).ToFrame64(FrameRate::Create(0)), 0);

    // ToFrame32 keeps the low 32 bits of the frame number.
    EXPECT_EQ(Ticks((std::int64_t{1} << 32) + 5).ToFrame32(FrameRate::Create(1)), 5);
    EXPECT_EQ(Ticks(0x80000000LL).ToFrame32(FrameRate::Create(1)), std::numeric_limits<std::int32_t>::min());

    TickTime t = Ticks(frame * 3 / 2);
    t.AlignToFrame(kFrameRate_VideoPAL);
    EXPECT_EQ(t.GetTicks(), frame);
    t = Ticks(-frame * 3 / 2);
    t.AlignToFrame(kFrameRate_VideoPAL);
    EXPECT_EQ(t.GetTicks(), -frame);
    t = Ticks(-2 * frame);
    t.AlignToFrame(kFrameRate_VideoPAL);
    EXPECT_EQ(t.GetTicks(), -2 * frame);

    t = Ticks(10);
    t.AddFrames(-2, kFrameRate_Audio48000);
    EXPECT_EQ(t.GetTicks(), 10 - 2 * 5292000);
}

TEST(TickTime, ArithmeticWrapsAndTruncates) {
    EXPECT_TRUE(kTickTime_Invalid < kTickTime_Min);
    EXPECT_NE(kTickTime_Invalid + TickTime(1.0), kTickTime_Invalid);
    EXPECT_EQ(kTickTime_Max + kTickTime_Max - kTickTime_Max, kTickTime_Max);  // no clamping
    EXPECT_EQ((Ticks(kMaxTicks) + Ticks(1)).GetTicks(), kMinTicks);
    EXPECT_EQ((Ticks(kMinTicks) - Ticks(1)).GetTicks(), kMaxTicks);
    EXPECT_EQ((-Ticks(kMinTicks)).GetTicks(), kMinTicks);
    EXPECT_EQ(Ticks(-5).Abs().GetTicks(), 5);
    EXPECT_EQ(Ticks(kMinTicks).Abs().GetTicks(), kMinTicks);

    EXPECT_EQ((Ticks(7) * -2).GetTicks(), -14);
    EXPECT_EQ((Ticks(2) * 0xFFFFFFFFu).GetTicks(), 0x1FFFFFFFELL);  // widened with zeros
    EXPECT_EQ((Ticks(kMaxTicks) * 2).GetTicks(), -2);
    EXPECT_EQ((Ticks(3) * 0xFFFFFFFFFFFFFFFFul).GetTicks(), -3);
    EXPECT_EQ((Ticks(10) * 0.25).GetTicks(), 2);
    EXPECT_EQ((Ticks(-10) * 0.25).GetTicks(), -2);
    EXPECT_EQ((Ticks(kMaxTicks) * 2.0).GetTicks(), kMinTicks);
    EXPECT_EQ((Ticks(1) * 0x1p63).GetTicks(), kMinTicks);  // 2^63 itself does not fit
    EXPECT_EQ((Ticks(1) * 9223372036854774784.0).GetTicks(), 9223372036854774784);  // the largest double that does

    EXPECT_EQ((Ticks(-10) / 3u).GetTicks(), -3);
    EXPECT_EQ((Ticks(-10) / 3ul).GetTicks(), -3);
    EXPECT_EQ((Ticks(-10) / -3).GetTicks(), 3);
    EXPECT_EQ((Ticks(kMinTicks) / -1).GetTicks(), kMinTicks);
    EXPECT_EQ((Ticks(kMinTicks) / -1L).GetTicks(), kMinTicks);
    EXPECT_EQ((Ticks(kMaxTicks) / 0xFFFFFFFFFFFFFFFFul).GetTicks(), 0);
    EXPECT_EQ((Ticks(kMinTicks) / 0x8000000000000000ul).GetTicks(), -1);
    EXPECT_EQ((Ticks(-7) / 2.0).GetTicks(), -3);
    EXPECT_EQ((Ticks(1) / 1e-300).GetTicks(), kMinTicks);
    EXPECT_EQ(TickTime(3.0) / TickTime(-2.0), -1.5);

    TickTime t = Ticks(100);
    t *= 3;
    t /= 7u;
    t -= Ticks(2);
    t += Ticks(1);
    t *= 0.5;
    EXPECT_EQ(t.GetTicks(), 20);  // ((300 / 7) - 1) * 0.5
}

TEST(TickTime, CalculateFrameRateSplitsADuration) {
    FrameRate rate;
    TickTime(1.0).CalculateFrameRate(25, rate);
    EXPECT_EQ(rate, kFrameRate_VideoPAL);
    kTickTime_Zero.CalculateFrameRate(25, rate);
    EXPECT_EQ(rate, kFrameRate_Zero);
    rate = kFrameRate_Film24;
    kTickTime_Zero.CalculateFrameRate(0, rate);
    EXPECT_EQ(rate, kFrameRate_Zero);
    TickTime(1.0).CalculateFrameRate(0, rate);
    EXPECT_EQ(rate, kFrameRate_Zero);
    Ticks(-10).CalculateFrameRate(3, rate);
    EXPECT_EQ(rate.GetTicksPerFrame(), -3);
    Ticks(10).CalculateFrameRate(~std::uint64_t{0}, rate);  // the count's bits read as -1
    EXPECT_EQ(rate.GetTicksPerFrame(), -10);
}

TEST(TickTime, StreamsAsSecondsWithTheStreamsFormatting) {
    std::ostringstream out;
    out << TickTime(1.0) << ' ' << TickTime(1.5) << ' ' << TickTime(-0.25) << ' '
        << std::fixed << std::setprecision(2) << TickTime(2.0);
    EXPECT_EQ(out.str(), "1 1.5 -0.25 2.00");
}

TEST_F(TimeContracts, ThrowingManagerLeavesTheValueUnchanged) {
    ScopedErrorManager manager(RecordingErrorManager::kThrow);
    TickTime t = Ticks(-12345);
    std::function<void()> const failures[] = {
        [&] { t = TickTime(4, kFrameRate_Zero); },
        [&] { t.AlignToFrame(kFrameRate_Zero); },
        [&] { t.AlignToFrame(FrameRate::Create(0)); },
        [&] { t /= 0; },  [&] { t /= 0L; },  [&] { t /= 0u; },  [&] { t /= 0ul; },  [&] { t /= 0.0; },
        [&] { t = t / 0; }, [&] { t = t / 0L; }, [&] { t = t / 0u; }, [&] { t = t / 0ul; }, [&] { t = t / 0.0; },
        [&] { t = Ticks(t / kTickTime_Zero); },
    };
    for (std::size_t i = 0; i < std::size(failures); ++i) {
        manager->mCalls.clear();
        EXPECT_THROW(failures[i](), RecordedError) << i;
        EXPECT_EQ(t.GetTicks(), -12345) << i;
        ASSERT_EQ(manager->mCalls.size(), 1u) << i;
        EXPECT_EQ(manager->mCalls[0].mLevel, quorel::config::kErrorLevel_Fatal) << i;
        EXPECT_EQ(manager->mCalls[0].mModuleID, 105u) << i;
        EXPECT_EQ(manager->mCalls[0].mErrorNumber, 25) << i;
    }
}

TEST_F(TimeContracts, ReturningManagerNeverLetsAnIntegerDivideByZero) {
    ScopedErrorManager manager(RecordingErrorManager::kReturn);
    TickTime t = Ticks(-12345);
    t /= 0;
    t /= 0ul;
    t.AlignToFrame(FrameRate::Create(0));
    EXPECT_EQ(t.GetTicks(), -12345);
    EXPECT_EQ(manager->mCalls.size(), 3u);

    manager->mCalls.clear();
    EXPECT_EQ((t / 0u).GetTicks(), -12345);
    EXPECT_EQ(manager->mCalls.size(), 2u);  // the by-value form and the compound form it applies
    EXPECT_EQ((t / 0.0).GetTicks(), kMinTicks);
    EXPECT_EQ(TickTime(2, kFrameRate_Zero).GetTicks(), -2);  // goes on behind the check, wrapping

    manager->mCalls.clear();
    EXPECT_EQ(t.ToFrame64(kFrameRate_Zero), 0);
    EXPECT_EQ(t.ToFrame32(kFrameRate_Zero), 0);
    t.AddFrames(1, kFrameRate_Zero);
    EXPECT_EQ(t.GetTicks(), -12345 + kMaxTicks);
    EXPECT_EQ((t / std::nan("")).GetTicks(), kMinTicks);  // NaN is not zero
    EXPECT_TRUE(manager->mCalls.empty());
}
