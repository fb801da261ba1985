#include "TestElements.h"

using namespace quorel::arrangetest;
using impl::ArrangementSet;

namespace {

// An arrangement with answers set by the test; the areas do not depend on the size asked about.
struct Fake : impl::IArrangement {
    Fake(float inMinWidth, float inMinHeight) : mMin(inMinWidth, inMinHeight), mBest(mMin) {}
    Size Arrange(Rect const&) override { return mMin; }  // tells which one was arranged
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
    void Prepare() override {}
    bool IsOutermost() const override { return true; }

    Size mMin, mBest;
    float mClipped = 0, mWasted = 0;
};

typedef boost::intrusive_ptr<Fake> FakePtr;
FakePtr MakeFake(float inMinWidth, float inMinHeight) { return FakePtr(new Fake(inMinWidth, inMinHeight)); }

}  // namespace

TEST(Single, OneArrangementWithTheMarginsThatPlacesInsideThem) {
    TestLeaf leaf(100, 40);
    leaf.mMargins = {1, 2, 3, 4};
    leaf.mMin = Size(60, 20);
    leaf.mExpandWidth = true;
    leaf.mLimit.x = 120;
    impl::IArrangement& single = *leaf.Arrangements().At(0);
    EXPECT_TRUE(leaf.Arrangements().Size() == 1u && single.IsOutermost() && leaf.BestSize() == Size(64, 26));
    EXPECT_EQ(Size(single.BestWidth(), single.BestHeight()), Size(104, 46));
    // Offered sizes reach the element without the margins; Place's answer is passed on unchanged.
    EXPECT_TRUE(single.ExpandedWidth(200) == 124 && single.ExpandedWidth(50) == 50 && single.ExpandedHeight(90) == 46);
    EXPECT_EQ(single.Arrange(Rect(10, 20, 150, 30)), Size(150, 30));
    EXPECT_EQ(leaf.Last(), Rect(11, 22, 146, 24));
    // Of the minimum (64, 26); too small, the waste is negative.
    EXPECT_TRUE(single.ClippedArea(Size(64, 26)) == 0 && single.ClippedArea(Size(54, 20)) == 10 * 26 + 64 * 6);
    EXPECT_EQ(single.WastedArea(Size(200, 50)), 200 * 50 - 124 * 46);
    EXPECT_EQ(single.WastedArea(Size(50, 20)), 50 * 20 - 50 * 46);
    leaf.mBest = Size(50, 10);  // a snapshot until invalidated
    EXPECT_EQ(single.BestWidth(), 104);
    leaf.Invalidate();
    EXPECT_EQ(leaf.Arrangements().At(0)->BestWidth(), 54);
}

TEST(ArrangementSet, KeepsWhatIsNotOutdoneInTheOrderOfAdding) {
    // (120, 10) is outdone by (90, 10); of equal minimum sizes the later stays, moved to the end;
    // null is ignored.  Then (10, 90) is not comparable with (20, 10) and stays, the others go.
    ArrangementSet set;
    FakePtr const later = MakeFake(30, 30), none;
    for (FakePtr const& fake : {MakeFake(10, 90), MakeFake(30, 30), MakeFake(90, 10), MakeFake(120, 10), later, none}) {
        set.AddArrangement(fake);
    }
    EXPECT_EQ(MinSizes(set), (std::vector<Size>{{10, 90}, {90, 10}, {30, 30}}));
    EXPECT_EQ(set.At(2), later);
    set.AddArrangement(MakeFake(20, 10));
    EXPECT_EQ(MinSizes(set), (std::vector<Size>{{10, 90}, {20, 10}}));
}

TEST(ArrangementSet, ChoosePrefersWhatFitsThenLeastClipping) {
    ArrangementSet set;
    EXPECT_TRUE(!set.Choose(Size(10, 10)) && set.Arrange(Rect(0, 0, 10, 10)) == Size() && set.BestSize() == Size());
    FakePtr const wide = MakeFake(100, 10), tall = MakeFake(10, 100), square = MakeFake(40, 40);
    for (FakePtr const& fake : {wide, tall, square}) set.AddArrangement(fake);
    EXPECT_TRUE(set.Choose(Size(100, 10)) == wide && set.Choose(Size(10, 100)) == tall);
    EXPECT_EQ(set.Choose(Size(45, 45)), square);
    // Nothing fits: the strictly smallest clipped area, the front one on ties.
    wide->mClipped = 500, tall->mClipped = square->mClipped = 300;
    EXPECT_EQ(set.Choose(Size(5, 5)), tall);
    tall->mClipped = square->mClipped = 500;
    EXPECT_EQ(set.Choose(Size(5, 5)), wide);
    EXPECT_EQ(set.Arrange(Rect(0, 0, 45, 45)), Size(40, 40));
}

TEST(ArrangementSet, AmongFittingOnesLessWasteThenAreaThenGoldenRatioThenTheFrontOne) {
    ArrangementSet set;
    FakePtr const a = MakeFake(20, 60), b = MakeFake(30, 40), c = MakeFake(60, 20);
    for (FakePtr const& fake : {a, b, c}) set.AddArrangement(fake);
    a->mWasted = 900, b->mWasted = 800, c->mWasted = 850;
    EXPECT_EQ(set.Choose(Size(200, 200)), b);
    b->mWasted = c->mWasted = 900;
    b->mMin = Size(30, 41);
    EXPECT_EQ(set.Choose(Size(200, 200)), a) << "a and c 1200, b 1230";
    b->mMin = Size(30, 40);
    EXPECT_EQ(set.Choose(Size(200, 200)), b) << "best proportions 0.75 are nearer 1.618 than 0.33 and 3";
    c->mBest = Size(40, 25);
    EXPECT_EQ(set.Choose(Size(200, 200)), c) << "1.6";
    EXPECT_EQ(set.BestSize(), Size(60, 20)) << "its minimum size, not its best size";
    a->mBest = b->mBest = c->mBest = Size(20, 10);
    EXPECT_EQ(set.Choose(Size(200, 200)), a) << "equal distances: the front one";
    // 564 / 334 lies nearer the golden ratio than 212 / 137 in double, by less than the
    // float resolution: as floats the distances are equal, so the front one stays.
    a->mBest = Size(212, 137);
    b->mBest = Size(564, 334);
    EXPECT_EQ(set.Choose(Size(200, 200)), a);
}
