#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/ColumnArrangement.h>
#include <quorel/arrange/Flipping.h>
#include <quorel/arrange/HorizontalWrapping.h>
#include <quorel/arrange/RowArrangement.h>
#include <quorel/arrange/VerticalWrapping.h>

#include "TestElements.h"

#include <gtest/gtest.h>

#include <memory>

using namespace quorel::arrange;
using namespace quorel::arrangetest;

namespace {

std::vector<Size> MinSizes(impl::ArrangementSet const& inSet) {
    std::vector<Size> sizes;
    for (std::size_t i = 0; i < inSet.Size(); ++i) {
        sizes.push_back(Size(inSet.At(i)->MinWidth(), inSet.At(i)->MinHeight()));
    }
    return sizes;
}

template <class A>
bool IsA(impl::ArrangementPtr const& inArrangement) {
    return dynamic_cast<A*>(inArrangement.get()) != nullptr;
}

// Leaves of the given sizes, owned by the test.
class Leaves {
public:
    Leaves(std::initializer_list<Size> inSizes) {
        for (Size const& size : inSizes) {
            mLeaves.emplace_back(new TestLeaf(size.x, size.y));
            mNodes.push_back(mLeaves.back().get());
        }
    }
    TestLeaf& operator[](std::size_t inIndex) { return *mLeaves[inIndex]; }
    std::vector<IArrangeable*> const& Nodes() const { return mNodes; }

private:
    std::vector<std::unique_ptr<TestLeaf>> mLeaves;
    std::vector<IArrangeable*> mNodes;
};

}  // namespace

TEST(Flipping, ChoosesRowOrColumnByTheRectangle) {
    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<Flipping> group(leaves.Nodes());
    ASSERT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{20, 10}, {10, 20}}));
    EXPECT_TRUE(IsA<impl::RowArrangement>(group.Arrangements().At(0)));
    EXPECT_TRUE(IsA<impl::ColumnArrangement>(group.Arrangements().At(1)));

    group.Arrange(Rect(0, 0, 30, 10));
    EXPECT_EQ(leaves[1].Last(), Rect(10, 0, 10, 10));
    group.Arrange(Rect(0, 0, 10, 30));
    EXPECT_EQ(leaves[1].Last(), Rect(0, 10, 10, 10));

    // Both fit and waste 425 with equal minimum areas: the row is nearer the
    // golden ratio (2 against 0.5).
    impl::ArrangementSet const& set = group.Arrangements();
    EXPECT_EQ(set.At(0)->WastedArea(Size(25, 25)), 425);
    EXPECT_EQ(set.At(1)->WastedArea(Size(25, 25)), 425);
    group.Arrange(Rect(0, 0, 25, 25));
    EXPECT_EQ(leaves[1].Last(), Rect(10, 0, 10, 10));
    EXPECT_EQ(group.BestSize(), Size(20, 10));
}

TEST(Flipping, OneChildKeepsTheColumnOfferedLast) {
    Leaves leaves{{10, 10}};
    TestGroup<Flipping> group(leaves.Nodes());
    ASSERT_EQ(group.Arrangements().Size(), 1u);
    EXPECT_TRUE(IsA<impl::ColumnArrangement>(group.Arrangements().At(0)));
}

TEST(HorizontalWrapping, KeepsOnlyTheBreakingsNotOutdone) {
    Leaves leaves{{10, 10}, {10, 10}, {10, 10}, {10, 10}};
    TestGroup<HorizontalWrapping> group(leaves.Nodes());
    EXPECT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{40, 10}, {20, 20}, {10, 40}}));

    // Two rows of two.
    group.Arrange(Rect(0, 0, 20, 20));
    EXPECT_EQ(leaves[1].Last(), Rect(10, 0, 10, 10));
    EXPECT_EQ(leaves[2].Last(), Rect(0, 10, 10, 10));
}

TEST(HorizontalWrapping, OneChildIsItsOwnLineInAColumn) {
    Leaves leaves{{10, 10}};
    TestGroup<HorizontalWrapping> group(leaves.Nodes());
    ASSERT_EQ(group.Arrangements().Size(), 1u);
    auto const* column = dynamic_cast<impl::ColumnArrangement*>(group.Arrangements().At(0).get());
    ASSERT_NE(column, nullptr);
    EXPECT_EQ(column->Children(), (impl::ArrangementList{leaves[0].Arrangements().At(0)}));
}

TEST(HorizontalWrapping, OffersBreakingsLongestFirstLineFirst) {
    // Sizes chosen so that no offer outdoes another: the set keeps the order
    // of offering, 3; 2 + 1; 1 + 2; 1 + 1 + 1.
    Leaves leaves{{12, 10}, {10, 15}, {5, 5}};
    TestGroup<HorizontalWrapping> group(leaves.Nodes());
    EXPECT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{27, 15}, {22, 20}, {15, 25}, {12, 30}}));
}

