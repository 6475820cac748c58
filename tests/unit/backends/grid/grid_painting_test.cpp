// SPDX-License-Identifier: MIT
// What a GridStore paints, and when it asks to be painted.
#include "tests/support/printed_rows.h"
#include "tests/unit/backends/grid/grid_under_test.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

namespace backends {
namespace {

using support::PrintTo;

class GridPage : public GridUnderTest {
protected:
    std::vector<std::int32_t> PageRows() {
        Grid.Painted.clear();
        Grid.PaintPage();
        return PaintedRows();
    }
};

TEST_F(GridPage, KeepsTheCurrentRowThatPaintingPushesOffIt) {
    Shape(20, 1);
    Grid.OnPaint = [this](const PaintedCell& cell) { Grid.SetRowHeight(cell.Row, 40); };
    Grid.SetRow(4);
    Grid.PaintPage();
    EXPECT_EQ(Grid.TopRow(), 3);
    EXPECT_TRUE(Grid.RowOnScreen(4));
    Grid.SetTopRow(0);
    Grid.PaintPage();
    EXPECT_EQ(Grid.TopRow(), 0) << "where somebody has turned the page, it stays";
}

TEST_F(GridPage, BringsARowBackThroughAllThatGrowOnTheWay) {
    Shape(200, 1);
    Grid.OnPaint = [this](const PaintedCell& cell) { Grid.SetRowHeight(cell.Row, cell.Row % 2 == 0 ? 50 : 30); };
    Grid.SetRow(150);
    Grid.PaintPage();
    EXPECT_TRUE(Grid.RowOnScreen(150));
    EXPECT_FALSE(Grid.RowOnScreen(152)) << "by as little as it takes";
}

// Painting of the rows between the old and the new selection.

TEST_F(GridPage, PaintsNothingUntilTheMovingHandlerHasReturned) {
    Shape(20, 2);
    Grid.SetRow(7);
    Grid.SetCol(1);
    Grid.SetVisible(false);
    Grid.SetVisible(true);
    EXPECT_THAT(Grid.Painted, IsEmpty());
    EXPECT_GT(Grid.PaintingsWanted, 0);
}

TEST_F(GridPage, PaintsEachRowThatTheSelectionPassesWhileItIsHidden) {
    Shape(20, 1);
    Grid.SetVisible(false);
    Grid.SetRow(7);
    EXPECT_THAT(PaintedRows(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    Grid.SetRow(5);
    EXPECT_THAT(PaintedRows(), ElementsAre(5, 6, 7));
    Grid.SetRow(5);
    EXPECT_THAT(PaintedRows(), ElementsAre(5));
}

TEST_F(GridPage, PaintsNothingAtOnceWhenTheColumnMoves) {
    Shape(3, 2);
    Grid.SetVisible(false);
    Grid.SetRow(1);
    Grid.Painted.clear();
    Grid.SetCol(1);
    EXPECT_THAT(Grid.Painted, IsEmpty());
    EXPECT_EQ(Current(), CellPlace(1, 1));
}

TEST_F(GridPage, PaintsTheRowThatWasLeftAsNoLongerCurrent) {
    Shape(3, 1);
    Grid.SetVisible(false);
    Grid.SetRow(1);
    EXPECT_THAT(Grid.Painted, ElementsAre(Field(&PaintedCell::Current, false), Field(&PaintedCell::Current, true)));
}

// Painting of the page.

TEST_F(GridPage, WantsToBePaintedWhenTheGridIsShown) {
    Shape(10, 1);
    Grid.SetVisible(false);
    EXPECT_EQ(Grid.PaintingsWanted, 0);
    Grid.SetVisible(true);
    EXPECT_EQ(Grid.PaintingsWanted, 1);
    Grid.SetVisible(true);
    EXPECT_EQ(Grid.PaintingsWanted, 1);
}

struct PaintedPage {
    float Height;
    std::int32_t Top;
    std::vector<std::int32_t> Rows;
};

class RowsOfThePage : public GridPage, public testing::WithParamInterface<PaintedPage> {};

TEST_P(RowsOfThePage, ArePaintedDownToTheOneThatIsCutOff) {
    Shape(10, 1);
    Grid.SetBounds({0, 0, 200, GetParam().Height});
    Grid.SetTopRow(GetParam().Top);
    EXPECT_EQ(PageRows(), GetParam().Rows);
}

INSTANTIATE_TEST_SUITE_P(Pages, RowsOfThePage,
                         testing::Values(PaintedPage{100, 0, {0, 1, 2, 3, 4}}, PaintedPage{101, 0, {0, 1, 2, 3, 4, 5}},
                                         PaintedPage{81, 0, {0, 1, 2, 3, 4}}, PaintedPage{80, 0, {0, 1, 2, 3}},
                                         PaintedPage{60, 5, {5, 6, 7}}, PaintedPage{100, 8, {8, 9}},
                                         PaintedPage{0, 0, {}}));

TEST_F(GridPage, HandsEachCellItsBox) {
    Shape(4, 2);
    Grid.SetColWidth(0, 60);
    Grid.SetRowHeight(2, 35);
    Grid.SetCurrentCell(3, 1);
    Grid.SetTopRow(1);
    Grid.Painted.clear();
    Grid.PaintPage();
    ASSERT_EQ(Grid.Painted.size(), 6U);
    const auto box = [this](std::size_t i) {
        const PaintedCell& cell = Grid.Painted[i];
        return std::vector<std::int32_t>{cell.Row, cell.Col, cell.X, cell.Y, cell.Width, cell.Height};
    };
    EXPECT_THAT(box(0), ElementsAre(1, 0, 0, 0, 60, 20));
    EXPECT_THAT(box(1), ElementsAre(1, 1, 60, 0, 100, 20));
    EXPECT_THAT(box(2), ElementsAre(2, 0, 0, 20, 60, 35));
    EXPECT_THAT(box(5), ElementsAre(3, 1, 60, 55, 100, 20));
    EXPECT_TRUE(Grid.Painted[5].Current);
    EXPECT_FALSE(Grid.Painted[4].Current);
}

TEST_F(GridPage, HasNoRowWithoutAHeight) {
    Shape(10, 1);
    Grid.SetRowHeight(1, 0);
    Grid.SetRowHeight(2, 0);
    EXPECT_THAT(PageRows(), ElementsAre(0, 3, 4, 5, 6));
    Grid.SetVisible(false);
    Grid.SetRow(4);
    EXPECT_THAT(PaintedRows(), ElementsAre(0, 3, 4));
}

TEST_F(GridPage, IsPaintedOnceWhenThatChangesNothing) {
    Shape(3, 1);
    Grid.OnPaint = [this](const PaintedCell& cell) {
        Grid.SetRowHeight(cell.Row, 20);
        Grid.SetColWidth(0, 100);
    };
    EXPECT_THAT(PageRows(), ElementsAre(0, 1, 2));
}

TEST_F(GridPage, IsPaintedAgainWithTheWidthThatPaintingFound) {
    Shape(1, 2);
    Grid.OnPaint = [this](const PaintedCell&) { Grid.SetColWidth(0, 87); };
    Grid.PaintPage();
    ASSERT_EQ(Grid.Painted.size(), 4U);
    EXPECT_EQ(Grid.Painted[2].Width, 87);
    EXPECT_EQ(Grid.Painted[3].X, 87);
}

TEST_F(GridPage, IsPaintedAgainWithTheHeightThatPaintingFound) {
    Shape(2, 1);
    Grid.OnPaint = [this](const PaintedCell&) { Grid.SetRowHeight(0, 34); };
    Grid.PaintPage();
    ASSERT_EQ(Grid.Painted.size(), 4U);
    EXPECT_EQ(Grid.Painted[2].Height, 34);
    EXPECT_EQ(Grid.Painted[3].Y, 34);
}

TEST_F(GridPage, IsNotPaintedAThirdTimeWhenTwoColumnsSetTheHeight) {
    Shape(3, 2);
    Grid.OnPaint = [this](const PaintedCell& cell) { Grid.SetRowHeight(cell.Row, cell.Col == 0 ? 34 : 49); };
    EXPECT_EQ(PageRows().size(), 2U * 3 * 2);
    EXPECT_EQ(Grid.PaintingsWanted, 0);
}

TEST_F(GridPage, GetsLongerAsRowsGiveTheirHeightAway) {
    Shape(20, 1);
    Grid.SetRow(9);
    Grid.SetTopRow(0);
    Grid.OnPaint = [this](const PaintedCell& cell) {
        if (cell.Row < 5)
            Grid.SetRowHeight(cell.Row, 0);
    };
    EXPECT_THAT(PageRows(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 5, 6, 7, 8, 9));
}

TEST_F(GridPage, IsPaintedAgainWhenItsCurrentRowIsFoundToBeHidden) {
    Shape(3, 1);
    Grid.OnPaint = [this](const PaintedCell& cell) {
        if (cell.Row == 0)
            Grid.SetRowHeight(0, 0);
    };
    Grid.PaintPage();
    EXPECT_THAT(Grid.Moves, ElementsAre(CellPlace(1, 0)));
    ASSERT_EQ(Grid.Painted.size(), 5U);
    EXPECT_EQ(Grid.Painted[3].Row, 1);
    EXPECT_TRUE(Grid.Painted[3].Current);
}

TEST_F(GridPage, BearsAPainterThatMovesTheSelection) {
    Shape(5, 1);
    Grid.OnPaint = [this](const PaintedCell&) { Grid.SetRow(3); };
    EXPECT_THAT(PageRows(), ElementsAre(0, 1, 2, 3, 4, 0, 1, 2, 3, 4));
    EXPECT_EQ(Grid.Row(), 3);
}

// When a grid asks to be painted.

struct Change {
    const char* Name;
    void (*Make)(GridStore&);
};

void PrintTo(const Change& change, std::ostream* out) {
    *out << change.Name;
}

class ChangeOfLooks : public GridPage, public testing::WithParamInterface<Change> {};

TEST_P(ChangeOfLooks, WantsAPaintingTheFirstTimeAlone) {
    Shape(20, 2);
    GetParam().Make(Grid);
    EXPECT_GT(Grid.PaintingsWanted, 0);
    Grid.PaintingsWanted = 0;
    GetParam().Make(Grid);
    EXPECT_EQ(Grid.PaintingsWanted, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, ChangeOfLooks,
                         testing::Values(Change{"Text", [](GridStore& grid) { grid.SetCell(1, 1, u"new"); }},
                                         Change{"Height", [](GridStore& grid) { grid.SetRowHeight(1, 21); }},
                                         Change{"Width", [](GridStore& grid) { grid.SetColWidth(1, 101); }},
                                         Change{"Page", [](GridStore& grid) { grid.SetTopRow(3); }},
                                         Change{"Selection", [](GridStore& grid) { grid.SetRow(1); }},
                                         Change{"Box",
                                                [](GridStore& grid) {
                                                    grid.SetBounds({1, 2, 200, 100});
                                                }},
                                         Change{"FontName", [](GridStore& grid) { grid.SetFontName(u"Tahoma"); }},
                                         Change{"FontSize", [](GridStore& grid) { grid.SetFontSize(14); }}),
                         [](const auto& each) { return each.param.Name; });

} // namespace
} // namespace backends
