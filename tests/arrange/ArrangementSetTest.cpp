#include <quorel/arrange/ArrangementSet.h>

#include "TestElements.h"

#include <gtest/gtest.h>

#include <map>

using namespace quorel::arrange::impl;
using quorel::arrangetest::Rect;
using quorel::arrangetest::Size;

namespace {

// An arrangement with fixed answers; the clipped and wasted areas may depend
// on the size asked about.
class FakeArrangement : public IArrangement {
public:
    FakeArrangement(float inMinWidth, float inMinHeight) : mMin(inMinWidth, inMinHeight), mBest(mMin) {}

    Size Arrange(Rect const& inRect) override {
        ++mArranged;
        return Size(inRect.width, inRect.height);
    }
    bool HorizontallyExpandable() const override { return false; }
    bool VerticallyExpandable() const override { return false; }
    float MinWidth() const override { return mMin.x; }
    float MinHeight() const override { return mMin.y; }
    float BestWidth() const override { return mBest.x; }
    float BestHeight() const override { return mBest.y; }
    float ExpandedWidth(float) const override { return mBest.x; }
    float ExpandedHeight(float) const override { return mBest.y; }
    float ClippedArea(Size const&) const override { return mClipped; }
    float WastedArea(Size const&) const override { return mWasted; }
    void Prepare() override { ++mPrepared; }
    bool IsOutermost() const override { return true; }

    FakeArrangement* Best(float inWidth, float inHeight) {
        mBest = Size(inWidth, inHeight);
        return this;
    }
    FakeArrangement* Areas(float inClipped, float inWasted) {
        mClipped = inClipped;
        mWasted = inWasted;
        return this;
    }

    Size mMin;
    Size mBest;
    float mClipped = 0;
    float mWasted = 0;
    int mArranged = 0;
    int mPrepared = 0;
};

typedef boost::intrusive_ptr<FakeArrangement> FakePtr;

FakePtr Fake(float inMinWidth, float inMinHeight) { return FakePtr(new FakeArrangement(inMinWidth, inMinHeight)); }

std::vector<Size> MinSizes(ArrangementSet const& inSet) {
    std::vector<Size> sizes;
    for (std::size_t i = 0; i < inSet.Size(); ++i) {
        sizes.push_back(Size(inSet.At(i)->MinWidth(), inSet.At(i)->MinHeight()));
    }
    return sizes;
}

}  // namespace

TEST(ArrangementSet, AddingDropsWhatIsOutdone) {
    ArrangementSet set;
    set.AddArrangement(Fake(100, 20));
    set.AddArrangement(Fake(50, 40));
    set.AddArrangement(Fake(120, 20));  // outdone by (100, 20)
    EXPECT_EQ(MinSizes(set), (std::vector<Size>{{100, 20}, {50, 40}}));

    set.AddArrangement(Fake(50, 20));  // outdoes both
    EXPECT_EQ(MinSizes(set), (std::vector<Size>{{50, 20}}));

    set.AddArrangement(nullptr);
    EXPECT_EQ(set.Size(), 1u);
}

TEST(ArrangementSet, LaterOfEqualMinimumSizesStaysAndOrderIsHistory) {
    ArrangementSet set;
    FakePtr const first = Fake(30, 30);
    FakePtr const second = Fake(30, 30);
    set.AddArrangement(Fake(10, 90));
    set.AddArrangement(first);
    set.AddArrangement(Fake(90, 10));
    set.AddArrangement(second);
    ASSERT_EQ(set.Size(), 3u);
    EXPECT_EQ(set.At(2), second) << "replaced and moved to the end";
    EXPECT_EQ(MinSizes(set), (std::vector<Size>{{10, 90}, {90, 10}, {30, 30}}));

    // (10, 90) is not comparable with (20, 10) and stays; the others go.
    set.AddArrangement(Fake(20, 10));
    EXPECT_EQ(MinSizes(set), (std::vector<Size>{{10, 90}, {20, 10}}));

    set.PrepareAll();
    EXPECT_EQ(static_cast<FakeArrangement*>(set.At(1).get())->mPrepared, 1);
    set.Clear();
    EXPECT_TRUE(set.IsEmpty());
}

