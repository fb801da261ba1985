#include "SingleArrangement.h"

#include <quorel/arrange/Single.h>

#include <algorithm>

namespace quorel {
namespace arrange {
namespace impl {

SingleArrangement::SingleArrangement(Single& inItem)
    : mItem(&inItem),
      mHorizontallyExpandable(inItem.HorizontallyExpandable()),
      mVerticallyExpandable(inItem.VerticallyExpandable()),
      mLeft(inItem.LeftMargin()),
      mTop(inItem.TopMargin()),
      mHorizontalMargins(inItem.RightMargin() + mLeft),
      mVerticalMargins(inItem.BottomMargin() + mTop),
      mMinWidth(inItem.MinWidth() + mHorizontalMargins),
      mMinHeight(inItem.MinHeight() + mVerticalMargins),
      mBestWidth(inItem.BestWidth() + mHorizontalMargins),
      mBestHeight(inItem.BestHeight() + mVerticalMargins) {}

geom::PointT<float> SingleArrangement::Arrange(geom::RectT<float> const& inRect) {
    return mItem->Place(geom::RectT<float>(inRect.x + mLeft, inRect.y + mTop, inRect.width - mHorizontalMargins,
                                           inRect.height - mVerticalMargins));
}

float SingleArrangement::ExpandedWidth(float inWidth) const {
    return mItem->ExpandedWidth(inWidth - mHorizontalMargins) + mHorizontalMargins;
}

float SingleArrangement::ExpandedHeight(float inHeight) const {
    return mItem->ExpandedHeight(inHeight - mVerticalMargins) + mVerticalMargins;
}

float SingleArrangement::ClippedArea(geom::PointT<float> const& inSize) const {
    return mMinHeight * std::max(0.0f, mMinWidth - inSize.x) + mMinWidth * std::max(0.0f, mMinHeight - inSize.y);
}

float SingleArrangement::WastedArea(geom::PointT<float> const& inSize) const {
    return inSize.x * inSize.y - ExpandedWidth(inSize.x) * ExpandedHeight(inSize.y);
}

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
