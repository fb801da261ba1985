// Children stacked from top to bottom.
#ifndef QUOREL_ARRANGE_COLUMNARRANGEMENT_H
#define QUOREL_ARRANGE_COLUMNARRANGEMENT_H

#include <quorel/arrange/GroupArrangement.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {
namespace impl {

/// A GroupArrangement along the vertical axis: a row with the axes exchanged.
/// The main alignment is the group's vertical one, the spacing its vertical
/// spacing, separators get orientation 1.
class QRL_EXPORT ColumnArrangement : public GroupArrangement {
public:
    ColumnArrangement(AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                      SeparatorList const& inSeparators, bool inOutermost);
    ~ColumnArrangement() override;
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