TEST(ArrangementSet, ChoosePrefersWhatFitsThenLeastClipping) {
    ArrangementSet set;
    EXPECT_FALSE(set.Choose(Size(10, 10)));
    EXPECT_EQ(set.Arrange(Rect(0, 0, 10, 10)), Size());

    FakePtr const wide = Fake(100, 10);
    FakePtr const tall = Fake(10, 100);
    FakePtr const square = Fake(40, 40);
    set.AddArrangement(wide);
    set.AddArrangement(tall);
    set.AddArrangement(square);
    EXPECT_EQ(set.Choose(Size(100, 10)), wide);
    EXPECT_EQ(set.Choose(Size(10, 100)), tall);
    EXPECT_EQ(set.Choose(Size(45, 45)), square);

    // Nothing fits: the strictly smallest clipped area, the front one on ties.
    wide->Areas(500, 0);
    tall->Areas(300, 0);
    square->Areas(300, 0);
    EXPECT_EQ(set.Choose(Size(5, 5)), tall);
    tall->Areas(500, 0);
    square->Areas(500, 0);
    EXPECT_EQ(set.Choose(Size(5, 5)), wide);

    EXPECT_EQ(set.Arrange(Rect(0, 0, 45, 45)), Size(45, 45));
    EXPECT_EQ(square->mArranged, 1);
}

TEST(ArrangementSet, ChooseTieBreaksAmongFittingArrangements) {
    // All fit at (200, 200).  Less waste wins outright.
    ArrangementSet set;
    FakePtr const a = Fake(20, 60);
    FakePtr const b = Fake(30, 40);
    FakePtr const c = Fake(60, 20);
    set.AddArrangement(a);
    set.AddArrangement(b);
    set.AddArrangement(c);
    a->Areas(0, 900);
    b->Areas(0, 800);
    c->Areas(0, 850);
    EXPECT_EQ(set.Choose(Size(200, 200)), b);

    // Equal waste: the smaller minimum area (a and c 1200, b 1200 too).
    b->Areas(0, 900);
    c->Areas(0, 900);
    b->mMin = Size(30, 41);
    EXPECT_EQ(set.Choose(Size(200, 200)), a) << "a and c 1200, b 1230";

    // Equal areas: nearest the golden ratio by best size.
    a->Best(20, 60);
    b->Best(30, 40);
    c->Best(60, 20);
    b->mMin = Size(30, 40);
    EXPECT_EQ(set.Choose(Size(200, 200)), b) << "0.75 is nearer 1.618 than 0.33 and 3";
    c->Best(40, 25);
    EXPECT_EQ(set.Choose(Size(200, 200)), c) << "1.6";

    // Equal distance: the front one.
    a->Best(20, 10);
    b->Best(20, 10);
    c->Best(20, 10);
    EXPECT_EQ(set.Choose(Size(200, 200)), a);
}

TEST(ArrangementSet, GoldenRatioDistancesCompareAsFloats) {
    // 564 / 334 lies nearer the golden ratio than 212 / 137 in double, by less
    // than the float resolution: as floats the distances are equal, so the
    // front arrangement stays.
    ArrangementSet set;
    set.AddArrangement(Fake(10, 20)->Best(212, 137));
    set.AddArrangement(Fake(20, 10)->Best(564, 334));
    EXPECT_EQ(set.BestSize(), Size(10, 20));
    EXPECT_EQ(set.Choose(Size(100, 100)), set.At(0));

    EXPECT_FLOAT_EQ(static_cast<float>(kGoldenRatio), 1.618034f);
}

TEST(ArrangementSet, BestSizeIsTheMinimumOfTheNearestToGoldenRatio) {
    ArrangementSet set;
    EXPECT_EQ(set.BestSize(), Size());
    set.AddArrangement(Fake(10, 50)->Best(10, 50));
    set.AddArrangement(Fake(30, 20)->Best(48, 30));
    set.AddArrangement(Fake(50, 10)->Best(50, 10));
    EXPECT_EQ(set.BestSize(), Size(30, 20)) << "its minimum size, not its best size";
}
