#include "Executors.h"

#include <quorel/threads/AsyncEventLoopExecutor.h>
#include <quorel/threads/AsyncExecutor.h>
#include <quorel/threads/ThreadID.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace thr = quorel::threads;

namespace {

std::mutex gPrintMutex;

void Say(char const* inWhat) {
    std::lock_guard<std::mutex> lock(gPrintMutex);
    std::printf("  %-46s on thread %u\n", inWhat, thr::GetCurrentThreadID());
}

}  // namespace

void ShowExecutors() {
    std::printf("Executors:\n");
    Say("the host");
    boost::shared_ptr<thr::AsyncThreadedExecutor> pool =
        thr::CreateAsyncThreadedExecutor("Decoder", 2, thr::kThreadPriority_BelowNormal);
    std::printf("  a pool of %d workers\n", pool->GetThreadCount());
    pool->CallAsync([] { Say("pool: delayed by 50 ms"); }, 50);
    pool->CallAsync([] { Say("pool: immediate call"); }, 0);
    pool->CallAsync([] { throw std::runtime_error("a failing call does not end its worker"); }, 0);
    pool->Join();  // the immediate calls have run
    std::this_thread::sleep_for(std::chrono::milliseconds(100));

    boost::shared_ptr<thr::AsyncEventLoopExecutor> loop = thr::CreateAsyncEventLoopExecutor("Interface");
    std::atomic<int> ran{0};
    for (int i = 1; i <= 3; ++i) {
        loop->CallAsync([i, &ran] {
            char text[64];
            std::snprintf(text, sizeof text, "event loop: call %d of 3, in order", i);
            Say(text);
            ++ran;
        }, 0);
    }
    loop->Terminate();  // what was queued still runs
    loop->Join();
    std::printf("  event loop ended after %d calls; CallAsync now %s\n", ran.load(),
                loop->CallAsync([] {}, 0) ? "takes calls" : "refuses calls");

    pool->Terminate();
    pool->Join();
    std::printf("  pool terminated and joined; CallAsync now %s\n",
                pool->CallAsync([] {}, 0) ? "takes calls" : "refuses calls");
}
