#include "TestElements.h"

#include <cmath>
#include <stdexcept>

using namespace quorel::arrangetest;

namespace {

// A row of two leaves inside a column, arranged once.  The column's SetDimensions calls
// count the rearrangements of the whole tree.
class TreeTest : public ::testing::Test {
protected:
    TreeTest() : a(40, 10), b(60, 10), row({&a, &b}), root({&row}) { root.Arrange(Rect(0, 0, 200, 50)); }
    int Rearrangements() const { return static_cast<int>(root.mDimensions.size()) - 1; }
    int HostCalls() const { return a.mHostCalls + b.mHostCalls + row.mHostCalls + root.mHostCalls; }
    std::vector<bool> Valid() const {
        return {a.ArrangementsValid(), b.ArrangementsValid(), row.ArrangementsValid(), root.ArrangementsValid()};
    }

    TestLeaf a, b;
    TestGroup<Row> row;
    TestGroup<Column> root;
};

}  // namespace

TEST_F(TreeTest, AnyNodeArrangesTheRootButDegenerateRectanglesOrDisabledArrangingCallNoHost) {
    int const calls = HostCalls();
    for (Rect const rect : {Rect(0, 0, 0, 50), Rect(0, 0, 100, -1), Rect(0, 0, std::nanf(""), 50)}) {
        EXPECT_EQ(a.Arrange(rect), Size());
    }
    root.EnableArrangement(false);
    EXPECT_TRUE(!a.ArrangementEnabled() && root.Arrange(Rect(0, 0, 500, 500)) == Size());
    EXPECT_TRUE(HostCalls() == calls && root.Bounds() == Rect(0, 0, 200, 50));

    a.EnableArrangement(true);  // resumes with the earlier rectangle; the refused one is lost
    EXPECT_TRUE(Rearrangements() == 1 && root.mDimensions.back() == Size(200, 50));
    root.EnableArrangement(true);
    EXPECT_EQ(Rearrangements(), 1) << "already enabled: nothing";

    EXPECT_TRUE(a.Parent() == &row && row.Parent() == &root && Parent(root) == nullptr) << "linked by the rebuild";
    EXPECT_TRUE(a.Arrange(Rect(5, 5, 300, 40)) == Size(300, 40) && b.Last() == Rect(45, 5, 60, 10));
    EXPECT_TRUE(root.Bounds() == Rect(5, 5, 300, 40) && a.Bounds() == Rect()) << "kept on the root only";
}

TEST_F(TreeTest, InvalidateRearrangesTheRootOnceOrOnlyMarksThePathWhileDisabled) {
    a.mBest = Size(70, 10);
    a.Invalidate();
    EXPECT_TRUE(Rearrangements() == 1 && Valid() == std::vector<bool>(4, true));
    EXPECT_EQ(b.Last(), Rect(70, 0, 60, 10)) << "the new answer is used";

    root.EnableArrangement(false);
    a.Invalidate();
    EXPECT_TRUE(Rearrangements() == 1 && Valid() == std::vector<bool>({false, true, false, false})) << "the path only";
    b.Invalidate();
    root.InvalidateAll();  // nothing while disabled
    root.EnableArrangement(true);
    EXPECT_EQ(Rearrangements(), 2) << "grouped changes cost one rearrangement";

    // A node never built is invalid: it does not climb, but still rearranges the root.
    TestLeaf newcomer(5, 5);
    newcomer.SetParent(&row);
    newcomer.Invalidate();
    EXPECT_TRUE(Rearrangements() == 3 && Valid() == std::vector<bool>(4, true));
    root.InvalidateAll();
    EXPECT_EQ(Rearrangements(), 3 + 4) << "a, b, row, root: each its own";
}

TEST_F(TreeTest, CallbacksThatInvalidateGetAnotherPassFiveAtMost) {
    a.mOnPlace = [] { throw std::runtime_error("host failure"); };
    EXPECT_THROW(b.Invalidate(), std::runtime_error);
    EXPECT_TRUE(root.ArrangementEnabled()) << "the suspension ends with the exception";

    int changes = 100;  // the host keeps changing an answer during the pass
    a.mOnPlace = [&] {
        if (--changes >= 0) root.EnableArrangement(false), a.Invalidate();
    };
    std::size_t placed = a.mPlaced.size();
    root.Arrange(Rect(0, 0, 100, 20));
    EXPECT_EQ(a.mPlaced.size() - placed, 5u);
    changes = 1;  // one change gets exactly one more pass
    placed = a.mPlaced.size();
    root.EnableArrangement(true);
    EXPECT_EQ(a.mPlaced.size() - placed, 2u);
}

TEST(Tree, GroupsWithoutArrangeableChildrenAndRearrangeBeforeAnyArrange) {
    TestGroup<Row> empty, other;
    empty.Rearrange();
    EXPECT_EQ(empty.mHostCalls, 0) << "no rectangle yet";
    EXPECT_TRUE(empty.BestSize() == Size() && empty.Arrange(Rect(0, 0, 10, 10)) == Size() && empty.mPositions.empty());
    // Children without arrangements take no part: a row of them has one arrangement of no
    // children, the size of the margins; a wrapping of them has none.
    TestGroup<Row> row({&empty, &other});
    row.mMargins = {2, 3, 4, 5};
    ASSERT_TRUE(row.Arrangements().Size() == 1u && row.BestSize() == Size(6, 8));
    EXPECT_EQ(row.Arrange(Rect(0, 0, 50, 40)), Size(44, 32));
    EXPECT_TRUE(row.mPositions == std::vector<Size>({{2, 3}}) && row.mDimensions == std::vector<Size>({{44, 32}}));
    EXPECT_TRUE(TestGroup<HorizontalWrapping>({&empty, &other}).Arrangements().IsEmpty());
}

TEST(Tree, SeparatorsAreRebuiltOnlyWhenTheirCountIsWrong) {
    Leaves leaves{{10, 10}, {10, 10}, {10, 10}};
    TestGroup<Row> row({&leaves[0], &leaves[1]});
    row.mWithSeparators = true;
    row.BestSize();
    EXPECT_TRUE(row.Separators().size() == 1u && row.mClears == 1);
    row.mKids.push_back(&leaves[2]);
    for (int i = 0; i < 2; ++i) {  // the second time the count is right and kept
        row.Invalidate();
        row.BestSize();
        EXPECT_TRUE(row.Separators().size() == 2u && row.Separators()[1] == &row.SeparatorAt(1) && row.mClears == 2);
    }
    row.SetChildren({});
    row.BuildSeparators();
    EXPECT_TRUE(row.Separators().empty());
}
