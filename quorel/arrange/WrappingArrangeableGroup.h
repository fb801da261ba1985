// A group whose children are broken into lines in every possible way.
#ifndef QUOREL_ARRANGE_WRAPPINGARRANGEABLEGROUP_H
#define QUOREL_ARRANGE_WRAPPINGARRANGEABLEGROUP_H

#include <quorel/arrange/AbstractArrangeableGroup.h>
#include <quorel/arrange/ArrangementFactory.h>
#include <quorel/arrange/LineWrapping.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {
namespace impl {

/// Offers every breaking of the children into lines of class L stacked in an
/// arrangement of class S (see AddWrappedArrangements).  The work grows as 2^n
/// with n children taking part, on every rebuild.
template <class L, class S>
class QRL_EXPORT WrappingArrangeableGroup : public virtual AbstractArrangeableGroup {
public:
    explicit WrappingArrangeableGroup(IArrangeable* inParent = 0) : AbstractArrangeableGroup(inParent) {}

protected:
    void AddArrangements(ArrangementSet& ioSet, ArrangementList const& inChildren,
                         SeparatorList const& inSeparators) override {
        AddWrappedArrangements(ioSet, *this, inChildren, inSeparators, &MakeArrangement<L>, &MakeArrangement<S>);
    }
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
