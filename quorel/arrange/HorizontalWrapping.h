// A group kind: rows in a column.
#ifndef QUOREL_ARRANGE_HORIZONTALWRAPPING_H
#define QUOREL_ARRANGE_HORIZONTALWRAPPING_H

#include <quorel/arrange/ColumnArrangement.h>
#include <quorel/arrange/RowArrangement.h>
#include <quorel/arrange/WrappingArrangeableGroup.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// Every breaking of the children into rows, stacked in a column.
///
/// Abstract: a host's group class (or HostedGroup) reports the children with
/// VisitChildren and may answer spacing, alignment, margins and separators.
/// inParent does not reach the virtual base IArrangeable unless this class is
/// the most derived one; the parent group's rebuild sets the parent.
class QRL_EXPORT HorizontalWrapping : public impl::WrappingArrangeableGroup<impl::RowArrangement, impl::ColumnArrangement> {
public:
    explicit HorizontalWrapping(IArrangeable* inParent = 0);
    ~HorizontalWrapping() override;
};

}  // namespace arrange
}  // namespace quorel

#endif
