#include <quorel/arrange/ColumnArrangement.h>
#include <quorel/arrange/Row.h>
#include <quorel/arrange/RowArrangement.h>

#include "TestElements.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace quorel::arrange;
using namespace quorel::arrangetest;
using impl::ArrangementPtr;
using impl::GroupArrangement;

namespace {

// Every case is written for a row and run for a column as well, with all
// sizes, rectangles and margins transposed: the two must agree exactly.
class LineArrangementTest : public ::testing::TestWithParam<impl::LineAxis> {
protected:
    LineArrangementTest() { group.mSpacing = Size(10, 10); }

    bool IsColumn() const { return GetParam() == impl::kLineAxis_Vertical; }
    Size T(Size inSize) const { return IsColumn() ? Size(inSize.y, inSize.x) : inSize; }
    Rect T(Rect inRect) const {
        return IsColumn() ? Rect(inRect.y, inRect.x, inRect.height, inRect.width) : inRect;
    }

    // A leaf of the given size along and across the line.
    TestLeaf& Leaf(float inAlong, float inAcross, bool inExpandable = false) {
        Size const size = T(Size(inAlong, inAcross));
        leaves.emplace_back(new TestLeaf(size.x, size.y));
        leaves.back()->Expanding(inExpandable && !IsColumn(), inExpandable && IsColumn());
        return *leaves.back();
    }
    void Limit(TestLeaf& ioLeaf, float inAlong) { (IsColumn() ? ioLeaf.mLimit.y : ioLeaf.mLimit.x) = inAlong; }
    void MinAlong(TestLeaf& ioLeaf, float inAlong) {
        ioLeaf.mMin = ioLeaf.mBest;
        (IsColumn() ? ioLeaf.mMin.y : ioLeaf.mMin.x) = inAlong;
    }
    // Margins given as for a row: before and after along, before and after across.
    void Margins(float inLeft, float inTop, float inRight, float inBottom) {
        if (IsColumn()) {
            group.Margins(inTop, inLeft, inBottom, inRight);
        } else {
            group.Margins(inLeft, inTop, inRight, inBottom);
        }
    }
    void Align(int inMain, int inCross) {
        group.mAlignH = static_cast<AlignmentHorizontal>(IsColumn() ? inCross : inMain);
        group.mAlignV = static_cast<AlignmentVertical>(IsColumn() ? inMain : inCross);
    }

    boost::intrusive_ptr<GroupArrangement> Line(bool inOutermost = true, impl::SeparatorList inSeparators = {}) {
        impl::ArrangementList children;
        for (auto const& leaf : leaves) {
            children.push_back(leaf->Arrangements().At(0));
        }
        if (IsColumn()) {
            return new impl::ColumnArrangement(group, children, inSeparators, inOutermost);
        }
        return new impl::RowArrangement(group, children, inSeparators, inOutermost);
    }

    float Along(Size inSize) const { return IsColumn() ? inSize.y : inSize.x; }

    TestGroup<Row> group;
    std::vector<std::unique_ptr<TestLeaf>> leaves;
};

INSTANTIATE_TEST_SUITE_P(BothAxes, LineArrangementTest,
                         ::testing::Values(impl::kLineAxis_Horizontal, impl::kLineAxis_Vertical),
                         [](::testing::TestParamInfo<impl::LineAxis> const& inInfo) {
                             return inInfo.param == impl::kLineAxis_Horizontal ? "Row" : "Column";
                         });

}  // namespace

TEST_P(LineArrangementTest, MinimumAndBestSizes) {
    Leaf(100, 20);
    MinAlong(Leaf(50, 30, true), 20);
    Margins(1, 2, 3, 4);
    auto const line = Line();
    EXPECT_EQ(T(Size(line->MinWidth(), line->MinHeight())), Size(100 + 20 + 10 + 4, 30 + 6));
    line->Prepare();
    EXPECT_EQ(T(Size(line->BestWidth(), line->BestHeight())), Size(100 + 50 + 10 + 4, 30 + 6));
    EXPECT_EQ(line->HorizontallyExpandable(), !IsColumn());
    EXPECT_EQ(line->VerticallyExpandable(), IsColumn());
    EXPECT_EQ(line->Axis(), GetParam());

    auto const inner = Line(false);
    EXPECT_EQ(T(Size(inner->MinWidth(), inner->MinHeight())), Size(130, 30)) << "no margins inside a wrapping";
}

