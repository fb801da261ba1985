#include "TestElements.h"

#include <cmath>

using namespace quorel::arrangetest;

namespace {

// A leaf along and across a line: its best size, whether it expands along, its minimum along
// (negative: the best) and how far it expands along.
struct LeafShape {
    float mAlong, mAcross;
    bool mExpandable = false;
    float mMinAlong = -1, mLimitAlong = kNoLimit;
};

// The cases are written for a row; one of them also runs as a column, with everything transposed.
class LineArrangementTest : public ::testing::Test {
protected:
    LineArrangementTest() { group.mSpacing = Size(10, 10); }

    Size T(Size inSize) const { return mColumn ? Size(inSize.y, inSize.x) : inSize; }
    Rect T(Rect inRect) const { return mColumn ? Rect(inRect.y, inRect.x, inRect.height, inRect.width) : inRect; }

    // A line (row or column arrangement) of new leaves.
    boost::intrusive_ptr<impl::GroupArrangement> Line(std::vector<LeafShape> const& inLeaves, bool inOutermost = true,
                                                      impl::SeparatorList inSeparators = {}) {
        leaves.clear();
        impl::ArrangementList children;
        for (LeafShape const& shape : inLeaves) {
            Size const best = T(Size(shape.mAlong, shape.mAcross));
            TestLeaf& leaf = *leaves.emplace_back(new TestLeaf(best.x, best.y));
            leaf.mExpandWidth = shape.mExpandable && !mColumn;
            leaf.mExpandHeight = shape.mExpandable && mColumn;
            leaf.mLimit = T(Size(shape.mLimitAlong, kNoLimit));
            if (shape.mMinAlong >= 0) leaf.mMin = T(Size(shape.mMinAlong, shape.mAcross));
            children.push_back(leaf.Arrangements().At(0));
        }
        if (mColumn) return new impl::ColumnArrangement(group, children, inSeparators, inOutermost);
        return new impl::RowArrangement(group, children, inSeparators, inOutermost);
    }

    bool mColumn = false;
    TestGroup<Row> group;
    std::vector<std::unique_ptr<TestLeaf>> leaves;
};

}  // namespace

TEST_F(LineArrangementTest, SharesRoomAmongTheExpandableChildrenAndAligns) {
    int const left = kAlignmentHorizontal_Left, centre = kAlignmentHorizontal_Center;
    // Each case: the leaves, the alignment along, the width offered and where each leaf starts and how long it is.
    struct Case { std::vector<LeafShape> mLeaves; int mAlign; float mWidth; std::vector<float> mPlaced; };
    Case const cases[] = {
        // Spare 80: B and C both grow by the factor 1.8.
        {{{100, 20}, {50, 20, true}, {50, 20, true}}, left, 300, {0, 100, 110, 90, 210, 90}},
        // B stops at 60; C's factor is then (70 + 50) / 50 = 2.4.
        {{{100, 20}, {50, 20, true, -1, 60}, {50, 20, true}}, left, 300, {0, 100, 110, 60, 180, 120}},
        // Spare -40: targets 30 and 10 lie below the minimum 50; the 220 of content start 20 early.
        {{{100, 20}, {50, 20, true}, {50, 20, true}}, centre, 180, {-20, 100, 90, 50, 150, 50}},
        // Alone at 40 with minimum 40: no spare room, a fixed child keeps its best 100.
        {{{100, 20, false, 40}}, centre, 40, {0, 100}},
        // Right alignment moves fixed children by all the spare room.
        {{{100, 20}, {50, 20}}, kAlignmentHorizontal_Right, 300, {140, 100, 250, 50}},
        // The room left to share in proportion reaches zero at the second; A takes 135 less the third's 5.
        {{{40, 20, true}, {0, 20, true}, {0, 20, true, 5}}, left, 200, {0, 170, 180, 0, 190, 5}},
        // The only expandable child without best size has nothing to share with: its minimum.
        {{{40, 20}, {0, 20, true, 5}}, left, 200, {0, 40, 50, 5}},
    };
    for (Case const& c : cases) {
        group.mAlignH = static_cast<AlignmentHorizontal>(c.mAlign);
        Line(c.mLeaves)->Arrange(Rect(0, 0, c.mWidth, 20));
        std::vector<float> placed;  // to a thousandth: the shares are rounded in float
        for (auto const& leaf : leaves) placed.insert(placed.end(), {leaf->Last().x, leaf->Last().width});
        for (float& f : placed) f = std::round(f * 1000) / 1000;
        EXPECT_EQ(placed, c.mPlaced);
    }
    // The lack-of-room case reports its 220 of content, 20 early.
    EXPECT_TRUE(group.mPositions[2] == Size(-20, 0) && group.mDimensions[2] == Size(200, 20));
}

