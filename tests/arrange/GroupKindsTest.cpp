#include "TestElements.h"

using namespace quorel::arrangetest;

namespace {

template <class A> bool IsA(impl::ArrangementPtr const& inArrangement) { return dynamic_cast<A*>(inArrangement.get()); }

}  // namespace

TEST(Flipping, ChoosesRowOrColumnByTheRectangle) {
    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<Flipping> group(leaves.mNodes);
    impl::ArrangementSet const& set = group.Arrangements();
    ASSERT_EQ(MinSizes(set), (std::vector<Size>{{20, 10}, {10, 20}}));
    // At 25 x 25 both fit and waste 425 with equal minimum areas: the row is nearer the golden ratio.
    EXPECT_TRUE(set.At(0)->WastedArea(Size(25, 25)) == 425 && set.At(1)->WastedArea(Size(25, 25)) == 425);
    for (Rect const rect : {Rect(0, 0, 30, 10), Rect(0, 0, 10, 30), Rect(0, 0, 25, 25)}) group.Arrange(rect);
    EXPECT_EQ(leaves[1].mPlaced, (std::vector<Rect>{{10, 0, 10, 10}, {0, 10, 10, 10}, {10, 0, 10, 10}}));
    // One child: row and column have the same minimum size, and the column, offered last, stays.
    TestGroup<Flipping> single({&leaves[0]});
    EXPECT_TRUE(single.Arrangements().Size() == 1u && IsA<impl::ColumnArrangement>(single.Arrangements().At(0)));
}

TEST(Wrapping, OffersEveryBreakingLongestFirstLineFirst) {
    Leaves four{{10, 10}, {10, 10}, {10, 10}, {10, 10}};
    TestGroup<HorizontalWrapping> rows(four.mNodes);
    EXPECT_EQ(MinSizes(rows.Arrangements()), (std::vector<Size>{{40, 10}, {20, 20}, {10, 40}}));
    rows.Arrange(Rect(0, 0, 20, 20));  // two rows of two
    EXPECT_TRUE(four[1].Last() == Rect(10, 0, 10, 10) && four[2].Last() == Rect(0, 10, 10, 10));
    TestGroup<VerticalWrapping> columns(four.mNodes);
    EXPECT_EQ(MinSizes(columns.Arrangements()), (std::vector<Size>{{10, 40}, {20, 20}, {40, 10}}));
    columns.Arrange(Rect(0, 0, 20, 20));  // two columns of two
    EXPECT_TRUE(four[1].Last() == Rect(0, 10, 10, 10) && four[2].Last() == Rect(10, 0, 10, 10));
    // One child is its own line, in a column.
    TestGroup<HorizontalWrapping> one({&four[0]});
    impl::ArrangementSet const& oneSet = one.Arrangements();
    ASSERT_TRUE(oneSet.Size() == 1u && IsA<impl::ColumnArrangement>(oneSet.At(0)));
    EXPECT_EQ(static_cast<impl::GroupArrangement&>(*oneSet.At(0)).Children(),
              impl::ArrangementList{four[0].Arrangements().At(0)});
}

TEST(Wrapping, EachArrangementUsesEverySeparatorOnce) {
    // No offer outdoes another here: the set keeps the order of offering, 3; 2 + 1; 1 + 2; 1 + 1 + 1.
    // Lines take their separators from the end of the pool; the rest go between the lines.
    Leaves leaves{{12, 10}, {10, 15}, {5, 5}};
    TestGroup<HorizontalWrapping> group(leaves.mNodes);
    group.mSpacing = Size(2, 2);
    group.mWithSeparators = true;
    ASSERT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{31, 15}, {24, 22}, {17, 27}, {12, 34}}));
    typedef std::pair<Rect, int> Placement;
    struct Case { Rect mRect; Placement mFirst, mSecond; } const cases[] = {
        {{0, 0, 31, 15}, {{24, 0, 2, 5}, 0}, {{12, 0, 2, 10}, 0}},   // one row: the second, then the first
        {{0, 0, 24, 22}, {{0, 15, 5, 2}, 1}, {{12, 0, 2, 10}, 0}},   // rows (a b) (c): the second in the first row
        {{0, 0, 17, 27}, {{0, 10, 12, 2}, 1}, {{10, 12, 2, 5}, 0}},  // rows (a) (b c): the second in the second row
        {{0, 0, 12, 34}, {{0, 10, 10, 2}, 1}, {{0, 27, 5, 2}, 1}},   // three rows: both between them, in order
    };
    for (Case const& c : cases) {
        group.Arrange(c.mRect);
        EXPECT_EQ(Placement(group.SeparatorAt(0).mRect, group.SeparatorAt(0).mOrientation), c.mFirst);
        EXPECT_EQ(Placement(group.SeparatorAt(1).mRect, group.SeparatorAt(1).mOrientation), c.mSecond);
    }
}

