// Reading and writing sizes, rectangles and group answers along or across
// a line's axis, so that one implementation serves rows and columns.
#ifndef QUOREL_ARRANGE_SRC_LINEAXIS_H
#define QUOREL_ARRANGE_SRC_LINEAXIS_H

#include <quorel/arrange/AbstractArrangeableGroup.h>
#include <quorel/arrange/Arrangement.h>
#include <quorel/arrange/GroupArrangement.h>
#include <quorel/geom/Point.h>
#include <quorel/geom/Rect.h>

namespace quorel {
namespace arrange {
namespace impl {
namespace axis {

inline bool IsHorizontal(LineAxis inAxis) { return inAxis == kLineAxis_Horizontal; }

/// The other axis.
inline LineAxis Cross(LineAxis inAxis) { return IsHorizontal(inAxis) ? kLineAxis_Vertical : kLineAxis_Horizontal; }

inline float Get(geom::PointT<float> const& inPoint, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inPoint.x : inPoint.y;
}

inline float& Get(geom::PointT<float>& ioPoint, LineAxis inAxis) { return IsHorizontal(inAxis) ? ioPoint.x : ioPoint.y; }

/// A point from its coordinate along inAxis and the one across it.
inline geom::PointT<float> MakePoint(LineAxis inAxis, float inAlong, float inAcross) {
    return IsHorizontal(inAxis) ? geom::PointT<float>(inAlong, inAcross) : geom::PointT<float>(inAcross, inAlong);
}

inline geom::RectT<float> MakeRect(LineAxis inAxis, float inPositionAlong, float inPositionAcross, float inSizeAlong,
                                   float inSizeAcross) {
    return IsHorizontal(inAxis) ? geom::RectT<float>(inPositionAlong, inPositionAcross, inSizeAlong, inSizeAcross)
                                : geom::RectT<float>(inPositionAcross, inPositionAlong, inSizeAcross, inSizeAlong);
}

inline float Origin(geom::RectT<float> const& inRect, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inRect.x : inRect.y;
}

inline float Extent(geom::RectT<float> const& inRect, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inRect.width : inRect.height;
}

// An arrangement's answers on one axis.

inline float MinSize(IArrangement const& inArrangement, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inArrangement.MinWidth() : inArrangement.MinHeight();
}

inline float BestSize(IArrangement const& inArrangement, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inArrangement.BestWidth() : inArrangement.BestHeight();
}

inline float ExpandedSize(IArrangement const& inArrangement, LineAxis inAxis, float inAvailable) {
    return IsHorizontal(inAxis) ? inArrangement.ExpandedWidth(inAvailable) : inArrangement.ExpandedHeight(inAvailable);
}

inline bool Expandable(IArrangement const& inArrangement, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inArrangement.HorizontallyExpandable() : inArrangement.VerticallyExpandable();
}

// A group's answers on one axis.

inline float Spacing(AbstractArrangeableGroup const& inGroup, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inGroup.HorizontalSpacing() : inGroup.VerticalSpacing();
}

inline int Alignment(AbstractArrangeableGroup const& inGroup, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? static_cast<int>(inGroup.HorizontalAlignment())
                                : static_cast<int>(inGroup.VerticalAlignment());
}

/// The margin before the content: left or top.
inline float LeadingMargin(AbstractArrangeableGroup const& inGroup, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inGroup.LeftMargin() : inGroup.TopMargin();
}

/// Both margins: right + left, or bottom + top.
inline float MarginSum(AbstractArrangeableGroup const& inGroup, LineAxis inAxis) {
    return IsHorizontal(inAxis) ? inGroup.RightMargin() + inGroup.LeftMargin()
                                : inGroup.BottomMargin() + inGroup.TopMargin();
}

/// The start of content in a space that begins at inOrigin and has inSpare
/// more room than the content: alignment 1 centres, 2 puts all the spare room
/// first, anything else none.  A negative inSpare moves the content before
/// inOrigin.
inline float Aligned(float inOrigin, float inSpare, int inAlignment) {
    switch (inAlignment) {
        case 1:
            return inOrigin + inSpare * 0.5f;
        case 2:
            return inOrigin + inSpare;
        default:
            return inOrigin;
    }
}

}  // namespace axis
}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
