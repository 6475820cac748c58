// SPDX-License-Identifier: MIT
// The cells of a grid, its sizes, its current cell and its page. None of these needs an event.
#include "tests/conformance/grid_suites.h"

namespace conformance {

namespace {

constexpr std::int32_t FarAway = 2147483647;

struct PageEdge {
    float PageHeight;
    std::int32_t LastRowOnScreen; ///< of rows of 20 pixels
};

struct PageScroll {
    std::int32_t Top, Row, TopAfter;
};

struct FontLimit {
    std::int32_t Asked, Taken;
};

} // namespace

TEST_P(GridCellsSuite, HasNoCellOutside) {
    Shape(3, 2);
    for (const auto& [row, col] :
         {CellPlace{-1, 0}, CellPlace{0, -1}, CellPlace{3, 0}, CellPlace{0, 2}, CellPlace{FarAway, 0},
          CellPlace{0, FarAway}, CellPlace{-FarAway - 1, -FarAway - 1}}) {
        Grid().SetCell(row, col, u"lost");
        EXPECT_EQ(Grid().Cell(row, col), u"") << row << "," << col;
    }
}

TEST_P(GridCellsSuite, TakesNoRowOrColumnOutside) {
    Shape(3, 2);
    Grid().SetRow(1);
    Grid().SetCol(1);
    for (const std::int32_t outside : {-1, 3, FarAway}) {
        Grid().SetRow(outside);
        Grid().SetCol(outside);
        Grid().SetTopRow(outside);
    }
    EXPECT_EQ(Current(), CellPlace(1, 1));
    EXPECT_EQ(Grid().TopRow(), 0);
}

TEST_P(GridCellsSuite, HasNoSizesOutside) {
    Shape(2, 1);
    Grid().SetRowHeight(2, 9);
    Grid().SetRowHeight(-1, 9);
    Grid().SetColWidth(1, 9);
    EXPECT_EQ(Grid().RowHeight(2), 0);
    EXPECT_EQ(Grid().RowHeight(-1), 0);
    EXPECT_EQ(Grid().ColWidth(1), 0);
    EXPECT_EQ(Grid().ColWidth(-1), 0);
}

TEST_P(GridCellsSuite, HasNoSizeBelowNothing) {
    Shape(2, 1);
    Grid().SetRowHeight(1, -5);
    Grid().SetColWidth(0, -5);
    EXPECT_EQ(Grid().RowHeight(1), 0);
    EXPECT_EQ(Grid().ColWidth(0), 0);
    Grid().SetRows(-3);
    Grid().SetCols(-3);
    EXPECT_EQ(Grid().Rows(), 0);
    EXPECT_EQ(Grid().Cols(), 0);
}

TEST_P(GridCellsSuite, KeepsTheSizesThatItWasGiven) {
    Shape(3, 2);
    Grid().SetRowHeight(1, 35);
    Grid().SetColWidth(1, 60);
    EXPECT_EQ(Heights(), (std::vector<std::int32_t>{20, 35, 20}));
    EXPECT_EQ(Grid().ColWidth(0), 100);
    EXPECT_EQ(Grid().ColWidth(1), 60);
    EXPECT_EQ(Grid().DefaultRowHeight(), 20);
}

TEST_P(GridCellsSuite, KeepsTheTextsOfCellsThatStayInside) {
    Shape(3, 2);
    Grid().SetCell(0, 0, u"kept");
    Grid().SetCell(2, 0, u"gone");
    Grid().SetCell(0, 1, u"gone");
    Grid().SetRows(2);
    Grid().SetCols(1);
    Grid().SetRows(3);
    Grid().SetCols(2);
    EXPECT_EQ(Grid().Cell(0, 0), u"kept");
    EXPECT_EQ(Grid().Cell(2, 0), u"");
    EXPECT_EQ(Grid().Cell(0, 1), u"");
}

TEST_P(GridCellsSuite, KeepsItsTextsWhateverElseIsSet) {
    Shape(3, 2);
    const Text text = u"a\r\nb & größer \xD83D\xDE00";
    Grid().SetCell(2, 1, text);
    Grid().SetGridMode(GridStyle::OneCell);
    Grid().SetGridMode(GridStyle::Table);
    Grid().SetRowHeight(2, 0);
    Grid().SetVisible(false);
    Grid().SetEnabled(false);
    Grid().Recalc();
    Grid().PaintNow();
    Of->Settle();
    EXPECT_EQ(Grid().Cell(2, 1), text);
    EXPECT_EQ(Grid().Cell(1, 1), u"");
}

TEST_P(GridCellsSuite, IsEmptiedByHavingNoRowsForAMoment) {
    Shape(2, 1);
    Grid().SetCell(1, 0, u"gone");
    Grid().SetRows(0);
    Grid().SetRows(2);
    EXPECT_EQ(Grid().Cell(1, 0), u"");
}

TEST_P(GridCellsSuite, GivesNewRowsTheDefaultHeightAndLeavesTheOthers) {
    Shape(2, 1);
    Grid().SetDefaultRowHeight(33);
    Grid().SetRows(4);
    EXPECT_EQ(Heights(), (std::vector<std::int32_t>{20, 20, 33, 33}));
}

TEST_P(GridCellsSuite, WithoutCellsStandsAtItsHead) {
    Shape(5, 2);
    Grid().SetRow(4);
    Grid().SetCol(1);
    Grid().SetRows(0);
    Grid().SetCols(0);
    EXPECT_EQ(Current(), CellPlace(0, 0));
    Grid().SetRow(0);
    Grid().SetCol(0);
    EXPECT_FALSE(Grid().RowOnScreen(0));
    Grid().PaintNow();
    Of->Settle();
    EXPECT_EQ(Current(), CellPlace(0, 0));
}

TEST_P(GridCellsSuite, MovesTheCurrentCellAndThePageIntoASmallerGrid) {
    Shape(20, 3);
    Grid().SetRow(19);
    Grid().SetCol(2);
    EXPECT_EQ(Grid().TopRow(), 15);
    Grid().SetRows(4);
    EXPECT_EQ(Current(), CellPlace(3, 2));
    EXPECT_EQ(Grid().TopRow(), 3);
    Grid().SetCols(1);
    EXPECT_EQ(Current(), CellPlace(3, 0));
}

TEST_P(GridCellsSuite, KeepsTheCurrentCellThatStaysInside) {
    Shape(20, 3);
    Grid().SetRow(1);
    Grid().SetCol(1);
    Grid().SetRows(2);
    Grid().SetCols(2);
    EXPECT_EQ(Current(), CellPlace(1, 1));
}

TEST_P(GridCellsSuite, KeepsARowWithoutAHeightWhileItIsHidden) {
    Shape(3, 1);
    Grid().SetVisible(false);
    Grid().SetRowHeight(1, 0);
    Grid().SetRow(1);
    EXPECT_EQ(Grid().Row(), 1);
}

// The page.

TEST_P(GridCellsSuite, HasARowOnScreenThatFitsToThePixel) {
    for (const auto& [height, last] :
         {PageEdge{100, 4}, PageEdge{99, 3}, PageEdge{99.5F, 3}, PageEdge{101, 4}, PageEdge{119, 4}, PageEdge{120, 5},
          PageEdge{19, -1}, PageEdge{0, -1}, PageEdge{1000, 9}}) {
        Shape(10, 1);
        Grid().SetBounds({0, 0, 200, height});
        for (std::int32_t row = 0; row < 10; ++row)
            EXPECT_EQ(Grid().RowOnScreen(row), row <= last) << "row " << row << " of " << height << " pixels";
    }
}

TEST_P(GridCellsSuite, BeginsItsPageWithTheTopRow) {
    Shape(10, 1);
    Grid().SetTopRow(3);
    EXPECT_EQ(Grid().TopRow(), 3);
    EXPECT_FALSE(Grid().RowOnScreen(2));
    EXPECT_TRUE(Grid().RowOnScreen(3));
    EXPECT_TRUE(Grid().RowOnScreen(7));
    EXPECT_FALSE(Grid().RowOnScreen(8));
    EXPECT_FALSE(Grid().RowOnScreen(-1));
    EXPECT_FALSE(Grid().RowOnScreen(10));
}

TEST_P(GridCellsSuite, ScrollsToItsCurrentRowAsLittleAsItTakes) {
    for (const auto& [top, row, after] :
         {PageScroll{0, 4, 0}, PageScroll{0, 5, 1}, PageScroll{0, 19, 15}, PageScroll{7, 7, 7}, PageScroll{7, 11, 7},
          PageScroll{7, 12, 8}, PageScroll{7, 6, 6}, PageScroll{7, 0, 0}}) {
        Renew();
        Shape(20, 1);
        Grid().SetTopRow(top);
        Grid().SetRow(row);
        EXPECT_EQ(Grid().TopRow(), after) << "from " << top << " to row " << row;
        EXPECT_TRUE(Grid().RowOnScreen(row));
    }
}

TEST_P(GridCellsSuite, ScrollsByTheHeightsThatRowsHave) {
    Shape(6, 1);
    Grid().SetRowHeight(1, 50);
    Grid().SetRowHeight(3, 30);
    Grid().SetRow(3); // 20 + 50 + 20 + 30 is 120, without row 0 it is 100
    EXPECT_EQ(Grid().TopRow(), 1);
    Grid().SetRow(4);
    EXPECT_EQ(Grid().TopRow(), 2);
}

TEST_P(GridCellsSuite, BeginsItsPageWithARowThatIsHigherThanIt) {
    Shape(10, 1);
    Grid().SetRowHeight(7, 150);
    Grid().SetRow(7);
    EXPECT_EQ(Grid().TopRow(), 7);
    EXPECT_FALSE(Grid().RowOnScreen(7));
}

TEST_P(GridCellsSuite, ComesBackToTheCurrentRowThatIsSetAgain) {
    Shape(20, 1);
    Grid().SetRow(2);
    Grid().SetTopRow(10);
    Grid().SetRow(2);
    EXPECT_EQ(Grid().TopRow(), 2);
}

TEST_P(GridCellsSuite, StaysAsItWasWhereAFontSizeIsNone) {
    for (const auto& [asked, taken] : {FontLimit{1, 1}, FontLimit{30, 30}, FontLimit{127, 127}, FontLimit{128, 8},
                                       FontLimit{0, 8}, FontLimit{-1, 8}, FontLimit{2147483647, 8}}) {
        Grid().SetFontSize(8);
        Grid().SetFontSize(asked);
        EXPECT_EQ(Grid().FontSize(), taken) << asked;
    }
}

} // namespace conformance
