#include <quorel/utility/RefCountedObject.h>
#include <quorel/utility/SmallBlockAllocator.h>
#include <quorel/utility/UnicodeString.h>

#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

using namespace quorel;
using namespace quorel::utility;

TEST(SmallBlockAllocator, EntryPointsGiveAlignedUsableBlocks) {
    for (unsigned int size : {0u, 1u, 4u, 15u, 16u, 100u, 4128u, 70000u, 1u << 20}) {
        void* block = SmallBlockAllocator::Allocate(size);
        ASSERT_NE(block, nullptr) << size;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u) << size;
        EXPECT_GE(SmallBlockAllocator::GetActualAllocationSize(size), size);
        std::memset(block, 0xA5, size);
        SmallBlockAllocator::Dispose(block, size);
    }
    SmallBlockAllocator::Dispose(nullptr, 16);
    SmallBlockAllocator::Metrics::Snapshot snapshot;
    snapshot.mAllocations = 42;
    EXPECT_FALSE(SmallBlockAllocator::Metrics::GetSnapshot(snapshot));
    EXPECT_EQ(snapshot.mAllocations, 42u);
}

TEST(SmallBlockAllocator, STLAllocatorServesContainersAndStrings) {
    SmallBlockAllocator::STLAllocator<int> ints;
    SmallBlockAllocator::STLAllocator<double> doubles;
    EXPECT_TRUE(ints == doubles);
    EXPECT_FALSE(ints != doubles);
    std::vector<int, SmallBlockAllocator::STLAllocator<int>> numbers;
    for (int i = 0; i < 10000; ++i) numbers.push_back(i);
    EXPECT_EQ(numbers[9999], 9999);
    EXPECT_THROW(ints.allocate(ints.max_size() + 1), std::bad_alloc);

    // Short contents stay in the object: 15 UTF-8 or 7 UTF-16 units.
    EXPECT_EQ(UTF8String().capacity(), 15u);
    EXPECT_EQ(UTF16String().capacity(), 7u);
    UTF16String text(1000, 'x');
    text += text;
    EXPECT_EQ(text.size(), 2000u);
}

namespace {

class Counted : public RefCountedObject {
public:
    explicit Counted(int* ioDestroyed) : mDestroyed(ioDestroyed) {}
    Counted(Counted const& inOther) = default;
    ~Counted() override { ++*mDestroyed; }
    void Guard(bool inGuard) { SetDeletionGuard(inGuard); }

private:
    int* mDestroyed;
};

}  // namespace

TEST(RefCountedObject, LastReleaseDeletesUnlessGuarded) {
    int destroyed = 0;
    {
        boost::intrusive_ptr<Counted> first(new Counted(&destroyed));
        EXPECT_EQ(first->GetRefCount(), 1);
        boost::intrusive_ptr<Counted> second = first;
        EXPECT_EQ(first->GetRefCount(), 2);
        second.reset();
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);

    Counted* guarded = new Counted(&destroyed);
    guarded->Guard(true);
    { boost::intrusive_ptr<Counted> holder(guarded); }
    EXPECT_EQ(destroyed, 1);
    guarded->Guard(false);
    { boost::intrusive_ptr<Counted> holder(guarded); }
    EXPECT_EQ(destroyed, 2);
}

TEST(RefCountedObject, CopiesStartAfresh) {
    int destroyed = 0;
    boost::intrusive_ptr<Counted> original(new Counted(&destroyed));
    Counted copy(*original);
    EXPECT_EQ(copy.GetRefCount(), 0);
    Counted assigned(&destroyed);
    assigned = *original;
    EXPECT_EQ(assigned.GetRefCount(), 0);
    EXPECT_EQ(original->GetRefCount(), 1);
}
