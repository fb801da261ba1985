// Allocator benchmark: quorel's small-block allocator against glibc malloc,
// mimalloc, jemalloc and tcmalloc, all in one process and one run.
//
// How the peers are loaded.  mimalloc, jemalloc and tcmalloc each define
// malloc/free (and operator new) so that they replace the C library's heap
// when a program links them.  Linked normally, the first of them would serve
// every malloc of the process: the "glibc" numbers would not be glibc's, and
// the peers would serve one another's internal allocations.  So the program
// links none of them.  It opens each at run time with
// dlopen(RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND): RTLD_LOCAL keeps the
// library's symbols out of the global scope, so malloc in this program, in
// libstdc++ and in Google Benchmark still binds to glibc; RTLD_DEEPBIND makes
// the peer's own references bind to its own definitions first, so it never
// mixes its heap with glibc's.  The entry points are then taken from the
// handle with dlsym, by names that only that peer defines: mi_malloc/mi_free
// (mimalloc), mallocx/sdallocx (jemalloc, sized release), tc_malloc/
// tc_free_sized (tcmalloc, sized release).  quorel is given the size at
// release too, so every allocator that can use it gets it.  At start the
// program checks that the process-wide malloc is still glibc's.
//
// jemalloc and tcmalloc use initial-exec thread-local storage, which needs
// room in the static TLS block that glibc reserves at start-up; the default
// reserve is too small for jemalloc.  The program therefore re-executes itself
// once with GLIBC_TUNABLES=glibc.rtld.optional_static_tls=16384.
//
// Every figure is nanoseconds per operation, where one operation is one
// allocation plus its release (a "pair"), except in the string scenario,
// where one operation is one string grown to 4 KiB.  Benchmark names are
// scenario/allocator/size; bench/compare_allocators.py turns the JSON output
// of one run into a table.
//
// Scenarios:
//   pair      one thread: allocate, touch, release, repeat.
//   pairheld  as pair, with one other block of the same class held for the
//             whole run, so that a pool that gives its last chunk back keeps
//             a chunk: the allocator's fast path from an existing chunk.
//   batch     one thread: 10,000 allocations, then the 10,000 releases in
//             allocation order.
//   twothr    two threads doing pairs on the same size class at once; the
//             figure is the time per pair as each thread sees it.
//   prodcons  one thread allocates and hands the blocks through a
//             single-producer/single-consumer ring to a second thread that
//             releases them; the figure is per block passed through.
//   string    std::basic_string grown char by char to 4096 chars, with the
//             allocator's standard-allocator adapter.
//   floor     the fixed cost of quorel's fast path: per pair, twice the five
//             atomic read-modify-writes of one operation (try-read of the
//             state lock, the list exchange, the two counters, the release of
//             the read side), each on a private word on its own cache line.

#include <quorel/utility/SmallBlockAllocator.h>

#include <benchmark/benchmark.h>

#include <dlfcn.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace SBA = quorel::utility::SmallBlockAllocator;

constexpr std::size_t kSizes[] = {8, 24, 64, 256, 1024, 4096, 8192};
constexpr int kBatch = 10000;
constexpr std::size_t kStringLength = 4096;

// Waiting for the other side of the ring: spin a little, then give the CPU
// away, so that on a machine with more runnable threads than cores a waiting
// side doesn't burn the time slice that the other side needs.
class Backoff {
public:
    void Wait() {
        if (++mSpins < 64) {
#if defined(__x86_64__) || defined(__i386__)
            __builtin_ia32_pause();
#endif
        } else {
            std::this_thread::yield();
        }
    }
    void Reset() { mSpins = 0; }

private:
    int mSpins = 0;
};

// ---------------------------------------------------------------------------
// The allocators, each as a type with static Alloc/Free, so that the scenarios
// are templates and every allocator runs the very same loop.

struct Quorel {
    static constexpr char const* kName = "quorel";
    static void* Alloc(std::size_t inSize) { return SBA::Allocate(static_cast<unsigned int>(inSize)); }
    static void Free(void* inBlock, std::size_t inSize) { SBA::Dispose(inBlock, static_cast<unsigned int>(inSize)); }
    static bool Available() { return true; }
};

struct Glibc {
    static constexpr char const* kName = "glibc";
    static void* Alloc(std::size_t inSize) { return std::malloc(inSize); }
    static void Free(void* inBlock, std::size_t) { std::free(inBlock); }
    static bool Available() { return true; }
};

