#include <quorel/arrange/ArrangementSet.h>
#include <quorel/arrange/Single.h>

#include "TestElements.h"

#include <gtest/gtest.h>

using namespace quorel::arrange;
using namespace quorel::arrangetest;

TEST(Single, SizesIncludeMarginsAndMinimumDefaultsToBest) {
    TestLeaf leaf(30, 10);
    leaf.Margins(1, 1, 1, 1);
    EXPECT_EQ(leaf.BestSize(), Size(32, 12));
    EXPECT_TRUE(leaf.ArrangementsValid());

    TestLeaf shrinking(100, 40);
    shrinking.Margins(2, 3, 4, 5);
    shrinking.mMin = Size(60, 20);
    impl::ArrangementSet& set = shrinking.Arrangements();
    ASSERT_EQ(set.Size(), 1u);
    impl::IArrangement const& arrangement = *set.At(0);
    EXPECT_EQ(arrangement.MinWidth(), 66);
    EXPECT_EQ(arrangement.MinHeight(), 28);
    EXPECT_EQ(arrangement.BestWidth(), 106);
    EXPECT_EQ(arrangement.BestHeight(), 48);
    EXPECT_TRUE(arrangement.IsOutermost());
}

TEST(Single, ArrangementPlacesInsideTheMargins) {
    TestLeaf leaf(30, 10);
    leaf.Margins(1, 2, 3, 4);
    leaf.Expanding(true, false);
    leaf.mLimit.x = 50;
    impl::IArrangement& arrangement = *leaf.Arrangements().At(0);

    EXPECT_EQ(arrangement.Arrange(Rect(10, 20, 60, 30)), Size(60, 30)) << "Place's answer, unchanged";
    EXPECT_EQ(leaf.Last(), Rect(11, 22, 56, 24));

    // Offered widths and heights pass to the element without margins.
    EXPECT_EQ(arrangement.ExpandedWidth(100), 54);
    EXPECT_EQ(arrangement.ExpandedWidth(40), 40);
    EXPECT_EQ(arrangement.ExpandedHeight(100), 16) << "not vertically expandable: best height";
    EXPECT_TRUE(arrangement.HorizontallyExpandable());
    EXPECT_FALSE(arrangement.VerticallyExpandable());
}

TEST(Single, ClippedAndWastedAreas) {
    TestLeaf leaf(30, 10);
    impl::IArrangement const& arrangement = *leaf.Arrangements().At(0);
    EXPECT_EQ(arrangement.ClippedArea(Size(30, 10)), 0);
    EXPECT_EQ(arrangement.ClippedArea(Size(20, 10)), 10 * 10);
    EXPECT_EQ(arrangement.ClippedArea(Size(20, 4)), 10 * 10 + 30 * 6);
    EXPECT_EQ(arrangement.WastedArea(Size(40, 20)), 40 * 20 - 30 * 10);
    EXPECT_EQ(arrangement.WastedArea(Size(20, 5)), 20 * 5 - 30 * 10) << "too small: negative waste";
}

TEST(Single, AnswersAreASnapshotUntilInvalidated) {
    TestLeaf leaf(30, 10);
    EXPECT_EQ(leaf.BestSize(), Size(30, 10));
    leaf.mBest = Size(50, 10);
    EXPECT_EQ(leaf.BestSize(), Size(30, 10));
    leaf.Invalidate();
    EXPECT_FALSE(leaf.ArrangementsValid()) << "a root never arranged is not rearranged";
    EXPECT_EQ(leaf.BestSize(), Size(50, 10));
}