TEST(HorizontalWrapping, EachArrangementUsesEverySeparatorOnce) {
    // Separators are taken for lines from the end of the pool; the rest go
    // between the lines.
    Leaves leaves{{12, 10}, {10, 15}, {5, 5}};
    TestGroup<HorizontalWrapping> group(leaves.Nodes());
    group.mSpacing = Size(2, 2);
    group.mWithSeparators = true;
    ASSERT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{31, 15}, {24, 22}, {17, 27}, {12, 34}}));
    TestSeparator const& s0 = group.SeparatorAt(0);
    TestSeparator const& s1 = group.SeparatorAt(1);

    // One row: s1 then s0 inside it.
    group.Arrange(Rect(0, 0, 31, 15));
    EXPECT_EQ(s1.mRect, Rect(12, 0, 2, 10));
    EXPECT_EQ(s1.mOrientation, 0);
    EXPECT_EQ(s0.mRect, Rect(24, 0, 2, 5));
    EXPECT_EQ(s0.mOrientation, 0);

    // Rows (a b) and (c): s1 inside the first row, s0 between the rows.
    group.Arrange(Rect(0, 0, 24, 22));
    EXPECT_EQ(s1.mRect, Rect(12, 0, 2, 10));
    EXPECT_EQ(s0.mRect, Rect(0, 15, 5, 2));
    EXPECT_EQ(s0.mOrientation, 1);

    // Rows (a) and (b c): s1 inside the second row, s0 between the rows.
    group.Arrange(Rect(0, 0, 17, 27));
    EXPECT_EQ(s1.mRect, Rect(10, 12, 2, 5));
    EXPECT_EQ(s1.mOrientation, 0);
    EXPECT_EQ(s0.mRect, Rect(0, 10, 12, 2));
    EXPECT_EQ(s0.mOrientation, 1);

    // Three rows: s0 and s1 between them, in order.
    group.Arrange(Rect(0, 0, 12, 34));
    EXPECT_EQ(s0.mRect, Rect(0, 10, 10, 2));
    EXPECT_EQ(s1.mRect, Rect(0, 27, 5, 2));
    EXPECT_EQ(s1.mOrientation, 1);
}

TEST(HorizontalWrapping, SingleLineCountsTheMarginsTwice) {
    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<HorizontalWrapping> group(leaves.Nodes());
    group.Margins(1, 1, 1, 1);
    EXPECT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{24, 14}, {12, 22}}));

    // The column reports first and last, the row inside it in between.
    group.Arrange(Rect(0, 0, 24, 14));
    EXPECT_EQ(group.mPositions, (std::vector<Size>{{1, 1}, {2, 2}}));
    EXPECT_EQ(group.mDimensions, (std::vector<Size>{{20, 10}, {22, 12}}));
    EXPECT_EQ(leaves[0].Last(), Rect(2, 2, 10, 10));
}

TEST(VerticalWrapping, BreaksIntoColumnsSideBySide) {
    Leaves leaves{{10, 10}, {10, 10}, {10, 10}, {10, 10}};
    TestGroup<VerticalWrapping> group(leaves.Nodes());
    EXPECT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{10, 40}, {20, 20}, {40, 10}}));
    EXPECT_TRUE(IsA<impl::RowArrangement>(group.Arrangements().At(1)));
    group.Arrange(Rect(0, 0, 20, 20));
    EXPECT_EQ(leaves[1].Last(), Rect(0, 10, 10, 10));
    EXPECT_EQ(leaves[2].Last(), Rect(10, 0, 10, 10));
}

TEST(AutoLayout, TiesInMinimumSizeGoToTheColumns) {
    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<AutoLayout> group(leaves.Nodes());
    impl::ArrangementSet const& set = group.Arrangements();
    // The vertical wrapping's offers replace the equal horizontal ones.
    ASSERT_EQ(MinSizes(set), (std::vector<Size>{{10, 20}, {20, 10}}));
    EXPECT_TRUE(IsA<impl::RowArrangement>(set.At(0)));
    EXPECT_TRUE(IsA<impl::RowArrangement>(set.At(1)));
    EXPECT_TRUE(IsA<impl::ColumnArrangement>(
        static_cast<impl::GroupArrangement const&>(*set.At(0)).Children().front()));
}

TEST(GroupKinds, CombinationsOfChildArrangementsAreThinnedAtEachLevel) {
    // A row of two flipping groups: 2 x 2 combinations, of which the
    // row-row (40, 10) and column-column (20, 20) survive, and the mixed
    // ones (30, 20) are outdone.
    Leaves leaves{{10, 10}, {10, 10}, {10, 10}, {10, 10}};
    TestGroup<Flipping> left({&leaves[0], &leaves[1]});
    TestGroup<Flipping> right({&leaves[2], &leaves[3]});
    TestGroup<Row> row({&left, &right});
    EXPECT_EQ(MinSizes(row.Arrangements()), (std::vector<Size>{{40, 10}, {20, 20}}));
    row.Arrange(Rect(0, 0, 25, 25));
    EXPECT_EQ(leaves[3].Last(), Rect(10, 10, 10, 10)) << "both flipped to columns";
}