struct Mimalloc {
    static constexpr char const* kName = "mimalloc";
    static inline void* (*sMalloc)(std::size_t) = nullptr;
    static inline void (*sFree)(void*) = nullptr;
    static void* Alloc(std::size_t inSize) { return sMalloc(inSize); }
    static void Free(void* inBlock, std::size_t) { sFree(inBlock); }
    static bool Available() { return sMalloc != nullptr; }
};

struct Jemalloc {
    static constexpr char const* kName = "jemalloc";
    static inline void* (*sMallocx)(std::size_t, int) = nullptr;
    static inline void (*sSdallocx)(void*, std::size_t, int) = nullptr;
    static void* Alloc(std::size_t inSize) { return sMallocx(inSize, 0); }
    static void Free(void* inBlock, std::size_t inSize) { sSdallocx(inBlock, inSize, 0); }
    static bool Available() { return sMallocx != nullptr; }
};

struct Tcmalloc {
    static constexpr char const* kName = "tcmalloc";
    static inline void* (*sMalloc)(std::size_t) = nullptr;
    static inline void (*sFreeSized)(void*, std::size_t) = nullptr;
    static void* Alloc(std::size_t inSize) { return sMalloc(inSize); }
    static void Free(void* inBlock, std::size_t inSize) { sFreeSized(inBlock, inSize); }
    static bool Available() { return sMalloc != nullptr; }
};

