// Media time as a host sees it: a clip position in seconds becomes an exact
// tick count, which converts to frames of the video and samples of the audio
// without drift, and back.
#include "MediaTime.h"

#include <quorel/time/FrameRate.h>
#include <quorel/time/TickTime.h>

#include <cinttypes>
#include <cstdio>

namespace qtime = quorel::time;

void ShowMediaTime() {
    std::printf("Media time (%" PRId64 " ticks per second):\n", qtime::kTicksPerSecond);

    qtime::TickTime const position(90.5);  // 1 min 30.5 s into a clip
    std::printf("  %.3f s is %" PRId64 " ticks\n", 90.5, position.GetTicks());

    // Film transferred to NTSC video runs at 24000/1001 frames per second.
    std::int64_t const videoFrame = position.ToFrame64(qtime::kFrameRate_23976);
    qtime::TickTime frameStart = position;
    frameStart.AlignToFrame(qtime::kFrameRate_23976);
    std::printf("  at %.6f fps that is frame %" PRId64 ", which starts %" PRId64 " ticks earlier\n",
                qtime::kFrameRate_23976.GetValue(), videoFrame, (position - frameStart).GetTicks());

    // The same position in 48 kHz audio is an exact sample number.
    std::int64_t const sample = position.ToFrame64(qtime::kFrameRate_Audio48000);
    std::printf("  at 48 kHz it is sample %" PRId64 "\n", sample);

    // One second of 23.976 video is not a whole number of frames; 1001 seconds are.
    qtime::TickTime const span = qtime::TickTime(1001.0);
    qtime::FrameRate rate;
    span.CalculateFrameRate(24000, rate);
    std::printf("  24000 frames in 1001 s make %s the 23.976 rate (%" PRId64 " ticks per frame)\n",
                rate == qtime::kFrameRate_23976 ? "exactly" : "not", rate.GetTicksPerFrame());

    // Back from frames: frame 1000 of the video, in seconds and in samples.
    qtime::TickTime const frame1000(1000, qtime::kFrameRate_23976);
    std::printf("  frame 1000 at 23.976 starts at %.6f s, sample %" PRId64 "\n",
                static_cast<double>(frame1000.GetTicks()) / static_cast<double>(qtime::kTicksPerSecond),
                frame1000.ToFrame64(qtime::kFrameRate_Audio48000));
}
