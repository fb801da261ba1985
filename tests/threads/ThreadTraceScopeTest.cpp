#include <quorel/threads/Barrier.h>
#include <quorel/threads/ScopedLock.h>
#include <quorel/threads/Thread.h>
#include <quorel/threads/ThreadGroup.h>
#include <quorel/threads/ThreadTraceScope.h>

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

using namespace quorel::threads;

namespace {

std::mutex gLinesMutex;
std::vector<std::string> gLines;

void RecordLine(std::string const& inCategory, std::int32_t inVolume, std::string const& inText) {
    std::lock_guard<std::mutex> lock(gLinesMutex);
    gLines.push_back(inCategory + "/" + std::to_string(inVolume) + ": " + inText);
}

std::vector<std::string> TakeLines() {
    std::lock_guard<std::mutex> lock(gLinesMutex);
    std::vector<std::string> lines;
    lines.swap(gLines);
    return lines;
}

}  // namespace

TEST(ThreadTraceScope, EnabledScopesWriteBeginAndEndAndDisabledOnesNothing) {
    ThreadTraceWriter const previous = SetThreadTraceWriter(&RecordLine);
    TakeLines();
    std::string name = "Pool";
    {
        ThreadTraceScope scope(kThreadTraceCategory, kThreadTraceVolume, name, "Thread", "Join", true);
        name = "renamed while open";  // the scope keeps the message it began with
        EXPECT_EQ(scope.GetMessage(), "Pool - Thread - Join");
        EXPECT_EQ(TakeLines(), std::vector<std::string>{"QRLThreads/15: Begin - Pool - Thread - Join"});
    }
    EXPECT_EQ(TakeLines(), std::vector<std::string>{"QRLThreads/15: End - Pool - Thread - Join"});

    {
        ThreadTraceScope scope("Category", 3, "Name", "Class", "Operation", false);
        EXPECT_TRUE(scope.GetMessage().empty());
    }
    // The primitives open their scopes disabled: a round of them writes nothing.
    {
        RecursiveMutex mutex("M");
        RecursiveMutexLock lock(mutex, true);
        Barrier("B", 1).Wait();
        Thread worker("W", [] {});
        EXPECT_NE(Thread("T"), worker);
        worker.Join();
        ThreadGroup group("G");
        std::unique_ptr<Thread> member(group.CreateThread([] {}));
        group.RemoveThread(member.get());
        group.AddThread(member.get());
        group.JoinAll();
    }
    EXPECT_TRUE(TakeLines().empty());
    SetThreadTraceWriter(previous);
}