void* OpenPeer(char const* inLibrary) {
    void* const handle = dlopen(inLibrary, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    if (handle == nullptr) {
        std::fprintf(stderr, "note: %s not loaded (%s); its benchmarks are skipped\n", inLibrary, dlerror());
    }
    return handle;
}

template <class F>
bool Resolve(void* inHandle, char const* inSymbol, F& outFunction) {
    void* const symbol = dlsym(inHandle, inSymbol);
    if (symbol == nullptr) {
        std::fprintf(stderr, "note: %s not found: %s\n", inSymbol, dlerror());
        return false;
    }
    outFunction = reinterpret_cast<F>(symbol);
    return true;
}

void LoadPeers() {
    if (void* handle = OpenPeer("libmimalloc.so.2")) {
        if (!Resolve(handle, "mi_malloc", Mimalloc::sMalloc) || !Resolve(handle, "mi_free", Mimalloc::sFree)) {
            Mimalloc::sMalloc = nullptr;
        }
    }
    if (void* handle = OpenPeer("libjemalloc.so.2")) {
        if (!Resolve(handle, "mallocx", Jemalloc::sMallocx) || !Resolve(handle, "sdallocx", Jemalloc::sSdallocx)) {
            Jemalloc::sMallocx = nullptr;
        }
    }
    if (void* handle = OpenPeer("libtcmalloc_minimal.so.4")) {
        if (!Resolve(handle, "tc_malloc", Tcmalloc::sMalloc) || !Resolve(handle, "tc_free_sized", Tcmalloc::sFreeSized)) {
            Tcmalloc::sMalloc = nullptr;
        }
    }
}

// The process-wide malloc must be glibc's, or the glibc column measures a peer.
bool MallocIsGlibc() {
    void* const symbol = dlsym(RTLD_DEFAULT, "malloc");
    Dl_info info{};
    if (symbol == nullptr || dladdr(symbol, &info) == 0 || info.dli_fname == nullptr) {
        return false;
    }
    std::fprintf(stderr, "malloc of the process comes from %s\n", info.dli_fname);
    return std::strstr(info.dli_fname, "libc.so") != nullptr;
}

// Writes into a block as a user would, so that no allocator is measured on
// memory that nobody touches, and the compiler can't drop the pair.
inline void Touch(void* inBlock) {
    benchmark::DoNotOptimize(inBlock);
    *static_cast<volatile char*>(inBlock) = 1;
}

void SetPairs(benchmark::State& ioState, std::int64_t inPairsPerIteration) {
    ioState.SetItemsProcessed(ioState.iterations() * inPairsPerIteration);
    // Averaged over the threads of a threaded run, so that it stays the count of one thread.
    ioState.counters["pairs_per_iter"] =
        benchmark::Counter(static_cast<double>(inPairsPerIteration), benchmark::Counter::kAvgThreads);
}

// ---------------------------------------------------------------------------
// Scenarios.

template <class A>
void Pair(benchmark::State& ioState) {
    std::size_t const size = static_cast<std::size_t>(ioState.range(0));
    for (auto _ : ioState) {
        void* const block = A::Alloc(size);
        Touch(block);
        A::Free(block, size);
    }
    SetPairs(ioState, 1);
}

template <class A>
void PairHeld(benchmark::State& ioState) {
    std::size_t const size = static_cast<std::size_t>(ioState.range(0));
    void* const held = A::Alloc(size);
    Touch(held);
    for (auto _ : ioState) {
        void* const block = A::Alloc(size);
        Touch(block);
        A::Free(block, size);
    }
    A::Free(held, size);
    SetPairs(ioState, 1);
}

template <class A>
void Batch(benchmark::State& ioState) {
    std::size_t const size = static_cast<std::size_t>(ioState.range(0));
    std::vector<void*> blocks(kBatch);
    for (auto _ : ioState) {
        for (void*& block : blocks) {
            block = A::Alloc(size);
            Touch(block);
        }
        for (void* block : blocks) {
            A::Free(block, size);
        }
    }
    SetPairs(ioState, kBatch);
}

// A bounded single-producer/single-consumer ring of pointers.  Each side keeps
// a copy of the other side's index and reads the shared one only when the copy
// says full or empty, so the cache lines move only when they must.
class SpscRing {
public:
    static constexpr std::size_t kCapacity = 1024;

    bool TryPush(void* inValue) {
        std::size_t const tail = mTail.load(std::memory_order_relaxed);
        if (tail - mHeadSeenByProducer == kCapacity) {
            mHeadSeenByProducer = mHead.load(std::memory_order_acquire);
            if (tail - mHeadSeenByProducer == kCapacity) {
                return false;
            }
        }
        mSlots[tail % kCapacity] = inValue;
        mTail.store(tail + 1, std::memory_order_release);
        return true;
    }

    bool TryPop(void*& outValue) {
        std::size_t const head = mHead.load(std::memory_order_relaxed);
        if (head == mTailSeenByConsumer) {
            mTailSeenByConsumer = mTail.load(std::memory_order_acquire);
            if (head == mTailSeenByConsumer) {
                return false;
            }
        }
        outValue = mSlots[head % kCapacity];
        mHead.store(head + 1, std::memory_order_release);
        return true;
    }

private:
    alignas(64) std::atomic<std::size_t> mTail{0};  // written by the producer
    std::size_t mHeadSeenByProducer = 0;
    alignas(64) std::atomic<std::size_t> mHead{0};  // written by the consumer
    std::size_t mTailSeenByConsumer = 0;
    alignas(64) void* mSlots[kCapacity] = {};
};

template <class A>
void ProducerConsumer(benchmark::State& ioState) {
    std::size_t const size = static_cast<std::size_t>(ioState.range(0));
    auto ring = std::make_unique<SpscRing>();
    std::atomic<bool> producerDone{false};
    std::thread consumer([&ring, &producerDone, size] {
        void* block = nullptr;
        Backoff backoff;
        for (;;) {
            if (ring->TryPop(block)) {
                A::Free(block, size);
                backoff.Reset();
            } else if (producerDone.load(std::memory_order_acquire)) {
                while (ring->TryPop(block)) {
                    A::Free(block, size);
                }
                return;
            } else {
                backoff.Wait();
            }
        }
    });
    Backoff backoff;
    for (auto _ : ioState) {
        void* const block = A::Alloc(size);
        Touch(block);
        while (!ring->TryPush(block)) {
            backoff.Wait();
        }
        backoff.Reset();
    }
    producerDone.store(true, std::memory_order_release);
    consumer.join();
    SetPairs(ioState, 1);
}

// A standard allocator over one of the allocator types, for the peers.
template <class T, class A>
struct PeerStlAllocator {
    using value_type = T;
    template <class U>
    struct rebind {
        using other = PeerStlAllocator<U, A>;
    };
    PeerStlAllocator() noexcept = default;
    template <class U>
    PeerStlAllocator(PeerStlAllocator<U, A> const&) noexcept {}
    T* allocate(std::size_t inCount) {
        void* const block = A::Alloc(inCount * sizeof(T));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(block);
    }
    void deallocate(T* inBlock, std::size_t inCount) noexcept { A::Free(inBlock, inCount * sizeof(T)); }
    friend bool operator==(PeerStlAllocator const&, PeerStlAllocator const&) noexcept { return true; }
    friend bool operator!=(PeerStlAllocator const&, PeerStlAllocator const&) noexcept { return false; }
};

template <class Alloc>
void StringGrowth(benchmark::State& ioState) {
    using String = std::basic_string<char, std::char_traits<char>, Alloc>;
    std::size_t const length = static_cast<std::size_t>(ioState.range(0));
    for (auto _ : ioState) {
        String text;
        for (std::size_t i = 0; i < length; ++i) {
            text.push_back(static_cast<char>('a' + (i & 15)));
        }
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    ioState.SetItemsProcessed(ioState.iterations());
}

template <class A>
struct StringAllocatorOf {
    using type = PeerStlAllocator<char, A>;
};
template <>
struct StringAllocatorOf<Quorel> {
    using type = SBA::STLAllocator<char>;
};
template <>
struct StringAllocatorOf<Glibc> {
    using type = std::allocator<char>;  // operator new, thus glibc malloc
};

// Private words for the floor, each on its own cache line.
struct alignas(64) PrivateWord {
    std::atomic<std::uint64_t> mValue{0};
};
PrivateWord gTryReadWord;
PrivateWord gListWord;
PrivateWord gUsedWord;
PrivateWord gFreeWord;

inline void CompareExchangeAdd(std::atomic<std::uint64_t>& ioWord, std::uint64_t inDelta, std::memory_order inOrder) {
    std::uint64_t expected = ioWord.load(std::memory_order_relaxed);
    while (!ioWord.compare_exchange_weak(expected, expected + inDelta, inOrder, std::memory_order_relaxed)) {
    }
}

// One operation of the fast path reduced to its atomic read-modify-writes:
// try-read (CAS), list pop or push (CAS), the two counters (fetch_add and
// fetch_sub), release of the read side (CAS).
inline void FloorOperation() {
    CompareExchangeAdd(gTryReadWord.mValue, 1, std::memory_order_acquire);
    CompareExchangeAdd(gListWord.mValue, 1, std::memory_order_acq_rel);
    gUsedWord.mValue.fetch_add(1, std::memory_order_relaxed);
    gFreeWord.mValue.fetch_sub(1, std::memory_order_relaxed);
    CompareExchangeAdd(gTryReadWord.mValue, static_cast<std::uint64_t>(-1), std::memory_order_release);
}

void Floor(benchmark::State& ioState) {
    for (auto _ : ioState) {
        FloorOperation();  // the allocation
        FloorOperation();  // the release
    }
    SetPairs(ioState, 1);
}

// ---------------------------------------------------------------------------

template <class A>
void RegisterFor() {
    if (!A::Available()) {
        return;
    }
    // Names are scenario/allocator; Google Benchmark appends the size.
    std::string const suffix = std::string("/") + A::kName;
    for (std::size_t size : kSizes) {
        auto const arg = static_cast<std::int64_t>(size);
        benchmark::RegisterBenchmark(("pair" + suffix).c_str(), Pair<A>)->Arg(arg);
        benchmark::RegisterBenchmark(("pairheld" + suffix).c_str(), PairHeld<A>)->Arg(arg);
        benchmark::RegisterBenchmark(("batch" + suffix).c_str(), Batch<A>)->Arg(arg);
        // Both threads run the loop of Pair at once.
        benchmark::RegisterBenchmark(("twothr" + suffix).c_str(), Pair<A>)->Arg(arg)->Threads(2)->UseRealTime();
        benchmark::RegisterBenchmark(("prodcons" + suffix).c_str(), ProducerConsumer<A>)->Arg(arg)->UseRealTime();
    }
    benchmark::RegisterBenchmark(("string" + suffix).c_str(), StringGrowth<typename StringAllocatorOf<A>::type>)
        ->Arg(static_cast<std::int64_t>(kStringLength));
}

// Re-executes the program once with room for the peers' static TLS.
void EnsureStaticTlsReserve(char** argv) {
    constexpr char const* kMarker = "QUOREL_ALLOCATOR_BENCH_REEXEC";
    if (std::getenv(kMarker) != nullptr) {
        return;
    }
    std::string tunables = "glibc.rtld.optional_static_tls=16384";
    if (char const* existing = std::getenv("GLIBC_TUNABLES")) {
        tunables = std::string(existing) + ":" + tunables;
    }
    setenv("GLIBC_TUNABLES", tunables.c_str(), 1);
    setenv(kMarker, "1", 1);
    execv("/proc/self/exe", argv);
    std::perror("note: re-exec with a larger static TLS reserve failed; jemalloc may not load");
}

}  // namespace

int main(int argc, char** argv) {
    EnsureStaticTlsReserve(argv);
    if (!MallocIsGlibc()) {
        std::fprintf(stderr, "error: malloc of the process is not glibc's; the comparison would be wrong\n");
        return 1;
    }
    LoadPeers();

    benchmark::RegisterBenchmark("floor/atomics", Floor)->Arg(0);
    RegisterFor<Quorel>();
    RegisterFor<Glibc>();
    RegisterFor<Mimalloc>();
    RegisterFor<Jemalloc>();
    RegisterFor<Tcmalloc>();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
