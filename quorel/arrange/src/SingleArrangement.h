// The one arrangement of a Single: a snapshot of the element's answers.
#ifndef QUOREL_ARRANGE_SRC_SINGLEARRANGEMENT_H
#define QUOREL_ARRANGE_SRC_SINGLEARRANGEMENT_H

#include <quorel/arrange/Arrangement.h>

namespace quorel {
namespace arrange {

class Single;

namespace impl {

/// Reads the element's expandability, margins and sizes once, at
/// construction; only ExpandedWidth, ExpandedHeight and Place are asked later.
/// All sizes include the margins.
class SingleArrangement : public IArrangement {
public:
    explicit SingleArrangement(Single& inItem);

    /// Places the element in inRect less its margins; returns what Place returned.
    geom::PointT<float> Arrange(geom::RectT<float> const& inRect) override;
    bool HorizontallyExpandable() const override { return mHorizontallyExpandable; }
    bool VerticallyExpandable() const override { return mVerticallyExpandable; }
    float MinWidth() const override { return mMinWidth; }
    float MinHeight() const override { return mMinHeight; }
    float BestWidth() const override { return mBestWidth; }
    float BestHeight() const override { return mBestHeight; }
    float ExpandedWidth(float inWidth) const override;
    float ExpandedHeight(float inHeight) const override;
    float ClippedArea(geom::PointT<float> const& inSize) const override;
    float WastedArea(geom::PointT<float> const& inSize) const override;
    void Prepare() override {}
    bool IsOutermost() const override { return true; }

private:
    Single* mItem;
    bool mHorizontallyExpandable;
    bool mVerticallyExpandable;
    float mLeft;
    float mTop;
    float mHorizontalMargins;
    float mVerticalMargins;
    float mMinWidth;
    float mMinHeight;
    float mBestWidth;
    float mBestHeight;
};

}  // namespace impl
}  // namespace arrange
}  // namespace quorel

#endif
