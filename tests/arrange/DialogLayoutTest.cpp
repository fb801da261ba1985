// A small dialog laid out the way a host does it: a column with a name row, a group of
// options that may wrap, and a row of buttons, with margins, spacing, alignment and separators.
#include "TestElements.h"

using namespace quorel::arrangetest;

TEST(DialogLayout, ArrangesAtSeveralSizes) {
    TestLeaf label{40, 12}, field{100, 20}, check1{50, 10}, check2{50, 10}, check3{50, 10}, ok{30, 15}, cancel{30, 15};
    TestGroup<Row> nameRow{{&label, &field}}, buttons{{&ok, &cancel}};
    TestGroup<AutoLayout> options{{&check1, &check2, &check3}};
    TestGroup<Column> dialog{{&nameRow, &options, &buttons}};
    field.mExpandWidth = true;
    field.mMargins = {1, 1, 1, 1};
    nameRow.mSpacing = Size(5, 0);
    nameRow.mAlignV = kAlignmentVertical_Center;
    options.mSpacing = Size(4, 4);
    buttons.mSpacing = Size(6, 0);
    buttons.mAlignH = kAlignmentHorizontal_Right;
    dialog.mMargins = {10, 10, 10, 10};
    dialog.mSpacing = Size(0, 8);
    dialog.mAlignH = kAlignmentHorizontal_Center;
    options.mWithSeparators = dialog.mWithSeparators = true;
    // The rectangles of the field, the three checks, OK and the separators inside the options and the dialog.
    auto const expectLayout = [&](std::vector<Rect> const& inExpected) {
        EXPECT_EQ(label.Last(), Rect(10, 15, 40, 12));
        EXPECT_EQ((std::vector<Rect>{field.Last(), check1.Last(), check2.Last(), check3.Last(), ok.Last(),
                                     options.SeparatorAt(0).mRect, options.SeparatorAt(1).mRect,
                                     dialog.SeparatorAt(0).mRect, dialog.SeparatorAt(1).mRect}),
                  inExpected);
    };

    // Options: one column, a check beside a column of two, or one row; in the dialog the first is
    // outdone by the second.  Best proportions 167 / 97 lie nearer the golden ratio than 178 / 83.
    EXPECT_EQ(MinSizes(dialog.Arrangements()), (std::vector<Size>{{167, 97}, {178, 83}}));
    EXPECT_EQ(dialog.BestSize(), Size(167, 97));
    EXPECT_EQ(dialog.Arrange(Rect(0, 0, 170, 120)), Size(150, 100));  // narrow: two options stacked
    expectLayout({{56, 11, 103, 20}, {33, 40, 50, 10}, {87, 40, 50, 10}, {87, 54, 50, 10}, {52, 72, 30, 15},
                  {83, 40, 4, 10}, {87, 50, 50, 4}, {33, 32, 104, 8}, {52, 64, 66, 8}});
    EXPECT_TRUE(options.SeparatorAt(0).mOrientation == 0 && options.SeparatorAt(1).mOrientation == 1);
    EXPECT_TRUE(dialog.mPositions.back() == Size(10, 10) && dialog.mDimensions.back() == Size(150, 100));

    EXPECT_EQ(dialog.Arrange(Rect(0, 0, 240, 90)), Size(220, 70));  // wide: the options in one row
    expectLayout({{56, 11, 173, 20}, {41, 40, 50, 10}, {95, 40, 50, 10}, {149, 40, 50, 10}, {87, 58, 30, 15},
                  {91, 40, 4, 10}, {145, 40, 4, 10}, {41, 32, 158, 8}, {87, 50, 66, 8}});
    // Both fit and waste the same 18550: the smaller layout.
    dialog.Arrange(Rect(0, 0, 200, 120));
    EXPECT_TRUE(field.Last() == Rect(56, 11, 133, 20) && check3.Last() == Rect(129, 40, 50, 10));
    // Neither fits; both clip the name row (17 wide), the one-row options 28 more: stacked, centred in 130.
    dialog.Arrange(Rect(0, 0, 150, 90));
    EXPECT_EQ(check3.Last(), Rect(77, 54, 50, 10));
    EXPECT_EQ(field.Last(), Rect(56, 11, 100, 20)) << "the field keeps its minimum";
}
