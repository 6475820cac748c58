// SPDX-License-Identifier: MIT
#include "tests/unit/backends/grid/grid_under_test.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace backends {
namespace {

constexpr std::int32_t FarAway = 2147483647;

// The cells and the size.

class OutsideTheGrid : public GridUnderTest, public testing::WithParamInterface<CellPlace> {};

TEST_P(OutsideTheGrid, CellIsEmptyAndSettingItChangesNothing) {
    Shape(3, 2);
    const auto [row, col] = GetParam();
    Grid.SetCell(row, col, u"lost");
    EXPECT_EQ(Grid.Cell(row, col), u"");
    EXPECT_FALSE(Grid.Offers(row, col));
    EXPECT_EQ(Grid.PaintingsWanted, 0);
}

TEST_P(OutsideTheGrid, CellIsNotTakenAsTheCurrentOne) {
    Shape(3, 2);
    const auto [row, col] = GetParam();
    Grid.SetCurrentCell(row, col);
    EXPECT_EQ(Current(), CellPlace(0, 0));
    EXPECT_THAT(Grid.Moves, IsEmpty());
    EXPECT_THAT(Grid.Painted, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Places, OutsideTheGrid,
                         testing::Values(CellPlace{-1, 0}, CellPlace{0, -1}, CellPlace{3, 0}, CellPlace{0, 2},
                                         CellPlace{FarAway, 0}, CellPlace{0, FarAway},
                                         CellPlace{-FarAway - 1, -FarAway - 1}));

TEST_F(GridUnderTest, TakesNoRowOrColumnOutside) {
    Shape(3, 2);
    Grid.SetCurrentCell(1, 1);
    Grid.Moves.clear();
    for (const std::int32_t outside : {-1, 3, FarAway}) {
        Grid.SetRow(outside);
        Grid.SetCol(outside);
        Grid.SetTopRow(outside);
    }
    EXPECT_EQ(Current(), CellPlace(1, 1));
    EXPECT_EQ(Grid.TopRow(), 0);
    EXPECT_THAT(Grid.Moves, IsEmpty());
}

TEST_F(GridUnderTest, HasNoSizesOutside) {
    Shape(2, 1);
    Grid.SetRowHeight(2, 9);
    Grid.SetRowHeight(-1, 9);
    Grid.SetColWidth(1, 9);
    EXPECT_EQ(Grid.RowHeight(2), 0);
    EXPECT_EQ(Grid.RowHeight(-1), 0);
    EXPECT_EQ(Grid.ColWidth(1), 0);
    EXPECT_EQ(Grid.ColWidth(-1), 0);
    EXPECT_EQ(Grid.PaintingsWanted, 0);
}

TEST_F(GridUnderTest, HasNoSizeBelowNothing) {
    Shape(2, 1);
    Grid.SetRowHeight(1, -5);
    Grid.SetColWidth(0, -5);
    EXPECT_EQ(Grid.RowHeight(1), 0);
    EXPECT_EQ(Grid.ColWidth(0), 0);
    Grid.SetRows(-3);
    Grid.SetCols(-3);
    EXPECT_EQ(Grid.Rows(), 0);
    EXPECT_EQ(Grid.Cols(), 0);
}

TEST_F(GridUnderTest, KeepsTheTextsOfCellsThatStayInside) {
    Shape(3, 2);
    Grid.SetCell(0, 0, u"kept");
    Grid.SetCell(2, 0, u"gone");
    Grid.SetCell(0, 1, u"gone");
    Grid.SetRows(2);
    Grid.SetCols(1);
    Grid.SetRows(3);
    Grid.SetCols(2);
    EXPECT_EQ(Grid.Cell(0, 0), u"kept");
    EXPECT_EQ(Grid.Cell(2, 0), u"");
    EXPECT_EQ(Grid.Cell(0, 1), u"");
}

TEST_F(GridUnderTest, IsEmptiedByHavingNoRowsForAMoment) {
    Shape(2, 1);
    Grid.SetCell(1, 0, u"gone");
    Grid.SetRows(0);
    Grid.SetRows(2);
    EXPECT_EQ(Grid.Cell(1, 0), u"");
}

TEST_F(GridUnderTest, GivesNewRowsTheDefaultHeightAndLeavesTheOthers) {
    Shape(2, 1);
    Grid.SetDefaultRowHeight(33);
    Grid.SetRows(4);
    EXPECT_EQ(Heights(), (std::vector<std::int32_t>{20, 20, 33, 33}));
}

TEST_F(GridUnderTest, WithoutCellsStandsAtItsHead) {
    Shape(5, 2);
    Grid.SetCurrentCell(4, 1);
    Grid.SetRows(0);
    Grid.SetCols(0);
    Grid.Moves.clear();
    Grid.Painted.clear();
    EXPECT_EQ(Current(), CellPlace(0, 0));
    Grid.SetRow(0);
    Grid.SetCol(0);
    EXPECT_FALSE(Grid.RowOnScreen(0));
    EXPECT_THAT(Grid.Moves, IsEmpty());
    Grid.PaintPage();
    EXPECT_THAT(Grid.Painted, IsEmpty());
}

TEST_F(GridUnderTest, PullsTheCurrentCellAndThePageBackWithoutAnEvent) {
    Shape(20, 3);
    Grid.SetCurrentCell(19, 2);
    EXPECT_EQ(Grid.TopRow(), 15);
    Grid.Moves.clear();
    Grid.SetRows(4);
    EXPECT_EQ(Current(), CellPlace(3, 2));
    EXPECT_EQ(Grid.TopRow(), 3);
    Grid.SetCols(1);
    EXPECT_EQ(Current(), CellPlace(3, 0));
    EXPECT_THAT(Grid.Moves, IsEmpty());
}

TEST_F(GridUnderTest, KeepsTheCurrentCellThatStaysInside) {
    Shape(20, 3);
    Grid.SetCurrentCell(1, 1);
    Grid.SetRows(2);
    Grid.SetCols(2);
    EXPECT_EQ(Current(), CellPlace(1, 1));
}

// Events.

struct Move {
    const char* Name;
    void (*Make)(GridStore&);
    CellPlace To; ///< from 2, 0 in a grid of 5 rows and 2 columns
};

void PrintTo(const Move& move, std::ostream* out) {
    *out << move.Name;
}

class MoveOfTheCurrentCell : public GridUnderTest, public testing::WithParamInterface<Move> {
protected:
    MoveOfTheCurrentCell() {
        Shape(5, 2);
        Grid.SetRow(2);
        Grid.Moves.clear();
        Grid.PaintingsWanted = 0;
    }
};

TEST_P(MoveOfTheCurrentCell, RaisesOneEventWhileTheGridIsVisible) {
    GetParam().Make(Grid);
    EXPECT_EQ(Current(), GetParam().To);
    EXPECT_THAT(Grid.Moves, ElementsAre(GetParam().To));
    EXPECT_GT(Grid.PaintingsWanted, 0);
}

TEST_P(MoveOfTheCurrentCell, RaisesNoneWhileItIsHidden) {
    Grid.SetVisible(false);
    GetParam().Make(Grid);
    EXPECT_EQ(Current(), GetParam().To);
    Grid.SetVisible(true);
    EXPECT_THAT(Grid.Moves, IsEmpty());
}

TEST_P(MoveOfTheCurrentCell, RaisesNoneTheSecondTime) {
    GetParam().Make(Grid);
    Grid.PaintingsWanted = 0;
    GetParam().Make(Grid);
    EXPECT_EQ(Grid.Moves.size(), 1U);
    EXPECT_EQ(Grid.PaintingsWanted, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Of, MoveOfTheCurrentCell,
    testing::Values(Move{"RowDown", [](GridStore& grid) { grid.SetRow(4); }, {4, 0}},
                    Move{"RowUp", [](GridStore& grid) { grid.SetRow(0); }, {0, 0}},
                    Move{"Column", [](GridStore& grid) { grid.SetCol(1); }, {2, 1}},
                    Move{"RowByATap", [](GridStore& grid) { grid.SetCurrentCell(1, 0); }, {1, 0}},
                    Move{"ColumnByATap", [](GridStore& grid) { grid.SetCurrentCell(2, 1); }, {2, 1}},
                    Move{"BothByATap", [](GridStore& grid) { grid.SetCurrentCell(3, 1); }, {3, 1}}),
    [](const auto& each) { return each.param.Name; });

TEST_F(GridUnderTest, HasScrolledWhenTheEventComes) {
    Shape(20, 1);
    std::int32_t top = 0;
    Grid.OnMove = [&] { top = Grid.TopRow(); };
    Grid.SetRow(9);
    EXPECT_EQ(top, 5);
}

TEST_F(GridUnderTest, RaisesNoEventForScrollingResizingOrTexts) {
    Shape(20, 2);
    Grid.SetTopRow(7);
    Grid.SetRowHeight(0, 50);
    Grid.SetBounds({0, 0, 300, 300});
    Grid.SetCell(0, 0, u"text");
    Grid.SetVisible(false);
    Grid.SetVisible(true);
    EXPECT_THAT(Grid.Moves, IsEmpty());
}

// Rows without a height.

struct Leaving {
    std::vector<std::int32_t> Heights;
    std::int32_t From, To, LandsOn;
};

void PrintTo(const Leaving& leaving, std::ostream* out) {
    *out << "rows of";
    for (const std::int32_t height : leaving.Heights)
        *out << " " << height;
    *out << ", from " << leaving.From << " to " << leaving.To;
}

class RowWithoutAHeight : public GridUnderTest, public testing::WithParamInterface<Leaving> {
protected:
    /// All rows have a height until the selection stands where it starts.
    void Start() {
        Shape(static_cast<std::int32_t>(GetParam().Heights.size()), 1);
        Grid.SetRow(GetParam().From);
        for (std::size_t row = 0; row < GetParam().Heights.size(); ++row)
            Grid.SetRowHeight(static_cast<std::int32_t>(row), GetParam().Heights[row]);
        Grid.Moves.clear();
    }
};

TEST_P(RowWithoutAHeight, IsLeftForTheNextElseTheNearestBefore) {
    Start();
    Grid.SetRow(GetParam().To);
    EXPECT_EQ(Grid.Row(), GetParam().LandsOn);
    EXPECT_EQ(Grid.Moves.back().first, GetParam().LandsOn);
}

TEST_P(RowWithoutAHeight, IsKeptByAHiddenGridUntilItIsShown) {
    Start();
    Grid.SetVisible(false);
    Grid.SetRow(GetParam().To);
    EXPECT_EQ(Grid.Row(), GetParam().To);
    EXPECT_THAT(Grid.Moves, IsEmpty());
    Grid.SetVisible(true);
    EXPECT_EQ(Grid.Row(), GetParam().LandsOn);
}

INSTANTIATE_TEST_SUITE_P(Rows, RowWithoutAHeight,
                         testing::Values(Leaving{{20, 0, 20}, 0, 1, 2}, Leaving{{20, 0, 20}, 2, 1, 2},
                                         Leaving{{20, 0, 0, 20}, 0, 1, 3}, Leaving{{0, 0, 20}, 2, 0, 2},
                                         Leaving{{20, 20, 0, 0}, 0, 3, 1}, Leaving{{20, 20, 0, 0}, 1, 2, 1},
                                         Leaving{{0, 20, 0}, 1, 2, 1}, Leaving{{0, 20, 0}, 1, 0, 1}));

TEST_F(GridUnderTest, KeepsARowWithoutAHeightWhenNoneHasOne) {
    Shape(3, 1);
    for (const std::int32_t row : {0, 1, 2})
        Grid.SetRowHeight(row, 0);
    Grid.Moves.clear();
    Grid.SetRow(1);
    EXPECT_THAT(Grid.Moves, ElementsAre(CellPlace(1, 0)));
    EXPECT_EQ(Grid.Row(), 1);
}

TEST_F(GridUnderTest, LeavesTheCurrentRowThatLosesItsHeight) {
    Shape(3, 1);
    Grid.SetRow(2);
    Grid.Moves.clear();
    Grid.SetRowHeight(2, 0);
    EXPECT_THAT(Grid.Moves, ElementsAre(CellPlace(1, 0)));
}

TEST_F(GridUnderTest, StaysWhereAnotherRowLosesItsHeight) {
    Shape(3, 1);
    Grid.SetRow(1);
    Grid.Moves.clear();
    Grid.SetRowHeight(2, 0);
    Grid.SetRowHeight(0, 0);
    EXPECT_EQ(Grid.Row(), 1);
    EXPECT_THAT(Grid.Moves, IsEmpty());
}

TEST_F(GridUnderTest, MovesToTheFirstRowThatGetsAHeightAgain) {
    Shape(3, 1);
    for (const std::int32_t row : {0, 1, 2})
        Grid.SetRowHeight(row, 0);
    ASSERT_EQ(Grid.Row(), 2);
    Grid.SetRowHeight(1, 20);
    EXPECT_EQ(Grid.Row(), 1);
}

TEST_F(GridUnderTest, OffersNoRowWithoutAHeight) {
    Shape(2, 1);
    Grid.SetRowHeight(1, 0);
    EXPECT_TRUE(Grid.Offers(0, 0));
    EXPECT_FALSE(Grid.Offers(1, 0));
}

TEST_F(GridUnderTest, LeavesTheChoiceToAHandlerThatMovesOnItself) {
    Shape(5, 1);
    Grid.SetRow(3);
    Grid.SetRowHeight(2, 0);
    Grid.SetRowHeight(1, 0);
    Grid.Moves.clear();
    Grid.OnMove = [this] {
        if (Grid.RowHeight(Grid.Row()) == 0)
            Grid.SetRow(Grid.Row() - 1);
    };
    Grid.SetRow(2);
    EXPECT_THAT(Grid.Moves, ElementsAre(CellPlace(2, 0), CellPlace(1, 0), CellPlace(0, 0)));
    EXPECT_EQ(Grid.Row(), 0);
}

TEST_F(GridUnderTest, LeavesTheRowThatAHandlerMovedOntoInVain) {
    Shape(5, 1);
    Grid.SetRowHeight(2, 0);
    Grid.OnMove = [this] {
        if (Grid.Row() == 1)
            Grid.SetRow(2);
    };
    Grid.SetRow(1);
    EXPECT_THAT(Grid.Moves, ElementsAre(CellPlace(1, 0), CellPlace(2, 0), CellPlace(3, 0)));
}

TEST_F(GridUnderTest, BearsAHandlerThatTakesTheRowsAway) {
    Shape(5, 1);
    Grid.OnMove = [this] { Grid.SetRows(1); };
    Grid.SetRow(4);
    EXPECT_EQ(Current(), CellPlace(0, 0));
    EXPECT_EQ(Grid.Rows(), 1);
}

} // namespace
} // namespace backends
