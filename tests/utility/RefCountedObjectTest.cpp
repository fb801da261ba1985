#include <quorel/utility/RefCountedObject.h>

#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

namespace {

class Counted : public quorel::utility::RefCountedObject {
public:
    explicit Counted(int* ioDestroyed) : mDestroyed(ioDestroyed) {}
    Counted(Counted const& inOther) = default;
    Counted& operator=(Counted const& inOther) = default;
    ~Counted() override { ++*mDestroyed; }
    using RefCountedObject::SetDeletionGuard;

private:
    int* mDestroyed;
};

}  // namespace

TEST(RefCountedObject, LastReleaseDeletesUnlessGuardedAndCopiesStartAfresh) {
    int destroyed = 0;
    {
        boost::intrusive_ptr<Counted> first(new Counted(&destroyed));
        boost::intrusive_ptr<Counted> second = first;
        EXPECT_EQ(first->GetRefCount(), 2);
        Counted copy(*first);
        Counted assigned(&destroyed);
        assigned = *first;
        second.reset();
        EXPECT_TRUE(copy.GetRefCount() == 0 && assigned.GetRefCount() == 0 && first->GetRefCount() == 1);
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 3);  // the copies and the shared object

    Counted* guarded = new Counted(&destroyed);
    guarded->SetDeletionGuard(true);
    { boost::intrusive_ptr<Counted> holder(guarded); }
    EXPECT_EQ(destroyed, 3);
    guarded->SetDeletionGuard(false);
    { boost::intrusive_ptr<Counted> holder(guarded); }
    EXPECT_EQ(destroyed, 4);
}