TEST_F(LineArrangementTest, SeparatorsMarginsAndAlignmentsAlongEitherAxis) {
    // Run as a row, then as a column with everything transposed: any answer read on the wrong
    // axis changes a size, an area or a rectangle.
    for (bool column : {false, true}) {
        SCOPED_TRACE(column ? "column" : "row");
        mColumn = column;
        TestSeparator first, second;
        group.mSpacing = T(Size(10, 3));
        group.mMargins = column ? std::array<float, 4>{2, 1, 4, 3} : std::array<float, 4>{1, 2, 3, 4};
        group.mAlignH = column ? kAlignmentHorizontal_Right : kAlignmentHorizontal_Center;  // centred along,
        group.mAlignV = column ? kAlignmentVertical_Center : kAlignmentVertical_Bottom;     // at the far side across
        auto const line = Line({{40, 20}, {40, 30, true, -1, 50}, {40, 20}, {40, 20}}, true, {&first, &second, 0});
        line->Prepare();
        EXPECT_EQ(T(Rect(line->MinWidth(), line->MinHeight(), line->BestWidth(), line->BestHeight())),
                  Rect(4 * 40 + 3 * 10 + 4, 30 + 6, 194, 36)) << "minimum and best";
        EXPECT_EQ(T(Size(line->ExpandedWidth(1000), line->ExpandedHeight(1000))), Size(204, 36));
        EXPECT_TRUE(line->HorizontallyExpandable() == !column && line->VerticallyExpandable() == column);
        EXPECT_EQ(line->ClippedArea(T(Size(174, 36))), 10 * 20) << "the last child 10 outside, skipping the first gap";
        // Inner (246, 34) from (6, 9): B grows to its limit 50, the 200 of content start 23 further.
        EXPECT_EQ(line->Arrange(T(Rect(5, 7, 250, 40))), T(Size(246, 34)));
        EXPECT_TRUE(first.mOrientation == column && second.mOrientation == column);
        EXPECT_EQ(first.mRect, T(Rect(69, 23, 10, 20))) << "the earlier, shorter neighbour";
        EXPECT_EQ(second.mRect, T(Rect(129, 23, 10, 20))) << "the later, shorter neighbour";
        EXPECT_EQ(leaves[1]->Last(), T(Rect(79, 13, 50, 30)));
        EXPECT_EQ(leaves[3]->Last(), T(Rect(189, 23, 40, 20))) << "a null separator keeps its gap";
        EXPECT_TRUE(group.mPositions.back() == T(Size(29, 13)) && group.mDimensions.back() == T(Size(246, 34)));
    }
}

TEST_F(LineArrangementTest, InnerLinesSkipTheMarginsAndKeepTheirDistribution) {
    group.mMargins = {1, 2, 3, 4};
    group.mAlignH = kAlignmentHorizontal_Center;
    group.mAlignV = kAlignmentVertical_Center;
    auto const inner = Line({{100, 20}, {50, 30, true, 20}}, false);
    EXPECT_EQ(Size(inner->MinWidth(), inner->MinHeight()), Size(130, 30)) << "no margins inside a wrapping";
    // The spare room is measured from the minimum size (170), although the children start at their best.
    inner->Distribute(Size(300, 20));
    EXPECT_EQ(inner->Placements()[1].mSize.x, 220);
    leaves[1]->mLimit.x = 60;  // a changed answer is only seen by a new distribution
    inner->Distribute(Size(300.00005f, 20));
    EXPECT_EQ(inner->Placements()[1].mSize.x, 220);
    inner->Distribute(Size(301, 20));
    EXPECT_EQ(inner->Placements()[1].mSize.x, 60);
    // It reports nothing, but still aligns.
    auto const one = Line({{100, 20}}, false);
    EXPECT_EQ(one->Arrange(Rect(0, 0, 200, 40)), Size(200, 40));
    EXPECT_TRUE(!one->IsOutermost() && group.mPositions.empty());
    EXPECT_EQ(leaves[0]->Last(), Rect(50, 10, 100, 20));
}

TEST_F(LineArrangementTest, ExpandedClippedAndWastedAreas) {
    auto const line = Line({{100, 20}, {50, 10}, {50, 30, true, -1, 70}});
    line->Prepare();
    EXPECT_EQ(line->ExpandedWidth(160), 160) << "the children stop when the room is used; gaps still count";
    EXPECT_TRUE(line->ExpandedHeight(100) == 30 && line->ExpandedHeight(25) == 30) << "each child is offered all";
    // Too low by 10 everywhere (2000) and the last child wholly outside (1000); the gap after the first does not count.
    auto const fixed = Line({{100, 20}, {50, 20}, {50, 20}});
    EXPECT_TRUE(fixed->ClippedArea(Size(220, 20)) == 0 && fixed->ClippedArea(Size(150, 10)) == 3000);
    // Inner (300, 30): B grows to 190; each child wastes 10 high, the gap 10 wide, the margins their strips.
    group.mMargins = {1, 3, 2, 4};
    EXPECT_EQ(Line({{100, 20}, {50, 20, true}})->WastedArea(Size(303, 37)), 1000 + 1900 + 300 + 3 * 37 + 7 * 303);
}