TEST(Wrapping, SingleLineCountsTheMarginsTwice) {
    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<HorizontalWrapping> group(leaves.mNodes);
    group.mMargins = {1, 1, 1, 1};
    EXPECT_EQ(MinSizes(group.Arrangements()), (std::vector<Size>{{24, 14}, {12, 22}}));
    group.Arrange(Rect(0, 0, 24, 14));  // the column reports first and last, the row inside it in between
    EXPECT_EQ(group.mPositions, (std::vector<Size>{{1, 1}, {2, 2}}));
    EXPECT_EQ(group.mDimensions, (std::vector<Size>{{20, 10}, {22, 12}}));
    EXPECT_EQ(leaves[0].Last(), Rect(2, 2, 10, 10));
}

TEST(GroupKinds, AutoLayoutTiesGoToTheColumns) {
    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<AutoLayout> automatic(leaves.mNodes);
    impl::ArrangementSet const& set = automatic.Arrangements();
    // The vertical wrapping's offers replace the equal horizontal ones: rows of columns.
    ASSERT_EQ(MinSizes(set), (std::vector<Size>{{10, 20}, {20, 10}}));
    EXPECT_TRUE(IsA<impl::RowArrangement>(set.At(0)) && IsA<impl::RowArrangement>(set.At(1)));
    EXPECT_TRUE(IsA<impl::ColumnArrangement>(static_cast<impl::GroupArrangement const&>(*set.At(0)).Children()[0]));
}

TEST(DynamicGroup, TheInnerGroupAsksTheHostAndANewKindStartsAFreshOne) {
    TestGroup<DynamicGroup> none({}, nullptr, static_cast<GroupArrangementType>(-1));
    EXPECT_TRUE(none.Arrangeable() == nullptr && !none.ArrangementEnabled() && none.BestSize() == Size());
    none.InvalidateAll();  // nothing to forward to

    Leaves leaves{{10, 10}, {10, 10}};
    TestGroup<DynamicGroup> panel(leaves.mNodes, nullptr, kGroupArrangementType_Row);
    panel.mSpacing = Size(4, 6);
    panel.mMargins = {1, 2, 0, 0};
    panel.mWithSeparators = true;
    ASSERT_TRUE(panel.Arrangeable() != nullptr && panel.Group() == panel.Arrangeable() && panel.ArrangementEnabled());
    EXPECT_EQ(panel.BestSize(), Size(1 + 10 + 4 + 10, 2 + 10));
    panel.Arrangeable()->Arrange(Rect(0, 0, 100, 50));
    EXPECT_TRUE(leaves[0].Last() == Rect(1, 2, 10, 10) && leaves[1].Last() == Rect(15, 2, 10, 10));
    EXPECT_TRUE(panel.SeparatorAt(0).mRect == Rect(11, 2, 4, 10) && panel.mPositions == std::vector<Size>({{1, 2}}));
    impl::AbstractArrangeableGroup* const group = panel.Group();
    panel.SetArrangementType(kGroupArrangementType_Row, nullptr);
    EXPECT_TRUE(panel.Group() == group && group->ArrangementsValid()) << "the same kind: nothing changes";
    panel.SetArrangementType(static_cast<GroupArrangementType>(17), nullptr);
    EXPECT_TRUE(panel.Group() == group && panel.ArrangementType() == 17) << "an unknown kind is stored only";

    panel.EnableArrangement(false);
    panel.SetArrangementType(kGroupArrangementType_Column, nullptr);
    EXPECT_TRUE(panel.Arrangeable()->Bounds() == Rect() && panel.ArrangementEnabled()) << "a fresh group";
    // Nested through its Arrangeable; after a change of kind the host invalidates the parent.
    TestLeaf label(30, 8);
    TestGroup<Row> root({&label, panel.Arrangeable()});
    root.Arrange(Rect(0, 0, 200, 100));
    EXPECT_TRUE(leaves[0].Parent() == panel.Arrangeable() && panel.Arrangeable()->Parent() == &root);
    EXPECT_EQ(leaves[1].Last(), Rect(31, 18, 10, 10)) << "a column, with the vertical spacing";
    panel.SetArrangementType(kGroupArrangementType_Row, nullptr);
    root.mKids[1] = panel.Arrangeable();
    root.Invalidate();
    EXPECT_EQ(leaves[1].Last(), Rect(45, 2, 10, 10));
}
