// A small dialog laid out the way a host does it: a column with a name row,
// a group of options that may wrap, and a row of buttons, with margins,
// spacing, alignment and separators.
#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/Row.h>

#include "TestElements.h"

#include <gtest/gtest.h>

using namespace quorel::arrange;
using namespace quorel::arrangetest;

namespace {

class DialogLayoutTest : public ::testing::Test {
protected:
    DialogLayoutTest()
        : label(40, 12),
          field(100, 20),
          check1(50, 10),
          check2(50, 10),
          check3(50, 10),
          ok(30, 15),
          cancel(30, 15),
          nameRow({&label, &field}),
          options({&check1, &check2, &check3}),
          buttons({&ok, &cancel}),
          dialog({&nameRow, &options, &buttons}) {
        field.Expanding(true).Margins(1, 1, 1, 1);
        nameRow.mSpacing = Size(5, 0);
        nameRow.mAlignV = kAlignmentVertical_Center;
        options.mSpacing = Size(4, 4);
        options.mWithSeparators = true;
        buttons.mSpacing = Size(6, 0);
        buttons.mAlignH = kAlignmentHorizontal_Right;
        dialog.Margins(10, 10, 10, 10);
        dialog.mSpacing = Size(0, 8);
        dialog.mAlignH = kAlignmentHorizontal_Center;
        dialog.mWithSeparators = true;
    }

    void ExpectNameRow(float inFieldWidth) {
        EXPECT_TRUE(RectNear(label.Last(), Rect(10, 15, 40, 12)));
        EXPECT_TRUE(RectNear(field.Last(), Rect(56, 11, inFieldWidth - 2, 20)));
    }

    TestLeaf label, field, check1, check2, check3, ok, cancel;
    TestGroup<Row> nameRow;
    TestGroup<AutoLayout> options;
    TestGroup<Row> buttons;
    TestGroup<Column> dialog;
};

}  // namespace

TEST_F(DialogLayoutTest, OffersOneLayoutPerSurvivingOptionsArrangement) {
    // Options: one column, a check beside a column of two, or one row.  In the
    // dialog the first is outdone by the second.
    EXPECT_EQ(options.Arrangements().Size(), 3u);
    impl::ArrangementSet const& set = dialog.Arrangements();
    ASSERT_EQ(set.Size(), 2u);
    EXPECT_EQ(Size(set.At(0)->MinWidth(), set.At(0)->MinHeight()), Size(167, 97));
    EXPECT_EQ(Size(set.At(1)->MinWidth(), set.At(1)->MinHeight()), Size(178, 83));
    // Best proportions 167 / 97 lie nearer the golden ratio than 178 / 83.
    EXPECT_EQ(dialog.BestSize(), Size(167, 97));
}

TEST_F(DialogLayoutTest, NarrowDialogStacksTwoOptions) {
    EXPECT_EQ(dialog.Arrange(Rect(0, 0, 170, 120)), Size(150, 100));
    ExpectNameRow(105);
    EXPECT_EQ(nameRow.mPositions.back(), Size(10, 10));
    EXPECT_EQ(nameRow.mDimensions.back(), Size(150, 22));

    EXPECT_EQ(check1.Last(), Rect(33, 40, 50, 10));
    EXPECT_EQ(check2.Last(), Rect(87, 40, 50, 10));
    EXPECT_EQ(check3.Last(), Rect(87, 54, 50, 10));
    EXPECT_EQ(options.SeparatorAt(0).mRect, Rect(83, 40, 4, 10));
    EXPECT_EQ(options.SeparatorAt(0).mOrientation, 0);
    EXPECT_EQ(options.SeparatorAt(1).mRect, Rect(87, 50, 50, 4));
    EXPECT_EQ(options.SeparatorAt(1).mOrientation, 1);
    EXPECT_EQ(options.mDimensions.back(), Size(104, 24));

    EXPECT_EQ(ok.Last(), Rect(52, 72, 30, 15));
    EXPECT_EQ(cancel.Last(), Rect(88, 72, 30, 15));
    EXPECT_EQ(buttons.mPositions.back(), Size(52, 72));

    EXPECT_EQ(dialog.SeparatorAt(0).mRect, Rect(33, 32, 104, 8));
    EXPECT_EQ(dialog.SeparatorAt(1).mRect, Rect(52, 64, 66, 8));
    EXPECT_EQ(dialog.SeparatorAt(1).mOrientation, 1);
    EXPECT_EQ(dialog.mPositions.back(), Size(10, 10));
    EXPECT_EQ(dialog.mDimensions.back(), Size(150, 100));
}

