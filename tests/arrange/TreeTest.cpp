#include <quorel/arrange/Column.h>
#include <quorel/arrange/Hierarchy.h>
#include <quorel/arrange/HorizontalWrapping.h>
#include <quorel/arrange/Row.h>

#include "TestElements.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace quorel::arrange;
using namespace quorel::arrangetest;

namespace {

// A row of two leaves inside a column, arranged once.  The column's
// SetDimensions calls count the rearrangements of the whole tree.
class TreeTest : public ::testing::Test {
protected:
    TreeTest() : a(40, 10), b(60, 10), row({&a, &b}), root({&row}) {}

    void SetUp() override { root.Arrange(Rect(0, 0, 200, 50)); }

    int Rearrangements() const { return static_cast<int>(root.mDimensions.size()) - 1; }

    int HostCalls() const { return a.mHostCalls + b.mHostCalls + row.mHostCalls + root.mHostCalls; }

    TestLeaf a;
    TestLeaf b;
    TestGroup<Row> row;
    TestGroup<Column> root;
};

}  // namespace

TEST_F(TreeTest, RebuildLinksChildrenToTheirGroup) {
    EXPECT_EQ(a.Parent(), &row);
    EXPECT_EQ(row.Parent(), &root);
    EXPECT_EQ(Parent(root), nullptr);
    EXPECT_EQ(row.Children(), (std::vector<IArrangeable*>{&a, &b}));
    EXPECT_EQ(b.Last(), Rect(40, 0, 60, 10));
    EXPECT_EQ(root.Bounds(), Rect(0, 0, 200, 50));
}

TEST_F(TreeTest, ArrangeOfANodeArrangesTheRoot) {
    EXPECT_EQ(a.Arrange(Rect(5, 5, 300, 40)), Size(300, 40));
    EXPECT_EQ(root.Bounds(), Rect(5, 5, 300, 40));
    EXPECT_EQ(a.Bounds(), Rect()) << "kept on the root only";
    EXPECT_EQ(b.Last(), Rect(45, 5, 60, 10));
}

TEST_F(TreeTest, DegenerateRectangleIsRefusedWithoutHostCalls) {
    int const calls = HostCalls();
    EXPECT_EQ(root.Arrange(Rect(0, 0, 0, 50)), Size());
    EXPECT_EQ(a.Arrange(Rect(0, 0, 100, -1)), Size());
    EXPECT_EQ(root.Arrange(Rect(0, 0, std::nanf(""), 50)), Size());
    EXPECT_EQ(HostCalls(), calls);
    EXPECT_EQ(root.Bounds(), Rect(0, 0, 200, 50));
}

TEST_F(TreeTest, DisabledArrangingStoresNothingAndResumesWithTheEarlierRectangle) {
    root.EnableArrangement(false);
    EXPECT_FALSE(a.ArrangementEnabled());
    int const calls = HostCalls();
    EXPECT_EQ(root.Arrange(Rect(0, 0, 500, 500)), Size());
    EXPECT_EQ(HostCalls(), calls);

    a.EnableArrangement(true);
    EXPECT_EQ(Rearrangements(), 1);
    EXPECT_EQ(root.mDimensions.back(), Size(200, 50)) << "the rectangle of the refused call is lost";

    root.EnableArrangement(true);
    EXPECT_EQ(Rearrangements(), 1) << "already enabled: nothing";
}

TEST(Tree, RearrangeBeforeAnyArrangeDoesNothing) {
    TestLeaf leaf(10, 10);
    TestGroup<Row> root({&leaf});
    root.Rearrange();
    leaf.Rearrange();
    EXPECT_EQ(leaf.mHostCalls, 0);
    EXPECT_EQ(root.mHostCalls, 0);
}

TEST_F(TreeTest, InvalidateOfALeafRearrangesTheRootOnce) {
    a.mBest = Size(70, 10);
    a.Invalidate();
    EXPECT_EQ(Rearrangements(), 1);
    EXPECT_TRUE(a.ArrangementsValid());
    EXPECT_TRUE(root.ArrangementsValid());
    EXPECT_EQ(b.Last(), Rect(70, 0, 60, 10)) << "the new answer is used";
}

TEST_F(TreeTest, InvalidateWhileDisabledOnlyMarksThePath) {
    root.EnableArrangement(false);
    a.Invalidate();
    EXPECT_EQ(Rearrangements(), 0);
    EXPECT_FALSE(a.ArrangementsValid());
    EXPECT_FALSE(row.ArrangementsValid());
    EXPECT_FALSE(root.ArrangementsValid());
    EXPECT_TRUE(b.ArrangementsValid()) << "only the path to the root";

    b.Invalidate();
    root.EnableArrangement(true);
    EXPECT_EQ(Rearrangements(), 1) << "grouped changes cost one rearrangement";
}

TEST_F(TreeTest, InvalidateOfAnInvalidNodeDoesNotClimb) {
    // A node that was never built is invalid; it still rearranges the root.
    TestLeaf newcomer(5, 5);
    newcomer.SetParent(&row);
    newcomer.Invalidate();
    EXPECT_TRUE(row.ArrangementsValid());
    EXPECT_TRUE(root.ArrangementsValid());
    EXPECT_EQ(Rearrangements(), 1);
}

