// A group with one arrangement of a fixed class.
#ifndef QUOREL_ARRANGE_BASICARRANGEABLEGROUP_H
#define QUOREL_ARRANGE_BASICARRANGEABLEGROUP_H

#include <quorel/arrange/AbstractArrangeableGroup.h>
#include <quorel/arrange/ArrangementFactory.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {
namespace impl {

/// Offers, for each combination of child arrangements, one outermost
/// arrangement of class A.  The host still implements VisitChildren.
template <class A>
class QRL_EXPORT BasicArrangeableGroup : public virtual AbstractArrangeableGroup {
public:
    explicit BasicArrangeableGroup(IArrangeable* inParent = 0) : AbstractArrangeableGroup(inParent) {}

protected:
    void AddArrangements(ArrangementSet& ioSet, ArrangementList const& inChildren,
                         SeparatorList const& inSeparators) override {
        ioSet.AddArrangement(MakeArrangement<A>(*this, inChildren, inSeparators, true));
    }
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
