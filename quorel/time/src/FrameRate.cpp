// The named frame rates.
//
// Each is a constant expression, so the compiler places it in read-only data
// with its final value: no static initialiser runs, and a host's own static
// objects may copy these rates whatever their initialisation order.
#include <quorel/time/FrameRate.h>

namespace quorel {
namespace time {

constexpr FrameRate kFrameRate_Zero;
constexpr FrameRate kFrameRate_Video10 = FrameRate::Create(25401600000);
constexpr FrameRate kFrameRate_Video12 = FrameRate::Create(21168000000);
constexpr FrameRate kFrameRate_Video12_5 = FrameRate::Create(20321280000);
constexpr FrameRate kFrameRate_Video15 = FrameRate::Create(16934400000);
constexpr FrameRate kFrameRate_23976 = FrameRate::Create(10594584000);
constexpr FrameRate kFrameRate_Film24 = FrameRate::Create(10584000000);
constexpr FrameRate kFrameRate_VideoPAL = FrameRate::Create(10160640000);
constexpr FrameRate kFrameRate_VideoNTSC = FrameRate::Create(8475667200);
constexpr FrameRate kFrameRate_Video30 = FrameRate::Create(8467200000);
constexpr FrameRate kFrameRate_VideoPAL_HD = FrameRate::Create(5080320000);
constexpr FrameRate kFrameRate_VideoNTSC_HD = FrameRate::Create(4237833600);
constexpr FrameRate kFrameRate_Video60 = FrameRate::Create(4233600000);
constexpr FrameRate kFrameRate_Video100 = FrameRate::Create(2540160000);
constexpr FrameRate kFrameRate_Video1000 = FrameRate::Create(254016000);
constexpr FrameRate kFrameRate_Audio8000 = FrameRate::Create(31752000);
constexpr FrameRate kFrameRate_Audio11025 = FrameRate::Create(23040000);
constexpr FrameRate kFrameRate_Audio22050 = FrameRate::Create(11520000);
constexpr FrameRate kFrameRate_Audio32000 = FrameRate::Create(7938000);
constexpr FrameRate kFrameRate_Audio44100 = FrameRate::Create(5760000);
constexpr FrameRate kFrameRate_Audio48000 = FrameRate::Create(5292000);
constexpr FrameRate kFrameRate_Audio88200 = FrameRate::Create(2880000);
constexpr FrameRate kFrameRate_Audio96000 = FrameRate::Create(2646000);
constexpr FrameRate kFrameRate_Audio192000 = FrameRate::Create(1323000);

// Every named rate is an exact whole number of ticks per frame: the table
// above must agree with the rate it names.
namespace {
constexpr bool Exact(FrameRate inRate, std::int64_t inFrames, std::int64_t inSeconds) {
    return inRate.GetTicksPerFrame() * inFrames == kTicksPerSecond * inSeconds;
}
}  // namespace

static_assert(Exact(kFrameRate_Video10, 10, 1) && Exact(kFrameRate_Video12, 12, 1) &&
              Exact(kFrameRate_Video12_5, 25, 2) && Exact(kFrameRate_Video15, 15, 1));
static_assert(Exact(kFrameRate_23976, 24000, 1001) && Exact(kFrameRate_Film24, 24, 1) &&
              Exact(kFrameRate_VideoPAL, 25, 1) && Exact(kFrameRate_VideoNTSC, 30000, 1001) &&
              Exact(kFrameRate_Video30, 30, 1));
static_assert(Exact(kFrameRate_VideoPAL_HD, 50, 1) && Exact(kFrameRate_VideoNTSC_HD, 60000, 1001) &&
              Exact(kFrameRate_Video60, 60, 1) && Exact(kFrameRate_Video100, 100, 1) &&
              Exact(kFrameRate_Video1000, 1000, 1));
static_assert(Exact(kFrameRate_Audio8000, 8000, 1) && Exact(kFrameRate_Audio11025, 11025, 1) &&
              Exact(kFrameRate_Audio22050, 22050, 1) && Exact(kFrameRate_Audio32000, 32000, 1) &&
              Exact(kFrameRate_Audio44100, 44100, 1) && Exact(kFrameRate_Audio48000, 48000, 1) &&
              Exact(kFrameRate_Audio88200, 88200, 1) && Exact(kFrameRate_Audio96000, 96000, 1) &&
              Exact(kFrameRate_Audio192000, 192000, 1));
static_assert(kFrameRate_Zero.GetTicksPerFrame() == 0x7FFFFFFFFFFFFFFF);

}  // namespace time
}  // namespace quorel
