// SPDX-License-Identifier: MIT
// When a grid raises its draw-cell events, and what painting does to the page.
#include "tests/conformance/grid_suites.h"

namespace conformance {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST_P(GridPaintingSuite, PaintsAVisibleGridOnceEventsHaveBeenHandled) {
    Shape(3, 1);
    Of->Settle();
    DrawnRows();
    Grid().SetCell(1, 0, u"new");
    Grid().SetRow(2);
    Grid().SetRowHeight(0, 30);
    EXPECT_THAT(DrawnRows(), IsEmpty()) << "never while a handler fills it";
    Of->Settle();
    EXPECT_THAT(DrawnRows(), ElementsAre(0, 1, 2));
    Of->Settle();
    EXPECT_THAT(DrawnRows(), IsEmpty()) << "nothing looks different";
}

TEST_P(GridPaintingSuite, PaintsAtOnceWhenItIsTold) {
    Shape(3, 1);
    Grid().PaintNow();
    EXPECT_THAT(DrawnRows(), ElementsAre(0, 1, 2));
    Grid().PaintNow();
    EXPECT_THAT(DrawnRows(), IsEmpty());
}

TEST_P(GridPaintingSuite, PaintsNoPageOfAHiddenGrid) {
    Shape(3, 1);
    Grid().SetVisible(false);
    Of->Settle();
    DrawnRows();
    Grid().SetCell(0, 0, u"new");
    Grid().PaintNow();
    Of->Settle();
    EXPECT_THAT(DrawnRows(), IsEmpty());
    Grid().SetVisible(true);
    EXPECT_THAT(DrawnRows(), IsEmpty());
    Of->Settle();
    EXPECT_THAT(DrawnRows(), ElementsAre(0, 1, 2));
}

TEST_P(GridPaintingSuite, PaintsEachRowThatTheSelectionPassesWhileHidden) {
    Shape(20, 1);
    Grid().SetVisible(false);
    Grid().SetRow(7);
    EXPECT_THAT(DrawnRows(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    Grid().SetRow(5);
    EXPECT_THAT(DrawnRows(), ElementsAre(5, 6, 7));
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridPaintingSuite, PaintsThePageDownToTheRowThatIsCutOff) {
    Shape(10, 1);
    Grid().SetBounds({0, 0, 200, 101});
    Grid().SetTopRow(3);
    Of->Settle();
    EXPECT_THAT(DrawnRows(), ElementsAre(3, 4, 5, 6, 7, 8));
}

TEST_P(GridPaintingSuite, PaintsNoRowWithoutAHeight) {
    Shape(10, 1);
    Grid().SetRowHeight(1, 0);
    Grid().SetRowHeight(2, 0);
    Of->Settle();
    EXPECT_THAT(DrawnRows(), ElementsAre(0, 3, 4, 5, 6));
    Grid().SetVisible(false);
    Grid().SetRow(4);
    EXPECT_THAT(DrawnRows(), ElementsAre(0, 3, 4));
}

TEST_P(GridPaintingSuite, PaintsNothingWithoutCells) {
    for (const auto& [rows, cols] : {CellPlace{0, 0}, CellPlace{0, 2}, CellPlace{5, 0}}) {
        Renew();
        Shape(5, 2);
        Of->Settle();
        DrawnRows();
        Grid().SetRows(rows);
        Grid().SetCols(cols);
        Grid().SetRow(0);
        Grid().SetCol(0);
        Grid().PaintNow();
        Of->Settle();
        EXPECT_THAT(DrawnRows(), IsEmpty()) << rows << " rows, " << cols << " columns";
    }
}

TEST_P(GridPaintingSuite, GivesEachCellItsBoxAndMarksTheCurrentOne) {
    Shape(6, 2);
    Grid().SetColWidth(0, 60);
    Grid().SetRowHeight(2, 35);
    Grid().SetRow(3);
    Grid().SetCol(1);
    Grid().SetTopRow(1);
    Of->Settle();
    const std::vector<std::vector<std::int32_t>> boxes = {
        {1, 0, 0, 0, 60, 20},  {1, 1, 60, 0, 100, 20},  {2, 0, 0, 20, 60, 35}, {2, 1, 60, 20, 100, 35},
        {3, 0, 0, 55, 60, 20}, {3, 1, 60, 55, 100, 20}, {4, 0, 0, 75, 60, 20}, {4, 1, 60, 75, 100, 20},
        {5, 0, 0, 95, 60, 20}, {5, 1, 60, 95, 100, 20}};
    ASSERT_EQ(Of->Drawn.size(), boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const DrawnCell& cell = Of->Drawn[i];
        EXPECT_EQ((std::vector{cell.Row, cell.Col, cell.X, cell.Y, cell.Width, cell.Height}), boxes[i]) << i;
        EXPECT_EQ(cell.Current, cell.Row == 3 && cell.Col == 1) << i;
    }
}

TEST_P(GridPaintingSuite, PaintsAgainWithTheSizesThatPaintingFound) {
    Shape(2, 2);
    Of->OnDraw = [this](const DrawnCell& cell) {
        Grid().SetColWidth(0, 87);
        Grid().SetRowHeight(cell.Row, 34);
    };
    Grid().PaintNow();
    EXPECT_EQ(Heights(), (std::vector<std::int32_t>{34, 34})) << "they are final when it returns";
    EXPECT_EQ(Grid().ColWidth(0), 87);
    ASSERT_EQ(Of->Drawn.size(), 8U) << "twice";
    EXPECT_EQ(Of->Drawn[5].X, 87);
    EXPECT_EQ(Of->Drawn[7].Y, 34);
    EXPECT_EQ(Of->Drawn[7].Height, 34);
}

TEST_P(GridPaintingSuite, ComesToAnEndThoughTwoColumnsTakeTurnsAtTheHeight) {
    Shape(3, 2);
    Of->OnDraw = [this](const DrawnCell& cell) { Grid().SetRowHeight(cell.Row, cell.Col == 0 ? 34 : 49); };
    for (int round = 0; round < 5; ++round)
        Of->Settle();
    EXPECT_LE(DrawnRows().size(), 5U * 2 * 6);
    Grid().PaintNow();
    Of->Settle();
    EXPECT_THAT(DrawnRows(), IsEmpty());
}

TEST_P(GridPaintingSuite, KeepsTheCurrentRowThatPaintingPushesOffThePage) {
    Shape(20, 1);
    Of->OnDraw = [this](const DrawnCell& cell) { Grid().SetRowHeight(cell.Row, 40); };
    Grid().SetRow(4);
    Of->Settle();
    EXPECT_TRUE(Grid().RowOnScreen(4));
    EXPECT_EQ(Grid().TopRow(), 3) << "by as little as it takes";
    Grid().SetTopRow(0);
    Of->Settle();
    EXPECT_EQ(Grid().TopRow(), 0) << "where the page was turned since, it stays";
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(4, 0)));
}

TEST_P(GridPaintingSuite, LeavesARowThatPaintingHides) {
    Shape(5, 1);
    Of->OnDraw = [this](const DrawnCell& cell) {
        if (cell.Row == 2)
            Grid().SetRowHeight(2, 0);
    };
    Grid().SetRow(2);
    Of->Settle();
    EXPECT_EQ(Grid().Row(), 3);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(2, 0), CellPlace(3, 0)));
}

