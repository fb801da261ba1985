#include <quorel/utility/RefCountedObject.h>

#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>


using namespace quorel;
using namespace quorel::utility;

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
