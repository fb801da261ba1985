// Event-loop executors: the library's own loop thread, a test thread adapted
// by hand, and a real GLib main loop.
#include "ExecutorTestSupport.h"

#include <quorel/threads/AsyncEventLoopExecutor.h>
#include <quorel/threads/ThreadMessages.h>

#include <glib-unix.h>
#include <glib.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

using namespace quorel::threads;
using exectest::Eventually;
using exectest::Recorder;
using std::chrono::milliseconds;

TEST(EventLoopExecutor, RunsCallsInOrderOnItsThreadAfterCallAsyncReturns) {
    auto loop = CreateAsyncEventLoopExecutor("Loop");
    EXPECT_EQ(loop->GetThreadCount(), 1);
    Recorder order;
    // Taken as soon as the thread is up.
    for (int i = 1; i <= 3; ++i) ASSERT_TRUE(loop->CallAsync(order.Adder(i), 0));
    loop->CallAsync(order.Adder(5), 30);
    std::atomic<int> onLoop{-1};
    loop->CallAsync([&] {
        onLoop = loop->IsCurrentThreadExecutorThread();
        // From the loop's own thread: not inside CallAsync, but after it.
        auto returned = std::make_shared<std::atomic<bool>>(false);
        loop->CallAsync([&order, returned] { order.Add(*returned ? 4 : -4); }, 0);
        *returned = true;
    }, 0);
    ASSERT_TRUE(Eventually([&] { return order.Size() == 5; }));
    EXPECT_EQ(order.Values(), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(onLoop.load(), 1);
    EXPECT_FALSE(loop->IsCurrentThreadExecutorThread());
    loop->Terminate();
    threadtest::FinishesInTime("Join of an event loop", [&] { loop->Join(); });
    EXPECT_EQ(loop->GetThreadCount(), 1);
}

TEST(EventLoopExecutor, TerminateRunsQueuedCallsAndLosesPendingDelays) {
    auto loop = CreateAsyncEventLoopExecutor("Loop");
    threadtest::Gate release;
    Recorder order;
    loop->CallAsync([&] { release.Pass(); }, 0);
    loop->CallAsync([] { throw std::runtime_error("swallowed by the loop"); }, 0);
    loop->CallAsync(order.Adder(1), 0);
    loop->CallAsync(order.Adder(99), 50);
    loop->CallAsync(order.Adder(2), 0);
    loop->Terminate();
    loop->Terminate();
    EXPECT_TRUE(loop->IsTerminated());
    EXPECT_FALSE(loop->CallAsync(order.Adder(3), 0));
    EXPECT_FALSE(loop->IsCurrentThreadExecutorThread());
    release.Open();
    threadtest::FinishesInTime("Join of an ended loop", [&] { loop->Join(); });
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(order.Values(), (std::vector<int>{1, 2}));

    loop = CreateAsyncEventLoopExecutor("Short-lived");
    loop->Terminate();  // waits for the start, then ends the thread
    threadtest::FinishesInTime("Join right after the start", [&] { loop->Join(); });
    EXPECT_TRUE(loop->IsTerminated());
}

// A hand-adapted thread: calls wait until it dispatches; ProcessPendingCalls
// lets a failing call's exception out and leaves the calls behind it queued.
TEST(EventLoopAdaptor, ProcessPendingCallsOnTheAdaptedThread) {
    std::size_t const baseline = exectest::SettledThreadCount();
    auto adaptor = AdaptCurrentEventLoopAsExecutor();
    auto second = AdaptCurrentEventLoopAsExecutor();
    EXPECT_EQ(exectest::ThreadCount(), baseline + 1);  // one shared timer thread
    Recorder order;
    std::thread([&] {
        adaptor->CallAsync([] { throw std::runtime_error("to the host"); }, 0);
        adaptor->CallAsync(order.Adder(1), 0);
    }).join();
    EXPECT_TRUE(adaptor->IsCurrentThreadExecutorThread());
    EXPECT_EQ(order.Size(), 0u);
    EXPECT_THROW(adaptor->ProcessPendingCalls(), std::runtime_error);
    EXPECT_EQ(order.Size(), 0u);
    adaptor->ProcessPendingCalls();
    EXPECT_EQ(order.Values(), std::vector<int>{1});
    // The wake-ups find the queue empty.
    EXPECT_EQ(DispatchCurrentThreadMessages(), 2u);
    EXPECT_EQ(order.Size(), 1u);

    adaptor->CallAsync(order.Adder(2), 0);  // from this thread: through the timer
    EXPECT_TRUE(Eventually([] { return DispatchCurrentThreadMessages() == 1; }));
    EXPECT_EQ(order.Values(), (std::vector<int>{1, 2}));
    adaptor->CallAsync(order.Adder(3), 0);
    adaptor.reset();  // its waiting call is dropped
    second.reset();
    EXPECT_TRUE(Eventually([&] { return exectest::ThreadCount() == baseline; }));
    DispatchCurrentThreadMessages();
    EXPECT_EQ(order.Values(), (std::vector<int>{1, 2}));
}

TEST(EventLoopAdaptor, DrivesAGLibMainLoop) {
    Recorder order;
    boost::shared_ptr<AsyncEventLoopAdaptor> adaptor;
    threadtest::Gate adapted;
    GMainLoop* mainLoop = nullptr;
    std::atomic<bool> onLoopThread{true};
    std::thread host([&] {
        GMainContext* const context = g_main_context_new();
        g_main_context_push_thread_default(context);
        mainLoop = g_main_loop_new(context, FALSE);
        adaptor = AdaptCurrentEventLoopAsExecutor();
        GSource* const source = g_unix_fd_source_new(GetCurrentThreadMessageDescriptor(), G_IO_IN);
        GUnixFDSourceFunc const dispatch = [](int, GIOCondition, gpointer) -> gboolean {
            DispatchCurrentThreadMessages();
            return G_SOURCE_CONTINUE;
        };
        g_source_set_callback(source, G_SOURCE_FUNC(dispatch), nullptr, nullptr);
        g_source_attach(source, context);
        adapted.Open();
        g_main_loop_run(mainLoop);
        g_source_destroy(source);
        g_source_unref(source);
        adaptor.reset();
        g_main_loop_unref(mainLoop);
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
    });
    ASSERT_TRUE(adapted.Pass());
    for (int i = 1; i <= 3; ++i) adaptor->CallAsync(order.Adder(i), 0);
    adaptor->CallAsync([&] {
        onLoopThread = onLoopThread && adaptor->IsCurrentThreadExecutorThread();
        order.Add(4);
        g_main_loop_quit(mainLoop);
    }, 20);
    threadtest::FinishesInTime("a GLib loop driven by the adaptor", [&] { host.join(); });
    EXPECT_EQ(order.Values(), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_TRUE(onLoopThread);
}
