// A group kind: a row.
#ifndef QUOREL_ARRANGE_ROW_H
#define QUOREL_ARRANGE_ROW_H

#include <quorel/arrange/BasicArrangeableGroup.h>
#include <quorel/arrange/RowArrangement.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// One row of the children, left to right (RowArrangement).
///
/// Abstract: a host's group class (or HostedGroup) reports the children with
/// VisitChildren and may answer spacing, alignment, margins and separators.
/// inParent does not reach the virtual base IArrangeable unless this class is
/// the most derived one; the parent group's rebuild sets the parent.
class QRL_EXPORT Row : public impl::BasicArrangeableGroup<impl::RowArrangement> {
public:
    explicit Row(IArrangeable* inParent = 0);
    ~Row() override;
};

}  // namespace arrange
}  // namespace quorel

#endif
