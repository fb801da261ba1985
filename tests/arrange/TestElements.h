// Host elements for the layout tests: leaves, groups and separators with
// settable answers that record what the engine tells them.
#ifndef QUOREL_TESTS_ARRANGE_TESTELEMENTS_H
#define QUOREL_TESTS_ARRANGE_TESTELEMENTS_H

#include <quorel/arrange/AbstractArrangeableGroup.h>
#include <quorel/arrange/Separator.h>
#include <quorel/arrange/Single.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <vector>

namespace quorel {
namespace geom {

inline void PrintTo(PointT<float> const& inPoint, std::ostream* ioStream) {
    *ioStream << "(" << inPoint.x << ", " << inPoint.y << ")";
}

inline void PrintTo(RectT<float> const& inRect, std::ostream* ioStream) {
    *ioStream << "(" << inRect.x << ", " << inRect.y << ", " << inRect.width << " x " << inRect.height << ")";
}

}  // namespace geom

namespace arrangetest {

using geom::PointT;
using geom::RectT;

typedef PointT<float> Size;
typedef RectT<float> Rect;

/// Compares with a tolerance far below anything a layout distinguishes, but
/// above float rounding of proportional shares.
inline ::testing::AssertionResult RectNear(Rect const& inActual, Rect const& inExpected) {
    float const tolerance = 1e-3f;
    if (std::abs(inActual.x - inExpected.x) <= tolerance && std::abs(inActual.y - inExpected.y) <= tolerance &&
        std::abs(inActual.width - inExpected.width) <= tolerance &&
        std::abs(inActual.height - inExpected.height) <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << ::testing::PrintToString(inActual) << " is not "
                                         << ::testing::PrintToString(inExpected);
}

/// A leaf with settable answers.  Place records the rectangle and returns its
/// size with the margins, so that a line keeps them.
class TestLeaf : public arrange::Single {
public:
    TestLeaf(float inWidth, float inHeight) : mBest(inWidth, inHeight) {}

    float BestWidth() const override { return Count(mBest.x); }
    float BestHeight() const override { return Count(mBest.y); }
    float MinWidth() const override { return Count(mMin.x < 0 ? mBest.x : mMin.x); }
    float MinHeight() const override { return Count(mMin.y < 0 ? mBest.y : mMin.y); }
    bool HorizontallyExpandable() const override { return Count(mExpandWidth); }
    bool VerticallyExpandable() const override { return Count(mExpandHeight); }
    float ExpandedWidth(float inWidth) const override {
        return mExpandWidth ? Count(std::min(inWidth, mLimit.x)) : BestWidth();
    }
    float ExpandedHeight(float inHeight) const override {
        return mExpandHeight ? Count(std::min(inHeight, mLimit.y)) : BestHeight();
    }
    float LeftMargin() const override { return Count(mMargins[0]); }
    float TopMargin() const override { return Count(mMargins[1]); }
    float RightMargin() const override { return Count(mMargins[2]); }
    float BottomMargin() const override { return Count(mMargins[3]); }

    Size Place(Rect const& inRect) override {
        ++mHostCalls;
        mPlaced.push_back(inRect);
        if (mOnPlace) {
            mOnPlace();
        }
        return Size(inRect.width + mMargins[0] + mMargins[2], inRect.height + mMargins[1] + mMargins[3]);
    }

    TestLeaf& Expanding(bool inWidth, bool inHeight = false) {
        mExpandWidth = inWidth;
        mExpandHeight = inHeight;
        return *this;
    }
    TestLeaf& Margins(float inLeft, float inTop, float inRight, float inBottom) {
        mMargins[0] = inLeft;
        mMargins[1] = inTop;
        mMargins[2] = inRight;
        mMargins[3] = inBottom;
        return *this;
    }

    Rect const& Last() const { return mPlaced.back(); }

    Size mBest;
    Size mMin{-1, -1};  // negative: the best size
    bool mExpandWidth = false;
    bool mExpandHeight = false;
    Size mLimit{std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()};  // of expansion
    float mMargins[4] = {0, 0, 0, 0};
    std::function<void()> mOnPlace;
    std::vector<Rect> mPlaced;
    mutable int mHostCalls = 0;

private:
    template <class T>
    T Count(T inValue) const {
        ++mHostCalls;
        return inValue;
    }
};

/// A separator that keeps its last placement.
class TestSeparator : public arrange::ISeparator {
public:
    void Place(int inOrientation, Rect const& inRect) override {
        mOrientation = inOrientation;
        mRect = inRect;
        ++mPlacements;
    }

    int mOrientation = -1;
    Rect mRect;
    int mPlacements = 0;
};

/// A group of kind G with settable answers; it owns the separators it builds
/// (when asked to build any) and records Position and SetDimensions.
template <class G>
class TestGroup : public G {
public:
    TestGroup() = default;
    explicit TestGroup(std::vector<arrange::IArrangeable*> inChildren) : mKids(std::move(inChildren)) {}

    bool VisitChildren(arrange::IArrangeable::ConstVisitor inFunction) const override {
        ++mHostCalls;
        if (mRefuseVisit) {
            return false;
        }
        for (arrange::IArrangeable const* kid : mKids) {
            inFunction(*kid);
        }
        return true;
    }
    bool VisitChildren(arrange::IArrangeable::Visitor inFunction) override {
        ++mHostCalls;
        if (mRefuseVisit) {
            return false;
        }
        for (arrange::IArrangeable* kid : mKids) {
            inFunction(*kid);
        }
        return true;
    }
    float HorizontalSpacing() const override { return Count(mSpacing.x); }
    float VerticalSpacing() const override { return Count(mSpacing.y); }
    arrange::AlignmentHorizontal HorizontalAlignment() const override { return Count(mAlignH); }
    arrange::AlignmentVertical VerticalAlignment() const override { return Count(mAlignV); }
    float LeftMargin() const override { return Count(mMargins[0]); }
    float TopMargin() const override { return Count(mMargins[1]); }
    float RightMargin() const override { return Count(mMargins[2]); }
    float BottomMargin() const override { return Count(mMargins[3]); }
    arrange::ISeparator* BuildSeparator() override {
        ++mHostCalls;
        if (!mWithSeparators) {
            return nullptr;
        }
        mOwnedSeparators.emplace_back(new TestSeparator);
        return mOwnedSeparators.back().get();
    }
    void ClearSeparators() override {
        ++mHostCalls;
        ++mClears;
        mOwnedSeparators.clear();
    }
    void Position(Size const& inTopLeft) override {
        ++mHostCalls;
        mPositions.push_back(inTopLeft);
    }
    void SetDimensions(Size const& inSize) override {
        ++mHostCalls;
        mDimensions.push_back(inSize);
    }

    TestGroup& Margins(float inLeft, float inTop, float inRight, float inBottom) {
        mMargins[0] = inLeft;
        mMargins[1] = inTop;
        mMargins[2] = inRight;
        mMargins[3] = inBottom;
        return *this;
    }
    TestSeparator& SeparatorAt(std::size_t inIndex) const { return *mOwnedSeparators.at(inIndex); }

    std::vector<arrange::IArrangeable*> mKids;
    Size mSpacing;
    arrange::AlignmentHorizontal mAlignH = arrange::kAlignmentHorizontal_Left;
    arrange::AlignmentVertical mAlignV = arrange::kAlignmentVertical_Top;
    float mMargins[4] = {0, 0, 0, 0};
    bool mWithSeparators = false;
    bool mRefuseVisit = false;
    std::vector<std::unique_ptr<TestSeparator>> mOwnedSeparators;
    std::vector<Size> mPositions;
    std::vector<Size> mDimensions;
    int mClears = 0;
    mutable int mHostCalls = 0;

private:
    template <class T>
    T Count(T inValue) const {
        ++mHostCalls;
        return inValue;
    }
};

}  // namespace arrangetest
}  // namespace quorel

#endif