TEST_P(LineArrangementTest, SpareRoomIsSharedInProportion) {
    TestLeaf& a = Leaf(100, 20);
    TestLeaf& b = Leaf(50, 20, true);
    TestLeaf& c = Leaf(50, 20, true);
    EXPECT_EQ(Line()->Arrange(T(Rect(0, 0, 300, 20))), T(Size(300, 20)));
    // Spare 80: B and C both grow by the factor 1.8.
    EXPECT_EQ(a.Last(), T(Rect(0, 0, 100, 20)));
    EXPECT_EQ(b.Last(), T(Rect(110, 0, 90, 20)));
    EXPECT_EQ(c.Last(), T(Rect(210, 0, 90, 20)));

    // B stops at 60; C's factor is then (70 + 50) / 50 = 2.4.
    Limit(b, 60);
    auto const pinned = Line();
    pinned->Arrange(T(Rect(0, 0, 300, 20)));
    EXPECT_TRUE(RectNear(b.Last(), T(Rect(110, 0, 60, 20))));
    EXPECT_TRUE(RectNear(c.Last(), T(Rect(180, 0, 120, 20))));
    EXPECT_FLOAT_EQ(Along(pinned->ContentSize()), 300);
    EXPECT_FALSE(pinned->Placements()[1].mExpandable);
    EXPECT_TRUE(pinned->Placements()[2].mExpandable);
}

TEST_P(LineArrangementTest, LackOfRoomPinsChildrenAtTheirMinimum) {
    TestLeaf& a = Leaf(100, 20);
    TestLeaf& b = Leaf(50, 20, true);
    TestLeaf& c = Leaf(50, 20, true);
    Align(kAlignmentHorizontal_Center, kAlignmentVertical_Center);
    auto const line = Line();
    // Spare -40: targets 30 and 10 lie below the minimum 50.
    EXPECT_EQ(line->Arrange(T(Rect(0, 0, 180, 20))), T(Size(200, 20)));
    EXPECT_EQ(Along(line->ContentSize()), 220);
    EXPECT_EQ(group.mPositions.back(), T(Size(-20, 0))) << "centred content starts 20 before the rectangle";
    EXPECT_EQ(a.Last(), T(Rect(-20, 0, 100, 20)));
    EXPECT_EQ(b.Last(), T(Rect(90, 0, 50, 20)));
    EXPECT_EQ(c.Last(), T(Rect(150, 0, 50, 20)));
    EXPECT_EQ(group.mDimensions.back(), T(Size(200, 20)));
}

TEST_P(LineArrangementTest, FixedChildrenKeepTheirBestSize) {
    // Best 100, minimum 40, alone at 40: no spare room, the child stays 100.
    TestLeaf& only = Leaf(100, 20);
    MinAlong(only, 40);
    Align(kAlignmentHorizontal_Center, kAlignmentVertical_Top);
    auto const line = Line();
    line->Arrange(T(Rect(0, 0, 40, 20)));
    EXPECT_EQ(Along(line->ContentSize()), 40);
    EXPECT_EQ(only.Last(), T(Rect(0, 0, 100, 20)));

    // With room to spare, right alignment moves fixed children by all of it.
    leaves.clear();
    TestLeaf& a = Leaf(100, 20);
    TestLeaf& b = Leaf(50, 20);
    Align(kAlignmentHorizontal_Right, kAlignmentVertical_Top);
    Line()->Arrange(T(Rect(5, 0, 300, 20)));
    EXPECT_EQ(a.Last(), T(Rect(145, 0, 100, 20)));
    EXPECT_EQ(b.Last(), T(Rect(255, 0, 50, 20)));
}

TEST_P(LineArrangementTest, DistributionIsKeptForTheSameSize) {
    Leaf(100, 20);
    TestLeaf& b = Leaf(50, 20, true);
    auto const line = Line();
    line->Distribute(T(Size(300, 20)));
    EXPECT_EQ(Along(line->Placements()[1].mSize), 190);

    Limit(b, 60);  // a changed answer is only seen by a new distribution
    line->Distribute(T(Size(300.00005f, 20)));
    EXPECT_EQ(Along(line->Placements()[1].mSize), 190);
    line->Distribute(T(Size(301, 20)));
    EXPECT_EQ(Along(line->Placements()[1].mSize), 60);
}

TEST_P(LineArrangementTest, ExpandableChildWithoutBestSizeStaysFiniteAndAtItsMinimum) {
    // Z comes last among the expandable children: the room left to share in
    // proportion to reaches zero at it.
    TestLeaf& a = Leaf(40, 20, true);
    TestLeaf& z = Leaf(0, 20, true);
    TestLeaf& w = Leaf(0, 20, true);
    MinAlong(w, 5);
    auto const line = Line();
    line->Arrange(T(Rect(0, 0, 200, 20)));
    for (GroupArrangement::Placement const& placement : line->Placements()) {
        EXPECT_TRUE(std::isfinite(placement.mSize.x) && std::isfinite(placement.mSize.y));
    }
    EXPECT_TRUE(std::isfinite(Along(line->ContentSize())));
    EXPECT_EQ(Along(line->Placements()[1].mSize), 0);
    EXPECT_EQ(Along(line->Placements()[2].mSize), 5) << "never below its minimum";
    // Spare 135 less W's 5 at its minimum: A takes the remaining 130.
    EXPECT_TRUE(RectNear(a.Last(), T(Rect(0, 0, 170, 20))));
    EXPECT_TRUE(RectNear(z.Last(), T(Rect(180, 0, 0, 20))));
    EXPECT_TRUE(RectNear(w.Last(), T(Rect(190, 0, 5, 20))));

    // The only expandable child without best size: nothing to share with.
    leaves.clear();
    Leaf(40, 20);
    MinAlong(Leaf(0, 20, true), 5);
    auto const alone = Line();
    alone->Distribute(T(Size(200, 20)));
    EXPECT_EQ(Along(alone->Placements()[1].mSize), 5);
}

