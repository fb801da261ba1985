// A group kind: columns in a row.
#ifndef QUOREL_ARRANGE_VERTICALWRAPPING_H
#define QUOREL_ARRANGE_VERTICALWRAPPING_H

#include <quorel/arrange/ColumnArrangement.h>
#include <quorel/arrange/RowArrangement.h>
#include <quorel/arrange/WrappingArrangeableGroup.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// Every breaking of the children into columns, side by side in a row.
///
/// Abstract: a host's group class (or HostedGroup) reports the children with
/// VisitChildren and may answer spacing, alignment, margins and separators.
/// inParent does not reach the virtual base IArrangeable unless this class is
/// the most derived one; the parent group's rebuild sets the parent.
class QRL_EXPORT VerticalWrapping : public impl::WrappingArrangeableGroup<impl::ColumnArrangement, impl::RowArrangement> {
public:
    explicit VerticalWrapping(IArrangeable* inParent = 0);
    ~VerticalWrapping() override;
};

}  // namespace arrange
}  // namespace quorel

#endif