TEST_F(DialogLayoutTest, WideDialogPutsTheOptionsInOneRow) {
    EXPECT_EQ(dialog.Arrange(Rect(0, 0, 240, 90)), Size(220, 70));
    ExpectNameRow(175);
    EXPECT_EQ(check1.Last(), Rect(41, 40, 50, 10));
    EXPECT_EQ(check2.Last(), Rect(95, 40, 50, 10));
    EXPECT_EQ(check3.Last(), Rect(149, 40, 50, 10));
    EXPECT_EQ(options.SeparatorAt(0).mRect, Rect(91, 40, 4, 10));
    EXPECT_EQ(options.SeparatorAt(1).mRect, Rect(145, 40, 4, 10));
    EXPECT_EQ(ok.Last(), Rect(87, 58, 30, 15));
    EXPECT_EQ(cancel.Last(), Rect(123, 58, 30, 15));
    EXPECT_EQ(dialog.SeparatorAt(0).mRect, Rect(41, 32, 158, 8));
    EXPECT_EQ(dialog.SeparatorAt(1).mRect, Rect(87, 50, 66, 8));
}

TEST_F(DialogLayoutTest, WhenBothFitTheSmallerLayoutWins) {
    // At 200 x 120 both layouts waste 18550; the one-row layout has the
    // smaller minimum area.
    impl::ArrangementSet const& set = dialog.Arrangements();
    EXPECT_EQ(set.At(0)->WastedArea(Size(200, 120)), 18550);
    EXPECT_EQ(set.At(1)->WastedArea(Size(200, 120)), 18550);
    dialog.Arrange(Rect(0, 0, 200, 120));
    ExpectNameRow(135);
    EXPECT_EQ(check1.Last(), Rect(21, 40, 50, 10));
    EXPECT_EQ(check3.Last(), Rect(129, 40, 50, 10));
    EXPECT_EQ(ok.Last(), Rect(67, 58, 30, 15));
}

TEST_F(DialogLayoutTest, TooSmallDialogClipsLeast) {
    // Neither fits 150 x 90.  Both clip the name row (17 wide); the one-row
    // options clip 28 more.
    impl::ArrangementSet const& set = dialog.Arrangements();
    EXPECT_EQ(set.At(0)->ClippedArea(Size(150, 90)), 22 * 17);
    EXPECT_EQ(set.At(1)->ClippedArea(Size(150, 90)), 22 * 17 + 10 * 28);
    dialog.Arrange(Rect(0, 0, 150, 90));
    EXPECT_EQ(check3.Last(), Rect(77, 54, 50, 10)) << "stacked, centred in 130";
    EXPECT_EQ(field.Last(), Rect(56, 11, 100, 20)) << "the field keeps its minimum";
}

TEST_F(DialogLayoutTest, ChangedAnswerRearrangesOnce) {
    dialog.Arrange(Rect(0, 0, 240, 90));
    std::size_t const arranged = dialog.mDimensions.size();
    label.mBest = Size(60, 12);
    label.Invalidate();
    EXPECT_EQ(dialog.mDimensions.size(), arranged + 1);
    EXPECT_TRUE(RectNear(field.Last(), Rect(76, 11, 153, 20)));
    EXPECT_TRUE(options.ArrangementsValid());
}