TEST_P(GridPaintingSuite, RaisesNoMoveForAHiddenGridWhoseRowsPaintingHides) {
    Shape(5, 1);
    Grid().SetVisible(false);
    Of->OnDraw = [this](const DrawnCell& cell) { Grid().SetRowHeight(cell.Row, cell.Row < 3 ? 0 : 20); };
    Grid().SetRow(4);
    Grid().SetRow(0);
    EXPECT_EQ(Heights(), (std::vector<std::int32_t>{0, 0, 0, 20, 20}));
    EXPECT_THAT(Moves(), IsEmpty());
    Grid().SetVisible(true);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(3, 0))) << "it is not offered once the grid is visible";
}

// A page without an empty part.

TEST_P(GridPaintingSuite, HasNoEmptyPartBelowTheLastRow) {
    Shape(20, 1);
    Grid().SetTopRow(19);
    Of->Settle();
    EXPECT_EQ(Grid().TopRow(), 15);
    Grid().SetRows(7);
    Of->Settle();
    EXPECT_EQ(Grid().TopRow(), 2);
    Grid().SetBounds({0, 0, 200, 300});
    Of->Settle();
    EXPECT_EQ(Grid().TopRow(), 0);
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridPaintingSuite, FillsNoPageOfAHiddenGrid) {
    Shape(20, 1);
    Grid().SetVisible(false);
    Grid().SetTopRow(19);
    Of->Settle();
    EXPECT_EQ(Grid().TopRow(), 19);
    Grid().SetVisible(true);
    Of->Settle();
    EXPECT_EQ(Grid().TopRow(), 15);
}

} // namespace conformance
