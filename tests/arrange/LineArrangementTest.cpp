#include "TestElements.h"

using namespace quorel::arrangetest;

namespace {

// A leaf along and across a line: its best size, whether it expands along, its minimum along
// (negative: the best) and how far it expands along.
struct LeafShape {
    float mAlong, mAcross;
    bool mExpandable = false;
    float mMinAlong = -1, mLimitAlong = kNoLimit;
};

// Every case is written for a row and run for a column as well, with all sizes, rectangles,
// margins and alignments transposed: the two must agree exactly.
class LineArrangementTest : public ::testing::TestWithParam<impl::LineAxis> {
protected:
    LineArrangementTest() { group.mSpacing = Size(10, 10); }

    bool IsColumn() const { return GetParam() == impl::kLineAxis_Vertical; }
    Size T(Size inSize) const { return IsColumn() ? Size(inSize.y, inSize.x) : inSize; }
    Rect T(Rect inRect) const { return IsColumn() ? Rect(inRect.y, inRect.x, inRect.height, inRect.width) : inRect; }
    float Along(Size inSize) const { return T(inSize).x; }

    // A line (row or column arrangement) of new leaves.
    boost::intrusive_ptr<impl::GroupArrangement> Line(std::vector<LeafShape> const& inLeaves, bool inOutermost = true,
                                                      impl::SeparatorList inSeparators = {}) {
        leaves.clear();
        impl::ArrangementList children;
        for (LeafShape const& shape : inLeaves) {
            Size const best = T(Size(shape.mAlong, shape.mAcross));
            leaves.emplace_back(new TestLeaf(best.x, best.y));
            leaves.back()->mExpandWidth = shape.mExpandable && !IsColumn();
            leaves.back()->mExpandHeight = shape.mExpandable && IsColumn();
            leaves.back()->mLimit = T(Size(shape.mLimitAlong, kNoLimit));
            if (shape.mMinAlong >= 0) leaves.back()->mMin = T(Size(shape.mMinAlong, shape.mAcross));
            children.push_back(leaves.back()->Arrangements().At(0));
        }
        if (IsColumn()) return new impl::ColumnArrangement(group, children, inSeparators, inOutermost);
        return new impl::RowArrangement(group, children, inSeparators, inOutermost);
    }
    // Margins and alignment along, then across the line (left, top, right, bottom for a row).
    void Margins(float inBefore, float inAbove, float inAfter, float inBelow) {
        group.mMargins = IsColumn() ? std::array<float, 4>{inAbove, inBefore, inBelow, inAfter}
                                    : std::array<float, 4>{inBefore, inAbove, inAfter, inBelow};
    }
    void Align(int inAlong, int inAcross) {
        group.mAlignH = static_cast<AlignmentHorizontal>(IsColumn() ? inAcross : inAlong);
        group.mAlignV = static_cast<AlignmentVertical>(IsColumn() ? inAlong : inAcross);
    }

    TestGroup<Row> group;
    std::vector<std::unique_ptr<TestLeaf>> leaves;
};

INSTANTIATE_TEST_SUITE_P(BothAxes, LineArrangementTest,
                         ::testing::Values(impl::kLineAxis_Horizontal, impl::kLineAxis_Vertical),
                         [](auto const& inInfo) { return inInfo.param ? "Column" : "Row"; });

}  // namespace

TEST_P(LineArrangementTest, SharesRoomAmongTheExpandableChildrenAndAligns) {
    int const left = kAlignmentHorizontal_Left, centre = kAlignmentHorizontal_Center;
    struct Case { std::vector<LeafShape> mLeaves; int mAlign; Rect mRect; std::vector<Rect> mPlaced; } const cases[] = {
        // Spare 80: B and C both grow by the factor 1.8.
        {{{100, 20}, {50, 20, true}, {50, 20, true}}, left, {0, 0, 300, 20},
         {{0, 0, 100, 20}, {110, 0, 90, 20}, {210, 0, 90, 20}}},
        // B stops at 60; C's factor is then (70 + 50) / 50 = 2.4.
        {{{100, 20}, {50, 20, true, -1, 60}, {50, 20, true}}, left, {0, 0, 300, 20},
         {{0, 0, 100, 20}, {110, 0, 60, 20}, {180, 0, 120, 20}}},
        // Spare -40: targets 30 and 10 lie below the minimum 50; the 220 of content start 20 early.
        {{{100, 20}, {50, 20, true}, {50, 20, true}}, centre, {0, 0, 180, 20},
         {{-20, 0, 100, 20}, {90, 0, 50, 20}, {150, 0, 50, 20}}},
        // Alone at 40 with minimum 40: no spare room, a fixed child keeps its best 100.
        {{{100, 20, false, 40}}, centre, {0, 0, 40, 20}, {{0, 0, 100, 20}}},
        // Right alignment moves fixed children by all the spare room.
        {{{100, 20}, {50, 20}}, kAlignmentHorizontal_Right, {5, 0, 300, 20}, {{145, 0, 100, 20}, {255, 0, 50, 20}}},
        // The room left to share in proportion reaches zero at the second; A takes 135 less the third's 5.
        {{{40, 20, true}, {0, 20, true}, {0, 20, true, 5}}, left, {0, 0, 200, 20},
         {{0, 0, 170, 20}, {180, 0, 0, 20}, {190, 0, 5, 20}}},
        // The only expandable child without best size has nothing to share with: its minimum.
        {{{40, 20}, {0, 20, true, 5}}, left, {0, 0, 200, 20}, {{0, 0, 40, 20}, {50, 0, 5, 20}}},
    };
    for (Case const& c : cases) {
        Align(c.mAlign, kAlignmentVertical_Top);
        Line(c.mLeaves)->Arrange(T(c.mRect));
        for (std::size_t i = 0; i < leaves.size(); ++i) EXPECT_TRUE(RectNear(leaves[i]->Last(), T(c.mPlaced[i]))) << i;
    }
    // The last distribution: the content reported by the lack-of-room case.
    Align(centre, kAlignmentVertical_Top);
    auto const line = Line(cases[2].mLeaves);
    EXPECT_EQ(line->Arrange(T(Rect(0, 0, 180, 20))), T(Size(200, 20)));
    EXPECT_EQ(Along(line->ContentSize()), 220);
    EXPECT_TRUE(group.mPositions.back() == T(Size(-20, 0)) && group.mDimensions.back() == T(Size(200, 20)));
    auto const pinned = Line(cases[1].mLeaves);
    pinned->Distribute(T(Size(300, 20)));
    EXPECT_TRUE(!pinned->Placements()[1].mExpandable && pinned->Placements()[2].mExpandable);
}

