// Making a group arrangement of a chosen class through one function type.
#ifndef QUOREL_ARRANGE_ARRANGEMENTFACTORY_H
#define QUOREL_ARRANGE_ARRANGEMENTFACTORY_H

#include <quorel/arrange/Arrangement.h>
#include <quorel/arrange/Separator.h>

namespace quorel {
namespace arrange {
namespace impl {

class AbstractArrangeableGroup;

/// Makes an arrangement of inGroup over inChildren with inSeparators.
typedef ArrangementPtr (*ArrangementFactory)(AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                                             SeparatorList const& inSeparators, bool inOutermost);

/// The ArrangementFactory for class A (RowArrangement, ColumnArrangement or a
/// class with their constructor).
template <class A>
ArrangementPtr MakeArrangement(AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                               SeparatorList const& inSeparators, bool inOutermost) {
    return ArrangementPtr(new A(inGroup, inChildren, inSeparators, inOutermost));
}

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
