#include <quorel/arrange/AbstractArrangeableGroup.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/DynamicGroup.h>
#include <quorel/arrange/HostedGroup.h>
#include <quorel/arrange/Row.h>

#include "TestElements.h"

#include <gtest/gtest.h>

using namespace quorel::arrange;
using namespace quorel::arrangetest;

namespace {

// A host container whose kind can change: two leaves with spacing, margins
// and separators of its own.
class Panel : public DynamicGroup {
public:
    explicit Panel(GroupArrangementType inType = kGroupArrangementType_AutoLayout)
        : DynamicGroup(nullptr, inType), a(10, 10), b(10, 10) {}

    bool VisitChildren(IArrangeable::ConstVisitor inFunction) const override {
        return inFunction(a) && inFunction(b);
    }
    bool VisitChildren(IArrangeable::Visitor inFunction) override { return inFunction(a) && inFunction(b); }
    float HorizontalSpacing() const override { return 4; }
    float VerticalSpacing() const override { return 6; }
    float LeftMargin() const override { return 1; }
    float TopMargin() const override { return 2; }
    ISeparator* BuildSeparator() override { return &separator; }
    void Position(Size const& inTopLeft) override { positions.push_back(inTopLeft); }

    TestLeaf a;
    TestLeaf b;
    TestSeparator separator;
    std::vector<Size> positions;
};

}  // namespace

TEST(DynamicGroup, StartsAsAnEnabledAutoLayout) {
    Panel panel;
    EXPECT_EQ(panel.ArrangementType(), kGroupArrangementType_AutoLayout);
    ASSERT_NE(panel.Arrangeable(), nullptr);
    EXPECT_TRUE(panel.ArrangementEnabled());
    EXPECT_EQ(panel.Group(), panel.Arrangeable());
    // Both wrappings of two children: a row and a column.
    EXPECT_EQ(panel.Group()->Arrangements().Size(), 2u);
}

TEST(DynamicGroup, InnerGroupAsksTheHost) {
    Panel panel(kGroupArrangementType_Row);
    EXPECT_EQ(panel.BestSize(), Size(1 + 10 + 4 + 10, 2 + 10));
    panel.Arrangeable()->Arrange(Rect(0, 0, 100, 50));
    EXPECT_EQ(panel.a.Last(), Rect(1, 2, 10, 10));
    EXPECT_EQ(panel.b.Last(), Rect(15, 2, 10, 10));
    EXPECT_EQ(panel.separator.mRect, Rect(11, 2, 4, 10));
    EXPECT_EQ(panel.positions, (std::vector<Size>{{1, 2}}));
    EXPECT_EQ(panel.a.Parent(), panel.Arrangeable());
}

TEST(DynamicGroup, SameTypeKeepsTheGroupAndItsState) {
    Panel panel(kGroupArrangementType_Row);
    panel.Arrangeable()->Arrange(Rect(0, 0, 100, 50));
    impl::AbstractArrangeableGroup* const group = panel.Group();
    panel.SetArrangementType(kGroupArrangementType_Row, nullptr);
    EXPECT_EQ(panel.Group(), group);
    EXPECT_TRUE(group->ArrangementsValid()) << "nothing invalidated";
    EXPECT_EQ(panel.positions.size(), 1u);
}

TEST(DynamicGroup, NewTypeStartsAFreshGroup) {
    Panel panel(kGroupArrangementType_Row);
    panel.Arrangeable()->Arrange(Rect(0, 0, 100, 50));
    panel.EnableArrangement(false);
    impl::AbstractArrangeableGroup* const old = panel.Group();

    panel.SetArrangementType(kGroupArrangementType_Column, nullptr);
    EXPECT_EQ(panel.ArrangementType(), kGroupArrangementType_Column);
    EXPECT_NE(panel.Group(), old);
    EXPECT_EQ(panel.Arrangeable()->Bounds(), Rect()) << "bounds are not carried over";
    EXPECT_TRUE(panel.ArrangementEnabled()) << "nor is the disabled flag";

    panel.Rearrange();
    EXPECT_EQ(panel.positions.size(), 1u) << "no rectangle yet: nothing arranged";
    panel.Arrangeable()->Arrange(Rect(0, 0, 100, 50));
    EXPECT_EQ(panel.b.Last(), Rect(1, 18, 10, 10)) << "a column now, with the vertical spacing";
    EXPECT_EQ(panel.separator.mOrientation, 1);
}

TEST(DynamicGroup, UnknownTypeKeepsTheGroup) {
    Panel panel(kGroupArrangementType_Flipping);
    impl::AbstractArrangeableGroup* const group = panel.Group();
    panel.SetArrangementType(static_cast<GroupArrangementType>(17), nullptr);
    EXPECT_EQ(panel.Group(), group);
    EXPECT_EQ(panel.ArrangementType(), 17);

    Panel none(static_cast<GroupArrangementType>(-1));
    EXPECT_EQ(none.Arrangeable(), nullptr);
    EXPECT_FALSE(none.ArrangementEnabled());
    EXPECT_EQ(none.BestSize(), Size());
    none.Invalidate();
    none.InvalidateAll();
    none.Rearrange();
    none.EnableArrangement(true);
}

TEST(DynamicGroup, NestsInAParentThroughItsArrangeable) {
    Panel panel(kGroupArrangementType_Column);
    TestLeaf label(30, 8);
    TestGroup<Row> root({&label, panel.Arrangeable()});
    root.Arrange(Rect(0, 0, 200, 100));
    EXPECT_EQ(panel.Arrangeable()->Parent(), &root);
    EXPECT_EQ(panel.a.Last(), Rect(31, 2, 10, 10));

    // Changing the kind: the host invalidates the parent, as its arrangements
    // refer to the old group.
    panel.SetArrangementType(kGroupArrangementType_Row, nullptr);
    root.mKids[1] = panel.Arrangeable();
    root.Invalidate();
    EXPECT_EQ(panel.b.Last(), Rect(45, 2, 10, 10));
}

TEST(HostedGroup, ForwardsEveryAnswerToItsHost) {
    Panel host(kGroupArrangementType_Row);
    HostedGroup<Column, Panel> column(host, nullptr);
    EXPECT_EQ(column.Parent(), nullptr) << "the parent comes from the parent's rebuild";
    EXPECT_EQ(&column.Host(), &host);
    EXPECT_EQ(column.HorizontalSpacing(), 4);
    EXPECT_EQ(column.VerticalSpacing(), 6);
    EXPECT_EQ(column.LeftMargin(), 1);
    EXPECT_EQ(column.TopMargin(), 2);
    EXPECT_EQ(column.BuildSeparator(), &host.separator);
    EXPECT_EQ(column.BestSize(), Size(1 + 10, 2 + 10 + 6 + 10));
}
