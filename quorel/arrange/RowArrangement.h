// Children side by side from left to right.
#ifndef QUOREL_ARRANGE_ROWARRANGEMENT_H
#define QUOREL_ARRANGE_ROWARRANGEMENT_H

#include <quorel/arrange/GroupArrangement.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {
namespace impl {

/// A GroupArrangement along the horizontal axis: the main alignment is the
/// group's horizontal one, the spacing its horizontal spacing, separators get
/// orientation 0.
///
/// Minimum width: the children's minimum widths, the spacing between them and
/// (when outermost) the left and right margins; minimum height: the tallest
/// minimum height and the top and bottom margins.  The best size likewise.
class QRL_EXPORT RowArrangement : public GroupArrangement {
public:
    RowArrangement(AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                   SeparatorList const& inSeparators, bool inOutermost);
    ~RowArrangement() override;
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