TEST_P(LineArrangementTest, SizesAndTheKeptDistribution) {
    Margins(1, 2, 3, 4);
    auto const line = Line({{100, 20}, {50, 30, true, 20}});
    EXPECT_EQ(T(Size(line->MinWidth(), line->MinHeight())), Size(100 + 20 + 10 + 4, 30 + 6));
    line->Prepare();
    EXPECT_EQ(T(Size(line->BestWidth(), line->BestHeight())), Size(100 + 50 + 10 + 4, 30 + 6));
    EXPECT_TRUE(line->HorizontallyExpandable() == !IsColumn() && line->VerticallyExpandable() == IsColumn());
    auto const inner = Line({{100, 20}, {50, 30, true, 20}}, false);
    EXPECT_EQ(T(Size(inner->MinWidth(), inner->MinHeight())), Size(130, 30)) << "no margins inside a wrapping";

    // The spare room is measured from the minimum size (170), although the children start at their best.
    inner->Distribute(T(Size(300, 20)));
    EXPECT_EQ(Along(inner->Placements()[1].mSize), 220);
    leaves[1]->mLimit = T(Size(60, kNoLimit));  // a changed answer is only seen by a new distribution
    inner->Distribute(T(Size(300.00005f, 20)));
    EXPECT_EQ(Along(inner->Placements()[1].mSize), 220);
    inner->Distribute(T(Size(301, 20)));
    EXPECT_EQ(Along(inner->Placements()[1].mSize), 60);
}

TEST_P(LineArrangementTest, SeparatorsTakeTheShorterNeighbourAndInnerLinesSkipTheMargins) {
    TestSeparator first, second;
    Align(kAlignmentHorizontal_Left, kAlignmentVertical_Bottom);
    Line({{40, 20}, {40, 30}, {40, 20}, {40, 20}}, true, {&first, &second, nullptr})->Arrange(T(Rect(0, 0, 200, 30)));
    EXPECT_TRUE(first.mOrientation == IsColumn() && second.mOrientation == IsColumn());
    EXPECT_EQ(first.mRect, T(Rect(40, 10, 10, 20))) << "the earlier, shorter neighbour";
    EXPECT_EQ(second.mRect, T(Rect(90, 10, 10, 20))) << "the later, shorter neighbour";
    EXPECT_EQ(leaves[3]->Last(), T(Rect(150, 10, 40, 20))) << "a null separator keeps its gap";

    // An inner line of a wrapping has no margins and reports nothing, but still aligns.
    Margins(5, 5, 5, 5);
    Align(kAlignmentHorizontal_Center, kAlignmentVertical_Center);
    group.mPositions.clear();
    auto const inner = Line({{100, 20}}, false);
    EXPECT_EQ(inner->Arrange(T(Rect(0, 0, 200, 40))), T(Size(200, 40)));
    EXPECT_TRUE(!inner->IsOutermost() && group.mPositions.empty());
    EXPECT_EQ(leaves[0]->Last(), T(Rect(50, 10, 100, 20)));
    Line({{100, 20}})->Arrange(T(Rect(0, 0, 200, 40)));
    EXPECT_EQ(leaves[0]->Last(), T(Rect(50, 10, 100, 20)));
    EXPECT_TRUE(group.mPositions.back() == T(Size(50, 10)) && group.mDimensions.back() == T(Size(190, 30)));
}

TEST_P(LineArrangementTest, ExpandedClippedAndWastedAreas) {
    auto const line = Line({{100, 20}, {50, 10}, {50, 30, true, -1, 70}});
    line->Prepare();
    // Along and across the line, offered the same room both ways.
    auto const expanded = [&](float inRoom) {
        return T(Size(line->ExpandedWidth(inRoom), line->ExpandedHeight(inRoom)));
    };
    EXPECT_EQ(expanded(1000).x, 100 + 50 + 70 + 20);
    EXPECT_EQ(expanded(160).x, 160) << "the children stop when the room is used; gaps still count";
    EXPECT_TRUE(expanded(100).y == 30 && expanded(25).y == 30) << "each child is offered the whole inner size";
    // Too low by 10 everywhere (2000) and the last child wholly outside (1000); the gap after the first does not count.
    auto const fixed = Line({{100, 20}, {50, 20}, {50, 20}});
    EXPECT_TRUE(fixed->ClippedArea(T(Size(220, 20))) == 0 && fixed->ClippedArea(T(Size(150, 10))) == 3000);
    // Inner (300, 30): B grows to 190; each child wastes 10 high, the gap 10 wide, the margins their strips.
    Margins(1, 3, 2, 4);
    EXPECT_EQ(Line({{100, 20}, {50, 20, true}})->WastedArea(T(Size(303, 37))), 1000 + 1900 + 300 + 3 * 37 + 7 * 303);
}
