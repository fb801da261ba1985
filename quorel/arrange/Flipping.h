// A group kind: a row or a column.
#ifndef QUOREL_ARRANGE_FLIPPING_H
#define QUOREL_ARRANGE_FLIPPING_H

#include <quorel/arrange/BinaryArrangeableGroup.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/Row.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// A row and a column of the children; the one that suits the rectangle is
/// used.  With one child both have the same minimum size and the column stays.
///
/// Abstract: a host's group class (or HostedGroup) reports the children with
/// VisitChildren and may answer spacing, alignment, margins and separators.
/// inParent does not reach the virtual base IArrangeable unless this class is
/// the most derived one; the parent group's rebuild sets the parent.
class QRL_EXPORT Flipping : public impl::BinaryArrangeableGroup<Row, Column> {
public:
    explicit Flipping(IArrangeable* inParent = 0);
    ~Flipping() override;
};

}  // namespace arrange
}  // namespace quorel

#endif
