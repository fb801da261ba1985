// A group that offers the arrangements of two group kinds.
#ifndef QUOREL_ARRANGE_BINARYARRANGEABLEGROUP_H
#define QUOREL_ARRANGE_BINARYARRANGEABLEGROUP_H

#include <quorel/arrange/AbstractArrangeableGroup.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {
namespace impl {

/// Offers what A offers, then what B offers.  A and B share one
/// AbstractArrangeableGroup (a virtual base), so both work on the same
/// children, separators and answers.  Among equal minimum sizes B's offer
/// therefore stays.
template <class A, class B>
class QRL_EXPORT BinaryArrangeableGroup : public A, public B {
public:
    explicit BinaryArrangeableGroup(IArrangeable* inParent = 0) : A(inParent), B(inParent) {}

protected:
    void AddArrangements(ArrangementSet& ioSet, ArrangementList const& inChildren,
                         SeparatorList const& inSeparators) override {
        A::AddArrangements(ioSet, inChildren, inSeparators);
        B::AddArrangements(ioSet, inChildren, inSeparators);
    }
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
