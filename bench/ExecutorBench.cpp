// Executor benchmark: throughput of immediate calls of a small function
// through pools of 1 and 2 workers from 1 and 2 producer threads, and the
// round-trip latency of one call to an event-loop executor, side by side with
// boost::asio::thread_pool, a TBB task_group and a plain mutex + condition
// variable queue.
//
// Each throughput iteration starts the producers, which hand in kCalls calls
// in all, and stops the clock when the last call has run (manual time).
#include <quorel/threads/AsyncEventLoopExecutor.h>
#include <quorel/threads/AsyncExecutor.h>

#include <benchmark/benchmark.h>
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/task_group.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr int kCalls = 100000;

std::atomic<long> gRan{0};
long gTarget = 0;
std::promise<void>* gAllRan = nullptr;

/// The small function that every peer runs; the last of an iteration's calls
/// wakes the benchmark thread.
struct Tick {
    void operator()() const {
        if (gRan.fetch_add(1, std::memory_order_acq_rel) + 1 == gTarget) gAllRan->set_value();
    }
};

class QuorelPool {
public:
    explicit QuorelPool(int inWorkers)
        : mPool(quorel::threads::CreateAsyncThreadedExecutor("Bench", inWorkers,
                                                             quorel::threads::kThreadPriority_Normal)) {}
    ~QuorelPool() {
        mPool->Terminate();
        mPool->Join();
    }
    template <class F>
    void Post(F const& inFunction) {
        mPool->CallAsync(inFunction, 0);
    }

private:
    boost::shared_ptr<quorel::threads::AsyncThreadedExecutor> mPool;
};

class QuorelEventLoop {
public:
    explicit QuorelEventLoop(int) : mLoop(quorel::threads::CreateAsyncEventLoopExecutor("Bench")) {}
    ~QuorelEventLoop() {
        mLoop->Terminate();
        mLoop->Join();
    }
    template <class F>
    void Post(F const& inFunction) {
        mLoop->CallAsync(inFunction, 0);
    }

private:
    boost::shared_ptr<quorel::threads::AsyncEventLoopExecutor> mLoop;
};

class AsioPool {
public:
    explicit AsioPool(int inWorkers) : mPool(static_cast<std::size_t>(inWorkers)) {}
    ~AsioPool() { mPool.join(); }
    template <class F>
    void Post(F const& inFunction) {
        boost::asio::post(mPool, inFunction);
    }

private:
    boost::asio::thread_pool mPool;
};

/// TBB with as many worker threads as asked for; each producer thread runs its
/// calls through a task_group of its own (tbb::task_group is not meant to be
/// shared by threads that run into it at once).
class TbbPool {
public:
    explicit TbbPool(int inWorkers)
        : mControl(oneapi::tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(inWorkers) + 1) {}
    template <class F>
    void Post(F const& inFunction) {
        Group().run(inFunction);
    }
    /// Every producer waits for its group before it ends.
    static void Finish() { Group().wait(); }

private:
    static oneapi::tbb::task_group& Group() {
        thread_local oneapi::tbb::task_group group;
        return group;
    }
    oneapi::tbb::global_control mControl;
};

class MutexQueuePool {
public:
    explicit MutexQueuePool(int inWorkers) {
        for (int i = 0; i < inWorkers; ++i) mWorkers.emplace_back([this] { Run(); });
    }
    ~MutexQueuePool() {
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mStop = true;
        }
        mReady.notify_all();
        for (std::thread& worker : mWorkers) worker.join();
    }
    template <class F>
    void Post(F const& inFunction) {
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mQueue.emplace_back(inFunction);
        }
        mReady.notify_one();
    }

private:
    void Run() {
        for (;;) {
            std::function<void()> function;
            {
                std::unique_lock<std::mutex> lock(mMutex);
                mReady.wait(lock, [this] { return mStop || !mQueue.empty(); });
                if (mQueue.empty()) return;
                function = std::move(mQueue.front());
                mQueue.pop_front();
            }
            function();
        }
    }
    std::mutex mMutex;
    std::condition_variable mReady;
    std::deque<std::function<void()>> mQueue;
    bool mStop = false;
    std::vector<std::thread> mWorkers;
};

template <class Pool>
void FinishProducer() {}
template <>
void FinishProducer<TbbPool>() {
    TbbPool::Finish();
}

/// Throughput: args are workers and producers.
template <class Pool>
void Throughput(benchmark::State& state) {
    int const workers = static_cast<int>(state.range(0));
    int const producers = static_cast<int>(state.range(1));
    Pool pool(workers);
    for (auto _ : state) {
        // Producers post their share and then sleep until every call has run
        // (a TBB producer must wait for its task_group before it ends).
        std::promise<void> allRan;
        std::shared_future<void> const finished = allRan.get_future().share();
        gRan = 0;
        gTarget = kCalls;
        gAllRan = &allRan;
        auto const start = std::chrono::steady_clock::now();
        std::vector<std::thread> threads;
        for (int p = 0; p < producers; ++p) {
            threads.emplace_back([&] {
                for (int i = 0; i < kCalls / producers; ++i) pool.Post(Tick());
                finished.wait();
                FinishProducer<Pool>();
            });
        }
        finished.wait();
        auto const end = std::chrono::steady_clock::now();
        for (std::thread& thread : threads) thread.join();
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    state.SetItemsProcessed(state.iterations() * kCalls);
}

/// Round trip: one call at a time to a single thread, and back.
template <class Pool>
void RoundTrip(benchmark::State& state) {
    Pool pool(1);
    std::atomic<long> ran{0};
    long expected = 0;
    for (auto _ : state) {
        pool.Post([&ran] { ran.fetch_add(1, std::memory_order_release); });
        ++expected;
        while (ran.load(std::memory_order_acquire) != expected) {
        }
    }
    if (std::is_same<Pool, TbbPool>::value) FinishProducer<Pool>();
}

void PoolShapes(benchmark::internal::Benchmark* inBenchmark) {
    inBenchmark->ArgNames({"workers", "producers"});
    for (int workers : {1, 2}) {
        for (int producers : {1, 2}) inBenchmark->Args({workers, producers});
    }
    inBenchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK_TEMPLATE(Throughput, QuorelPool)->Apply(PoolShapes);
BENCHMARK_TEMPLATE(Throughput, AsioPool)->Apply(PoolShapes);
BENCHMARK_TEMPLATE(Throughput, TbbPool)->Apply(PoolShapes);
BENCHMARK_TEMPLATE(Throughput, MutexQueuePool)->Apply(PoolShapes);

BENCHMARK_TEMPLATE(RoundTrip, QuorelEventLoop)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(RoundTrip, QuorelPool)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(RoundTrip, AsioPool)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(RoundTrip, TbbPool)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(RoundTrip, MutexQueuePool)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
