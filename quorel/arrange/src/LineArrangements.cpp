#include <quorel/arrange/ColumnArrangement.h>
#include <quorel/arrange/RowArrangement.h>

namespace quorel {
namespace arrange {
namespace impl {

RowArrangement::RowArrangement(AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                               SeparatorList const& inSeparators, bool inOutermost)
    : GroupArrangement(kLineAxis_Horizontal, inGroup, inChildren, inSeparators, inOutermost) {}

RowArrangement::~RowArrangement() = default;

ColumnArrangement::ColumnArrangement(AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                                     SeparatorList const& inSeparators, bool inOutermost)
    : GroupArrangement(kLineAxis_Vertical, inGroup, inChildren, inSeparators, inOutermost) {}

ColumnArrangement::~ColumnArrangement() = default;

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