TEST_P(LineArrangementTest, SeparatorsTakeTheShorterNeighbour) {
    Leaf(40, 20);
    Leaf(40, 30);
    Leaf(40, 20);
    Leaf(40, 20);
    Align(kAlignmentHorizontal_Left, kAlignmentVertical_Bottom);
    TestSeparator first;
    TestSeparator second;
    Line(true, {&first, &second, nullptr})->Arrange(T(Rect(0, 0, 200, 30)));
    int const orientation = IsColumn() ? 1 : 0;
    EXPECT_EQ(first.mOrientation, orientation);
    EXPECT_EQ(first.mRect, T(Rect(40, 10, 10, 20))) << "the earlier, shorter neighbour";
    EXPECT_EQ(second.mOrientation, orientation);
    EXPECT_EQ(second.mRect, T(Rect(90, 10, 10, 20))) << "the later, shorter neighbour";
    EXPECT_EQ(leaves[3]->Last(), T(Rect(150, 10, 40, 20))) << "a null separator keeps its gap";
}

TEST_P(LineArrangementTest, InnerLinesIgnoreMarginsButStillAlign) {
    TestLeaf& a = Leaf(100, 20);
    Margins(5, 5, 5, 5);
    Align(kAlignmentHorizontal_Center, kAlignmentVertical_Center);
    auto const line = Line(false);
    EXPECT_FALSE(line->IsOutermost());
    EXPECT_EQ(line->Arrange(T(Rect(0, 0, 200, 40))), T(Size(200, 40)));
    EXPECT_EQ(a.Last(), T(Rect(50, 10, 100, 20)));
    EXPECT_TRUE(group.mPositions.empty());
    EXPECT_TRUE(group.mDimensions.empty());

    Line(true)->Arrange(T(Rect(0, 0, 200, 40)));
    EXPECT_EQ(a.Last(), T(Rect(50, 10, 100, 20)));
    EXPECT_EQ(group.mPositions, (std::vector<Size>{T(Size(50, 10))}));
    EXPECT_EQ(group.mDimensions, (std::vector<Size>{T(Size(190, 30))}));
}

TEST_P(LineArrangementTest, ExpandedSizes) {
    Leaf(100, 20);
    Leaf(50, 10);
    Leaf(50, 30, true);
    Limit(*leaves.back(), 70);
    auto const line = Line();
    line->Prepare();
    auto along = [&](float inAvailable) {
        return IsColumn() ? line->ExpandedHeight(inAvailable) : line->ExpandedWidth(inAvailable);
    };
    auto across = [&](float inAvailable) {
        return IsColumn() ? line->ExpandedWidth(inAvailable) : line->ExpandedHeight(inAvailable);
    };
    EXPECT_EQ(along(1000), 100 + 50 + 70 + 20);
    EXPECT_EQ(along(160), 160) << "the children stop when the room is used; gaps still count";
    EXPECT_EQ(across(100), 30);
    EXPECT_EQ(across(25), 30) << "each child is offered the whole inner size";
}

TEST_P(LineArrangementTest, ClippedArea) {
    Leaf(100, 20);
    Leaf(50, 20);
    Leaf(50, 20);
    auto const line = Line();
    EXPECT_EQ(line->ClippedArea(T(Size(220, 20))), 0);
    // Too low by 10 everywhere (2000) and the last child entirely outside
    // (1000); the gap after the first child does not count.
    EXPECT_EQ(line->ClippedArea(T(Size(150, 10))), 3000);
}

TEST_P(LineArrangementTest, WastedAreaCountsGapsMarginsAndChildren) {
    Leaf(100, 20);
    Leaf(50, 20, true);
    Margins(1, 3, 2, 4);
    auto const line = Line();
    // Inner (300, 30): B grows to 190; each child wastes 10 high, the gap 10
    // wide, the margins their strips of the whole size.
    EXPECT_EQ(line->WastedArea(T(Size(303, 37))), 1000 + 1900 + 300 + 3 * 37 + 7 * 303);
    EXPECT_EQ(Along(line->Placements()[1].mSize), 190);
}
