// A group kind: a column.
#ifndef QUOREL_ARRANGE_COLUMN_H
#define QUOREL_ARRANGE_COLUMN_H

#include <quorel/arrange/BasicArrangeableGroup.h>
#include <quorel/arrange/ColumnArrangement.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// One column of the children, top to bottom (ColumnArrangement).
///
/// Abstract: a host's group class (or HostedGroup) reports the children with
/// VisitChildren and may answer spacing, alignment, margins and separators.
/// inParent does not reach the virtual base IArrangeable unless this class is
/// the most derived one; the parent group's rebuild sets the parent.
class QRL_EXPORT Column : public impl::BasicArrangeableGroup<impl::ColumnArrangement> {
public:
    explicit Column(IArrangeable* inParent = 0);
    ~Column() override;
};

}  // namespace arrange
}  // namespace quorel

#endif
