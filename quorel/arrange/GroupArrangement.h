// The layout of a line of children: a row or a column.
#ifndef QUOREL_ARRANGE_GROUPARRANGEMENT_H
#define QUOREL_ARRANGE_GROUPARRANGEMENT_H

#include <quorel/arrange/Arrangement.h>
#include <quorel/arrange/Separator.h>
#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>
#include <quorel/utility/Export.h>

#include <cstddef>
#include <vector>

namespace quorel {
namespace arrange {
namespace impl {

class AbstractArrangeableGroup;

/// The direction in which a line runs.  The values are also the separator
/// orientations of ISeparator::Place.
enum LineAxis : int { kLineAxis_Horizontal = 0, kLineAxis_Vertical = 1 };

/// Children side by side along an axis, with the group's spacing between them
/// and a separator in each gap.
///
/// Along the axis the children get their best sizes, and spare room (or the
/// lack of it) is shared among the expandable ones in proportion to their
/// sizes; across the axis each child gets what it takes of the inner size and
/// is aligned in it.  Nothing is rounded to any unit.
///
/// An outermost arrangement stands for its group: it applies the group's
/// margins and reports the content's position and size (Position,
/// SetDimensions).  An inner line of a wrapped group does neither, but still
/// aligns its children.
///
/// The minimum size is known at construction; the best size and
/// expandability after Prepare.  The last distribution is cached, so that
/// weighing an arrangement (WastedArea) and carrying it out at the same size
/// share the work.  Use by one thread at a time.
class QRL_EXPORT GroupArrangement : public IArrangement {
public:
    /// The share of one child in the current distribution.
    struct Placement {
        geom::PointT<float> mSize;  ///< width and height given to the child
        bool mExpandable;           ///< still takes part in sharing along the axis
    };

    ~GroupArrangement() override;

    /// Distributes the room inside the margins, places the children and the
    /// separators from the aligned start, and returns the size used inside the
    /// margins (at least the inner size).  Children are moved on by the size
    /// they report, not by the size they were given.
    geom::PointT<float> Arrange(geom::RectT<float> const& inRect) override;
    bool HorizontallyExpandable() const override { return mHorizontallyExpandable; }
    bool VerticallyExpandable() const override { return mVerticallyExpandable; }
    float MinWidth() const override { return mMinSize.x; }
    float MinHeight() const override { return mMinSize.y; }
    float BestWidth() const override { return mBestSize.x; }
    float BestHeight() const override { return mBestSize.y; }
    float ExpandedWidth(float inWidth) const override;
    float ExpandedHeight(float inHeight) const override;
    /// The area of the children's minimum sizes that falls outside inSize.
    float ClippedArea(geom::PointT<float> const& inSize) const override;
    /// What the distribution at inSize leaves unused, margins and gaps
    /// included, down the tree.
    float WastedArea(geom::PointT<float> const& inSize) const override;
    /// Prepares the children and computes the best size and expandability;
    /// only the first call does anything.
    void Prepare() override;
    bool IsOutermost() const override { return mOutermost; }

    /// Computes the placements for the inner size (margins already taken
    /// off), unless the last distribution was for a size within 0.0001 in both
    /// directions.  Prepares the arrangement first if needed.
    void Distribute(geom::PointT<float> const& inInnerSize) const;

    /// The current placements, one per child, after Prepare.
    std::vector<Placement> const& Placements() const { return mPlacements; }
    /// The size the last distribution used (width and height).
    geom::PointT<float> ContentSize() const { return mContentSize; }
    /// The axis along which the children lie.
    LineAxis Axis() const { return mAxis; }
    /// The children's arrangements, in order.
    ArrangementList const& Children() const { return mChildren; }

protected:
    /// inSeparators must have at least one entry fewer than inChildren (missing
    /// entries count as null).  Both lists are copied.
    GroupArrangement(LineAxis inAxis, AbstractArrangeableGroup& inGroup, ArrangementList const& inChildren,
                     SeparatorList const& inSeparators, bool inOutermost);

    /// The best width, margins included; called once by Prepare.
    virtual float ComputeBestWidth() const;
    /// The best height, margins included; called once by Prepare.
    virtual float ComputeBestHeight() const;

private:
    typedef float (*ChildMeasure)(IArrangement const&, LineAxis);

    // Where a placed child lies across the axis, and how thick it turned out.
    struct Neighbour {
        float mPosition;
        float mThickness;
    };

    float Margins(LineAxis inAxis) const;
    float SpacingTotal() const;
    float LineLength(ChildMeasure inMeasure) const;
    float LineThickness(ChildMeasure inMeasure) const;
    float ExpandedAlong(float inAvailable) const;
    float ExpandedAcross(float inAvailable) const;
    void EnsurePrepared() const;
    float StartPlacements(float inInnerAcross, float& ioSpare) const;
    float ShareSpareRoom(float inSpare, float inTotal) const;
    float ContentOrigin(geom::RectT<float> const& inRect, LineAxis inAxis) const;
    geom::PointT<float> PlaceChildren(float inAlong, float inStartAcross, float inInnerAcross);
    void PlaceSeparator(std::size_t inIndex, float inAlong, Neighbour const& inPrevious,
                        Neighbour const& inCurrent) const;

    LineAxis mAxis;
    geom::PointT<float> mMinSize;
    geom::PointT<float> mBestSize;
    AbstractArrangeableGroup* mGroup;
    // The cached distribution: changed by Distribute, also from const callers.
    mutable std::vector<Placement> mPlacements;
    mutable geom::PointT<float> mContentSize;
    mutable geom::PointT<float> mDistributedSize;
    ArrangementList mChildren;
    SeparatorList mSeparators;
    bool mOutermost;
    bool mPrepared;
    bool mHorizontallyExpandable;
    bool mVerticallyExpandable;
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
