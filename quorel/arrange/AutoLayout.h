// A group kind: every wrapping in both directions.
#ifndef QUOREL_ARRANGE_AUTOLAYOUT_H
#define QUOREL_ARRANGE_AUTOLAYOUT_H

#include <quorel/arrange/BinaryArrangeableGroup.h>
#include <quorel/arrange/HorizontalWrapping.h>
#include <quorel/arrange/VerticalWrapping.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// Every breaking into rows and every breaking into columns.  The rows are
/// offered first, so a tie in minimum size goes to the columns.
///
/// Abstract: a host's group class (or HostedGroup) reports the children with
/// VisitChildren and may answer spacing, alignment, margins and separators.
/// inParent does not reach the virtual base IArrangeable unless this class is
/// the most derived one; the parent group's rebuild sets the parent.
class QRL_EXPORT AutoLayout : public impl::BinaryArrangeableGroup<HorizontalWrapping, VerticalWrapping> {
public:
    explicit AutoLayout(IArrangeable* inParent = 0);
    ~AutoLayout() override;
};

}  // namespace arrange
}  // namespace quorel

#endif
