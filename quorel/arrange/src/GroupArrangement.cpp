#include <quorel/arrange/GroupArrangement.h>

#include <quorel/arrange/AbstractArrangeableGroup.h>

#include "LineAxis.h"

#include <algorithm>
#include <cmath>

namespace quorel {
namespace arrange {
namespace impl {

using namespace axis;

namespace {

// Inner sizes closer than this in both directions share one distribution;
// spare room smaller than this is not shared out.
constexpr double kTolerance = 0.0001;

// The width a child that still takes part in sharing is offered in a round:
// its current width scaled so that the spare room is shared in proportion to
// the widths of the children still to come in the round (this one included).
// A child without width has nothing to scale, and without remaining width
// there is no proportion: such a child is offered what it has.
float ProportionalTarget(float inWidth, float inSpare, float inRemaining) {
    if (!(inWidth > 0) || !(inRemaining > 0)) {
        return inWidth;
    }
    float const factor = (inSpare + inRemaining) / inRemaining;
    return inWidth * factor;
}

}  // namespace

GroupArrangement::GroupArrangement(LineAxis inAxis, AbstractArrangeableGroup& inGroup,
                                   ArrangementList const& inChildren, SeparatorList const& inSeparators,
                                   bool inOutermost)
    : mAxis(inAxis),
      mMinSize(-1, -1),
      mBestSize(-1, -1),
      mGroup(&inGroup),
      mChildren(inChildren),
      mSeparators(inSeparators),
      mOutermost(inOutermost),
      mPrepared(false),
      mHorizontallyExpandable(false),
      mVerticallyExpandable(false) {
    float const minAlong = LineLength(&MinSize);
    float const minAcross = LineThickness(&MinSize);
    mMinSize = MakePoint(mAxis, minAlong, minAcross);
}

GroupArrangement::~GroupArrangement() = default;

float GroupArrangement::Margins(LineAxis inAxis) const { return mOutermost ? MarginSum(*mGroup, inAxis) : 0.0f; }

float GroupArrangement::SpacingTotal() const {
    return mChildren.empty() ? 0.0f : Spacing(*mGroup, mAxis) * static_cast<float>(mChildren.size() - 1);
}

// The children's sizes along the axis, the gaps between them and the margins.
float GroupArrangement::LineLength(ChildMeasure inMeasure) const {
    float sum = 0;
    for (ArrangementPtr const& child : mChildren) {
        sum += inMeasure(*child, mAxis);
    }
    return sum + SpacingTotal() + Margins(mAxis);
}

// The largest of the children's sizes across the axis, and the margins.
float GroupArrangement::LineThickness(ChildMeasure inMeasure) const {
    LineAxis const cross = Cross(mAxis);
    float thickest = 0;
    for (ArrangementPtr const& child : mChildren) {
        thickest = std::max(thickest, inMeasure(*child, cross));
    }
    return thickest + Margins(cross);
}

float GroupArrangement::ComputeBestWidth() const {
    return IsHorizontal(mAxis) ? LineLength(&BestSize) : LineThickness(&BestSize);
}

float GroupArrangement::ComputeBestHeight() const {
    return IsHorizontal(mAxis) ? LineThickness(&BestSize) : LineLength(&BestSize);
}

void GroupArrangement::Prepare() {
    if (mPrepared) {
        return;
    }
    for (ArrangementPtr const& child : mChildren) {
        child->Prepare();
    }
    mPrepared = true;
    mPlacements.assign(mChildren.size(), Placement{geom::PointT<float>(), false});
    mBestSize.x = ComputeBestWidth();
    mBestSize.y = ComputeBestHeight();
    for (ArrangementPtr const& child : mChildren) {
        mHorizontallyExpandable = mHorizontallyExpandable || child->HorizontallyExpandable();
        mVerticallyExpandable = mVerticallyExpandable || child->VerticallyExpandable();
    }
}

void GroupArrangement::EnsurePrepared() const {
    if (!mPrepared) {
        // Arrangements are always made on the heap as non-const objects.
        const_cast<GroupArrangement*>(this)->Prepare();
    }
}

float GroupArrangement::ExpandedWidth(float inWidth) const {
    return IsHorizontal(mAxis) ? ExpandedAlong(inWidth) : ExpandedAcross(inWidth);
}

float GroupArrangement::ExpandedHeight(float inHeight) const {
    return IsHorizontal(mAxis) ? ExpandedAcross(inHeight) : ExpandedAlong(inHeight);
}

// Children take what they want of the room still left, in order, until the
// room is used up; the gaps are counted for all of them.
float GroupArrangement::ExpandedAlong(float inAvailable) const {
    float const margins = Margins(mAxis);
    float const inner = inAvailable - margins;
    float used = 0;
    for (ArrangementPtr const& child : mChildren) {
        if (!(used < inner)) {
            break;
        }
        used += ExpandedSize(*child, mAxis, inner - used);
    }
    used += SpacingTotal();
    return margins + std::min(used, inner);
}

// Every child is offered the whole inner size; the line takes the largest answer.
float GroupArrangement::ExpandedAcross(float inAvailable) const {
    LineAxis const cross = Cross(mAxis);
    float const margins = Margins(cross);
    float const inner = inAvailable - margins;
    float used = 0;
    for (ArrangementPtr const& child : mChildren) {
        if (!(used < inner)) {
            break;
        }
        used = std::max(used, ExpandedSize(*child, cross, inner));
    }
    return margins + used;
}

void GroupArrangement::Distribute(geom::PointT<float> const& inInnerSize) const {
    EnsurePrepared();
    if (std::fabs(inInnerSize.x - mDistributedSize.x) < kTolerance &&
        std::fabs(inInnerSize.y - mDistributedSize.y) < kTolerance) {
        return;
    }
    mDistributedSize = inInnerSize;
    mContentSize = geom::PointT<float>();
    float const innerAlong = Get(inInnerSize, mAxis);
    // Measured from the minimum size, although the children start at their best.
    float spare = innerAlong - MinSize(*this, mAxis) + Margins(mAxis);
    float total = StartPlacements(Get(inInnerSize, Cross(mAxis)), spare);
    spare = ShareSpareRoom(spare, total);
    Get(mContentSize, mAxis) = innerAlong - spare;
}

// Every child starts at its best size along the axis and what it takes of
// the inner size across it.  Returns the total width of the children that
// take part in sharing.  An expandable child without best width has no
// proportion to grow by: it takes its own limit at once and stays out.
float GroupArrangement::StartPlacements(float inInnerAcross, float& ioSpare) const {
    LineAxis const cross = Cross(mAxis);
    float total = 0;
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        IArrangement const& child = *mChildren[i];
        Placement& placement = mPlacements[i];
        Get(placement.mSize, cross) = ExpandedSize(child, cross, inInnerAcross);
        Get(mContentSize, cross) = std::max(Get(mContentSize, cross), Get(placement.mSize, cross));
        float& width = Get(placement.mSize, mAxis);
        width = BestSize(child, mAxis);
        placement.mExpandable = Expandable(child, mAxis);
        if (!placement.mExpandable) {
            continue;
        }
        if (width > 0) {
            total += width;
            continue;
        }
        float const limit = std::max(MinSize(child, mAxis), ExpandedSize(child, mAxis, width));
        ioSpare -= limit - width;
        width = limit;
        placement.mExpandable = false;
    }
    return total;
}

// Shares inSpare (negative for lack of room) among the expandable children in
// rounds, child by child, in proportion to their current widths.  A child
// that stops at a limit of its own (its minimum, or less growth than offered)
// leaves the sharing, and the rest of the room goes to the others in the next
// round.  Ends when the room is shared, no child takes part, or a round
// changes nothing (float rounding can leave a remainder no share can absorb).
// Returns the room left over.
float GroupArrangement::ShareSpareRoom(float inSpare, float inTotal) const {
    float spare = inSpare;
    float total = inTotal;
    std::size_t const maxRounds = 2 * mChildren.size() + 4;
    for (std::size_t round = 0; round < maxRounds && std::fabs(spare) >= kTolerance && total > 0; ++round) {
        float remaining = total;
        bool changed = false;
        for (std::size_t i = 0; i < mChildren.size(); ++i) {
            Placement& placement = mPlacements[i];
            if (!placement.mExpandable) {
                continue;
            }
            IArrangement const& child = *mChildren[i];
            float& width = Get(placement.mSize, mAxis);
            float const w0 = width;
            float const target = ProportionalTarget(w0, spare, remaining);
            float const w1 = std::max(MinSize(child, mAxis), ExpandedSize(child, mAxis, target));
            if (w1 == target) {
                total += w1 - w0;
            } else {
                placement.mExpandable = false;
                total -= w0;
                changed = true;
            }
            changed = changed || w1 != w0;
            spare -= w1 - w0;
            width = w1;
            remaining -= w0;
        }
        if (!changed) {
            break;
        }
    }
    return spare;
}

geom::PointT<float> GroupArrangement::Arrange(geom::RectT<float> const& inRect) {
    LineAxis const cross = Cross(mAxis);
    float const innerAlong = Extent(inRect, mAxis) - Margins(mAxis);
    float const innerAcross = Extent(inRect, cross) - Margins(cross);
    Distribute(MakePoint(mAxis, innerAlong, innerAcross));

    geom::PointT<float> const contentOrigin(ContentOrigin(inRect, kLineAxis_Horizontal),
                                            ContentOrigin(inRect, kLineAxis_Vertical));
    float const startAlong = Get(contentOrigin, mAxis);
    float const along = Aligned(startAlong, innerAlong - Get(mContentSize, mAxis), Alignment(*mGroup, mAxis));
    if (IsOutermost()) {
        float const across =
            Aligned(Get(contentOrigin, cross), innerAcross - Get(mContentSize, cross), Alignment(*mGroup, cross));
        mGroup->Position(MakePoint(mAxis, along, across));
    }

    geom::PointT<float> const extent = PlaceChildren(along, Get(contentOrigin, cross), innerAcross);
    geom::PointT<float> const result =
        MakePoint(mAxis, std::max(innerAlong, Get(extent, mAxis) - startAlong), std::max(innerAcross, Get(extent, cross)));
    if (IsOutermost()) {
        mGroup->SetDimensions(result);
    }
    return result;
}

float GroupArrangement::ContentOrigin(geom::RectT<float> const& inRect, LineAxis inAxis) const {
    float const origin = Origin(inRect, inAxis);
    return mOutermost ? origin + LeadingMargin(*mGroup, inAxis) : origin;
}

// Arranges the children one after the other from inAlong, each aligned
// across the axis in the inner size, with the separators in the gaps.  The
// pen moves by the size each child reports.  Returns the pen's end position
// along the axis and the thickest reported size across it.
geom::PointT<float> GroupArrangement::PlaceChildren(float inAlong, float inStartAcross, float inInnerAcross) {
    LineAxis const cross = Cross(mAxis);
    float along = inAlong;
    Neighbour previous = {0, 0};
    float thickest = 0;
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        // A copy: a host callback below may redistribute this arrangement.
        Placement const placement = mPlacements[i];
        if (i > 0) {
            along += Spacing(*mGroup, mAxis);
        }
        float const across = Aligned(inStartAcross, inInnerAcross - Get(placement.mSize, cross), Alignment(*mGroup, cross));
        geom::PointT<float> const size = mChildren[i]->Arrange(
            MakeRect(mAxis, along, across, Get(placement.mSize, mAxis), Get(placement.mSize, cross)));
        Neighbour const current = {across, Get(size, cross)};
        if (i > 0) {
            PlaceSeparator(i - 1, along, previous, current);
        }
        along += Get(size, mAxis);
        previous = current;
        thickest = std::max(thickest, current.mThickness);
    }
    return MakePoint(mAxis, along, thickest);
}

// The separator fills the gap that ends at inAlong, as thick as the thinner
// of the two neighbours and level with it.
void GroupArrangement::PlaceSeparator(std::size_t inIndex, float inAlong, Neighbour const& inPrevious,
                                      Neighbour const& inCurrent) const {
    ISeparator* const separator = inIndex < mSeparators.size() ? mSeparators[inIndex] : 0;
    if (!separator) {
        return;
    }
    float const gap = Spacing(*mGroup, mAxis);
    Neighbour const& thinner = inCurrent.mThickness > inPrevious.mThickness ? inPrevious : inCurrent;
    separator->Place(mAxis, MakeRect(mAxis, inAlong - gap, thinner.mPosition, gap, thinner.mThickness));
}

float GroupArrangement::ClippedArea(geom::PointT<float> const& inSize) const {
    LineAxis const cross = Cross(mAxis);
    float const innerAlong = Get(inSize, mAxis) - Margins(mAxis);
    float const innerAcross = Get(inSize, cross) - Margins(cross);
    float clipped = 0;
    float position = 0;
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        float const along = MinSize(*mChildren[i], mAxis);
        float const across = MinSize(*mChildren[i], cross);
        if (innerAlong < position + along) {
            clipped += across * (along - std::max(0.0f, innerAlong - position));
        }
        clipped += along * std::max(0.0f, across - innerAcross);
        position += along;
        if (i > 0) {
            position += Spacing(*mGroup, mAxis);
        }
    }
    return clipped;
}

float GroupArrangement::WastedArea(geom::PointT<float> const& inSize) const {
    LineAxis const cross = Cross(mAxis);
    float const innerAlong = Get(inSize, mAxis) - Margins(mAxis);
    float const innerAcross = Get(inSize, cross) - Margins(cross);
    Distribute(MakePoint(mAxis, innerAlong, innerAcross));
    float wasted = 0;
    float used = 0;
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        float const gap = i == 0 ? 0.0f : Spacing(*mGroup, mAxis);
        float const along = Get(mPlacements[i].mSize, mAxis);
        wasted += mChildren[i]->WastedArea(MakePoint(mAxis, along, innerAcross)) + gap * innerAcross;
        used += gap + along;
    }
    return (innerAlong - used) * innerAcross + wasted + Margins(mAxis) * Get(inSize, cross) +
           Margins(cross) * Get(inSize, mAxis);
}

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
