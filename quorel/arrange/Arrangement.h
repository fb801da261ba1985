// One way of arranging an element or a group.
#ifndef QUOREL_ARRANGE_ARRANGEMENT_H
#define QUOREL_ARRANGE_ARRANGEMENT_H

#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/RefCountedObject.h>

#include <boost/intrusive_ptr.hpp>

#include <vector>

namespace quorel {
namespace arrange {
namespace impl {

/// An arrangement: its sizes, how it grows, and how to carry it out.
///
/// Arrangements are shared by the sets and group arrangements that refer to
/// them (boost::intrusive_ptr) and die with the last reference.  All sizes
/// include the arranged thing's own margins.
class QRL_EXPORT IArrangement : public utility::RefCountedObject {
public:
    ~IArrangement() override;

    /// Carries the arrangement out in inRect; returns the size taken.
    virtual geom::PointT<float> Arrange(geom::RectT<float> const& inRect) = 0;
    /// Whether it can use more width than its best width.
    virtual bool HorizontallyExpandable() const = 0;
    /// Whether it can use more height than its best height.
    virtual bool VerticallyExpandable() const = 0;
    /// The smallest width at which nothing is clipped.
    virtual float MinWidth() const = 0;
    /// The smallest height at which nothing is clipped.
    virtual float MinHeight() const = 0;
    /// The width it would like.
    virtual float BestWidth() const = 0;
    /// The height it would like.
    virtual float BestHeight() const = 0;
    /// The width it takes when offered inWidth.
    virtual float ExpandedWidth(float inWidth) const = 0;
    /// The height it takes when offered inHeight.
    virtual float ExpandedHeight(float inHeight) const = 0;
    /// How much area is cut off when it gets only inSize.
    virtual float ClippedArea(geom::PointT<float> const& inSize) const = 0;
    /// How much of inSize stays unused.
    virtual float WastedArea(geom::PointT<float> const& inSize) const = 0;
    /// Completes what the constructor left out; called once on the survivors
    /// of a set, before any size other than the minimum is asked.
    virtual void Prepare() = 0;
    /// Whether it stands for a whole element or group (and so talks to it).
    virtual bool IsOutermost() const = 0;
};

typedef boost::intrusive_ptr<IArrangement> ArrangementPtr;
/// The arrangements of a group's children in one combination, in child order.
typedef std::vector<ArrangementPtr> ArrangementList;

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