TEST_F(TreeTest, InvalidateAllInvalidatesEveryNodeWithItsOwnRearrangement) {
    root.InvalidateAll();
    EXPECT_EQ(Rearrangements(), 4) << "a, b, row, root";
    root.EnableArrangement(false);
    root.InvalidateAll();
    EXPECT_TRUE(a.ArrangementsValid()) << "nothing while disabled";
}

TEST_F(TreeTest, CallbackThatKeepsInvalidatingGetsFivePasses) {
    int const before = static_cast<int>(a.mPlaced.size());
    a.mOnPlace = [this] {
        root.EnableArrangement(false);
        a.Invalidate();
    };
    root.Arrange(Rect(0, 0, 100, 20));
    EXPECT_EQ(static_cast<int>(a.mPlaced.size()) - before, 5);

    // One invalidation gets exactly one more pass.
    a.mOnPlace = [this] {
        a.mOnPlace = nullptr;
        root.EnableArrangement(false);
        a.Invalidate();
    };
    int const passes = static_cast<int>(a.mPlaced.size());
    root.EnableArrangement(true);  // rearranges
    EXPECT_EQ(static_cast<int>(a.mPlaced.size()) - passes, 2);
}

TEST_F(TreeTest, SuspensionEndsWhenTheRearrangementThrows) {
    a.mOnPlace = [] { throw std::runtime_error("host failure"); };
    EXPECT_THROW(b.Invalidate(), std::runtime_error);
    EXPECT_TRUE(root.ArrangementEnabled());
}

TEST(Tree, PostorderTransversalServesChildrenFirstAndSkipsRefusingNodes) {
    TestLeaf a(1, 1);
    TestLeaf b(1, 1);
    TestLeaf c(1, 1);
    TestGroup<Row> inner({&a, &b});
    TestGroup<Row> refusing({&c});
    refusing.mRefuseVisit = true;
    TestGroup<Column> root({&inner, &refusing});

    std::vector<IArrangeable*> order;
    auto record = [&order](IArrangeable& inNode) {
        order.push_back(&inNode);
        return true;
    };
    hierarchy::Impl::PostorderTransversal<decltype(record)> walk(record);
    EXPECT_TRUE(walk(root));
    EXPECT_EQ(order, (std::vector<IArrangeable*>{&a, &b, &inner, &root}));

    std::vector<IArrangeable const*> children;
    EXPECT_TRUE(VisitChildren(static_cast<IArrangeable const&>(inner),
                              hierarchy::Impl::ChildrenToVector<IArrangeable const*>(children)));
    EXPECT_EQ(children, (std::vector<IArrangeable const*>{&a, &b}));
}

TEST(Tree, GroupsWithoutArrangements) {
    // No children: no arrangement, nothing to arrange.
    TestGroup<Row> empty;
    EXPECT_EQ(empty.BestSize(), Size());
    EXPECT_EQ(empty.Arrange(Rect(0, 0, 10, 10)), Size());
    EXPECT_TRUE(empty.mPositions.empty());

    // Children without arrangements take no part: a row of them has one
    // arrangement of no children, whose size is the margins.
    TestGroup<Row> inner1;
    TestGroup<Row> inner2;
    TestGroup<Row> row({&inner1, &inner2});
    row.Margins(2, 3, 4, 5);
    ASSERT_EQ(row.Arrangements().Size(), 1u);
    EXPECT_EQ(row.BestSize(), Size(6, 8));
    EXPECT_EQ(row.Arrange(Rect(0, 0, 50, 40)), Size(44, 32));
    EXPECT_EQ(row.mPositions, (std::vector<Size>{{2, 3}}));
    EXPECT_EQ(row.mDimensions, (std::vector<Size>{{44, 32}}));

    // A wrapping group of them has none.
    TestGroup<HorizontalWrapping> wrapping({&inner1, &inner2});
    EXPECT_TRUE(wrapping.Arrangements().IsEmpty());
}

TEST(Tree, SeparatorsAreRebuiltWhenTheirCountIsWrong) {
    TestLeaf a(10, 10);
    TestLeaf b(10, 10);
    TestLeaf c(10, 10);
    TestGroup<Row> row({&a, &b});
    row.mWithSeparators = true;
    row.BestSize();
    EXPECT_EQ(row.Separators().size(), 1u);
    EXPECT_EQ(row.mClears, 1);

    row.mKids.push_back(&c);
    row.Invalidate();
    row.BestSize();
    ASSERT_EQ(row.Separators().size(), 2u);
    EXPECT_EQ(row.Separators()[1], &row.SeparatorAt(1));
    EXPECT_EQ(row.mClears, 2);

    row.Invalidate();
    row.BestSize();
    EXPECT_EQ(row.mClears, 2) << "the right count is kept";

    row.SetChildren({});
    row.BuildSeparators();
    EXPECT_TRUE(row.Separators().empty());
}
