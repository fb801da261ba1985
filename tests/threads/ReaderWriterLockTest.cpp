#include <quorel/threads/ReaderWriterLock.h>

#include <boost/thread/exceptions.hpp>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

using quorel::threads::ReaderWriterLock;
using quorel::threads::WriteLockHolder;
using namespace std::chrono_literals;

namespace {

// Waits up to two seconds for a condition another thread brings about.
template <class Condition>
bool Eventually(Condition inCondition) {
    auto const deadline = std::chrono::steady_clock::now() + 2s;
    while (!inCondition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

}  // namespace

TEST(ReaderWriterLock, ReadersShareAndTheStateCountsThem) {
    ReaderWriterLock lock;
    EXPECT_TRUE(lock.AcquireRead(true));
    EXPECT_TRUE(lock.AcquireRead(false));
    EXPECT_EQ(lock.mState.load(), 2u);
    EXPECT_FALSE(lock.AcquireWrite(true));  // readers inside: a trying writer gives up
    EXPECT_EQ(lock.mState.load(), 2u);
    lock.ReleaseRead();
    lock.ReleaseRead();
    EXPECT_EQ(lock.mState.load(), 0u);
    EXPECT_TRUE(lock.AcquireWrite(true));
    lock.ReleaseWrite();
    EXPECT_THROW(lock.ReleaseWrite(), boost::lock_error);
}

TEST(ReaderWriterLock, AHeldWriterTurnsTryingReadersAwayAndReleasesWaitingOnes) {
    ReaderWriterLock lock;
    ASSERT_TRUE(lock.AcquireWrite(false));
    std::uint32_t const held = lock.mState.load();
    EXPECT_EQ(held, 0x10000u);
    EXPECT_FALSE(lock.AcquireRead(true));
    EXPECT_EQ(lock.mState.load(), held);  // a failed try leaves no trace
    EXPECT_FALSE(lock.AcquireWrite(true));
    EXPECT_EQ(lock.mState.load(), held);

    std::atomic<bool> entered{false};
    std::thread reader([&] {
        lock.AcquireRead(false);
        entered = true;
        lock.ReleaseRead();
    });
    std::this_thread::sleep_for(20ms);
    EXPECT_FALSE(entered.load());
    lock.ReleaseWrite();
    EXPECT_TRUE(Eventually([&] { return entered.load(); }));
    reader.join();
    EXPECT_EQ(lock.mState.load(), 0u);
}

TEST(ReaderWriterLock, AWriterWaitsForReadersToDrainAndStopsNewOnes) {
    ReaderWriterLock lock;
    ASSERT_TRUE(lock.AcquireRead(false));
    std::atomic<bool> writing{false};
    std::thread writer([&] {
        lock.AcquireWrite(false);
        writing = true;
        lock.ReleaseWrite();
    });
    ASSERT_TRUE(Eventually([&] { return lock.mState.load() >= 0x10000u; }));  // announced
    EXPECT_FALSE(lock.AcquireRead(true));  // no new reader while a writer waits
    EXPECT_FALSE(writing.load());
    lock.ReleaseRead();  // the last reader out wakes the writer
    EXPECT_TRUE(Eventually([&] { return writing.load(); }));
    writer.join();
    EXPECT_EQ(lock.mState.load(), 0u);
}

TEST(ReaderWriterLock, ReadersNeverStarveAWaitingWriter) {
    // Readers overlap all the time, so the lock is never free of readers on
    // its own; a writer still gets in within a bounded time, repeatedly.
    ReaderWriterLock lock;
    std::atomic<bool> stop{false};
    std::atomic<long> reads{0};
    int sharedValue = 0;
    std::vector<std::thread> readers;
    for (int r = 0; r < 4; ++r) {
        readers.emplace_back([&, r] {
            while (!stop) {
                if (lock.AcquireRead(r % 2 == 0)) {
                    volatile int seen = sharedValue;
                    (void)seen;
                    std::this_thread::sleep_for(50us);
                    lock.ReleaseRead();
                    ++reads;
                }
            }
        });
    }
    ASSERT_TRUE(Eventually([&] { return reads.load() > 100; }));
    auto writes = std::async(std::launch::async, [&] {
        for (int i = 0; i < 50; ++i) {
            WriteLockHolder holder(lock);
            holder.Acquire(false);
            ++sharedValue;
        }
    });
    EXPECT_EQ(writes.wait_for(5s), std::future_status::ready);
    stop = true;
    for (std::thread& reader : readers) reader.join();
    writes.get();
    EXPECT_EQ(sharedValue, 50);
    EXPECT_EQ(lock.mState.load(), 0u);
}

TEST(WriteLockHolder, OneAcquisitionAtATime) {
    ReaderWriterLock lock;
    {
        WriteLockHolder holder(lock);
        EXPECT_THROW(holder.Release(), boost::lock_error);
        EXPECT_TRUE(holder.Acquire(true));
        EXPECT_THROW(holder.Acquire(true), boost::lock_error);
        EXPECT_FALSE(lock.AcquireRead(true));
    }
    EXPECT_TRUE(lock.AcquireRead(true));  // the holder released at its end
    lock.ReleaseRead();
}
