// Host elements for the layout tests: leaves, groups and separators with
// settable answers that record what the engine tells them.
#ifndef QUOREL_TESTS_ARRANGE_TESTELEMENTS_H
#define QUOREL_TESTS_ARRANGE_TESTELEMENTS_H

// AutoLayout brings both wrappings, Flipping the row and the column with their arrangements.
#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/DynamicGroup.h>
#include <quorel/arrange/Flipping.h>
#include <quorel/arrange/Single.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

namespace quorel {
namespace geom {

inline void PrintTo(PointT<float> const& inPoint, std::ostream* ioOut) { *ioOut << inPoint.x << ", " << inPoint.y; }
inline void PrintTo(RectT<float> const& inR, std::ostream* ioOut) {
    *ioOut << inR.x << ", " << inR.y << ", " << inR.width << " x " << inR.height;
}

}  // namespace geom

namespace arrangetest {

using namespace arrange;
typedef geom::PointT<float> Size;
typedef geom::RectT<float> Rect;
float const kNoLimit = std::numeric_limits<float>::infinity();

/// The minimum sizes of a set's arrangements, in set order.
inline std::vector<Size> MinSizes(impl::ArrangementSet const& inSet) {
    std::vector<Size> sizes;
    for (std::size_t i = 0; i < inSet.Size(); ++i) sizes.push_back({inSet.At(i)->MinWidth(), inSet.At(i)->MinHeight()});
    return sizes;
}

/// A host element of class Base: its margins are settable, and it counts every answer it
/// gives, so that a test can see that none was asked.
template <class Base>
struct Answering : Base {
    using Base::Base;
    float LeftMargin() const override { return Count(mMargins[0]); }
    float TopMargin() const override { return Count(mMargins[1]); }
    float RightMargin() const override { return Count(mMargins[2]); }
    float BottomMargin() const override { return Count(mMargins[3]); }
    template <class T> T Count(T inValue) const { return ++mHostCalls, inValue; }
    std::array<float, 4> mMargins{};  // left, top, right, bottom
    mutable int mHostCalls = 0;
};

/// A leaf with settable answers.  Place records the rectangle and returns its
/// size with the margins, so that a line keeps them.
struct TestLeaf : Answering<Single> {
    TestLeaf(float inWidth, float inHeight) : mBest(inWidth, inHeight) {}

    float BestWidth() const override { return Count(mBest.x); }
    float BestHeight() const override { return Count(mBest.y); }
    float MinWidth() const override { return Count(mMin.x < 0 ? mBest.x : mMin.x); }
    float MinHeight() const override { return Count(mMin.y < 0 ? mBest.y : mMin.y); }
    bool HorizontallyExpandable() const override { return Count(mExpandWidth); }
    bool VerticallyExpandable() const override { return Count(mExpandHeight); }
    float ExpandedWidth(float inRoom) const override { return mExpandWidth ? std::min(inRoom, mLimit.x) : mBest.x; }
    float ExpandedHeight(float inRoom) const override { return mExpandHeight ? std::min(inRoom, mLimit.y) : mBest.y; }
    Size Place(Rect const& inRect) override {
        mPlaced.push_back(Count(inRect));
        if (mOnPlace) mOnPlace();
        return Size(inRect.width + mMargins[0] + mMargins[2], inRect.height + mMargins[1] + mMargins[3]);
    }
    Rect const& Last() const { return mPlaced.back(); }

    Size mBest, mMin{-1, -1}, mLimit{kNoLimit, kNoLimit};  // a negative minimum: the best size; the limit of expansion
    bool mExpandWidth = false, mExpandHeight = false;
    std::function<void()> mOnPlace;
    std::vector<Rect> mPlaced;
};

/// Leaves of the given sizes, owned together.
struct Leaves : std::vector<std::unique_ptr<TestLeaf>> {
    Leaves(std::initializer_list<Size> inSizes) {
        for (Size const& size : inSizes) mNodes.push_back(emplace_back(new TestLeaf(size.x, size.y)).get());
    }
    TestLeaf& operator[](std::size_t inIndex) const { return *at(inIndex); }
    std::vector<IArrangeable*> mNodes;
};

/// A separator that keeps its last placement.
struct TestSeparator : ISeparator {
    void Place(int inOrientation, Rect const& inRect) override { mOrientation = inOrientation, mRect = inRect; }
    int mOrientation = -1;
    Rect mRect;
};

/// A group of kind G (or a DynamicGroup, built with inArgs) with settable answers; it owns the
/// separators it builds (when asked to build any) and records Position and SetDimensions.
template <class G>
struct TestGroup : Answering<G> {
    template <class... A>
    explicit TestGroup(std::vector<IArrangeable*> inChildren = {}, A... inArgs)
        : Answering<G>(inArgs...), mKids(std::move(inChildren)) {}

    bool VisitChildren(IArrangeable::ConstVisitor inFunction) const override { return Visit(inFunction); }
    bool VisitChildren(IArrangeable::Visitor inFunction) override { return Visit(inFunction); }
    float HorizontalSpacing() const override { return this->Count(mSpacing.x); }
    float VerticalSpacing() const override { return this->Count(mSpacing.y); }
    AlignmentHorizontal HorizontalAlignment() const override { return this->Count(mAlignH); }
    AlignmentVertical VerticalAlignment() const override { return this->Count(mAlignV); }
    ISeparator* BuildSeparator() override {
        return this->Count(mWithSeparators) ? mOwnedSeparators.emplace_back(new TestSeparator).get() : nullptr;
    }
    void ClearSeparators() override { mClears = this->Count(mClears + 1), mOwnedSeparators.clear(); }
    void Position(Size const& inTopLeft) override { mPositions.push_back(this->Count(inTopLeft)); }
    void SetDimensions(Size const& inSize) override { mDimensions.push_back(this->Count(inSize)); }

    TestSeparator& SeparatorAt(std::size_t inIndex) const { return *mOwnedSeparators.at(inIndex); }
    template <class F> bool Visit(F const& inFunction) const { for (auto* kid : mKids) inFunction(*kid); return true; }

    std::vector<IArrangeable*> mKids;
    Size mSpacing;
    AlignmentHorizontal mAlignH = kAlignmentHorizontal_Left;
    AlignmentVertical mAlignV = kAlignmentVertical_Top;
    bool mWithSeparators = false;
    std::vector<std::unique_ptr<TestSeparator>> mOwnedSeparators;
    std::vector<Size> mPositions, mDimensions;
    int mClears = 0;
};

}  // namespace arrangetest
}  // namespace quorel

#endif
