// SPDX-License-Identifier: MIT
// The row-change event of a grid, and the rows without a height.
#include "tests/conformance/grid_suites.h"

#include <algorithm>

namespace conformance {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct CellMove {
    const char* Name;
    void (*Make)(OwnerDrawGrid&);
    CellPlace To; ///< the start is 2, 0 in a grid of 5 rows and 2 columns
};

const CellMove CellMoves[] = {{"row down", [](OwnerDrawGrid& grid) { grid.SetRow(4); }, {4, 0}},
                              {"row up", [](OwnerDrawGrid& grid) { grid.SetRow(0); }, {0, 0}},
                              {"column", [](OwnerDrawGrid& grid) { grid.SetCol(1); }, {2, 1}}};

struct RowLeaving {
    std::vector<std::int32_t> Heights;
    std::int32_t From, To, LandsOn;
};

const RowLeaving RowLeavings[] = {{{20, 0, 20}, 0, 1, 2}, {{20, 0, 20}, 2, 1, 2},    {{20, 0, 0, 20}, 0, 1, 3},
                                  {{0, 0, 20}, 2, 0, 2},  {{20, 20, 0, 0}, 0, 3, 1}, {{20, 20, 0, 0}, 1, 2, 1},
                                  {{0, 20, 0}, 1, 2, 1},  {{0, 20, 0}, 1, 0, 1}};

std::string Described(const RowLeaving& leaving) {
    std::string words = "rows of";
    for (const std::int32_t height : leaving.Heights)
        words += " " + std::to_string(height);
    return words + ", from " + std::to_string(leaving.From) + " to " + std::to_string(leaving.To);
}

} // namespace

TEST_P(GridEventsSuite, RaisesOneForEachMoveWhileItIsVisible) {
    for (const CellMove& move : CellMoves) {
        Renew();
        Shape(5, 2);
        Grid().SetRow(2);
        Moves().clear();
        move.Make(Grid());
        EXPECT_EQ(Current(), move.To) << move.Name;
        EXPECT_THAT(Moves(), ElementsAre(move.To)) << move.Name;
        move.Make(Grid());
        EXPECT_EQ(Moves().size(), 1U) << move.Name << ", a second time";
    }
}

TEST_P(GridEventsSuite, RaisesNoneWhileItIsHidden) {
    for (const CellMove& move : CellMoves) {
        Renew();
        Shape(5, 2);
        Grid().SetRow(2);
        Grid().SetVisible(false);
        Moves().clear();
        move.Make(Grid());
        EXPECT_EQ(Current(), move.To) << move.Name;
        Grid().SetVisible(true);
        Of->Settle();
        EXPECT_THAT(Moves(), IsEmpty()) << move.Name;
    }
}

TEST_P(GridEventsSuite, RaisesOneAlsoWhileItIsDisabled) {
    Shape(5, 2);
    Grid().SetEnabled(false);
    Grid().SetRow(3);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(3, 0)));
}

TEST_P(GridEventsSuite, RaisesNoneForACellOutside) {
    Shape(3, 2);
    for (const std::int32_t outside : {-1, 3, 2147483647}) {
        Grid().SetRow(outside);
        Grid().SetCol(outside);
        Grid().SetTopRow(outside);
    }
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridEventsSuite, RaisesNoneForScrollingResizingOrTexts) {
    Shape(20, 2);
    Grid().SetTopRow(7);
    Grid().SetRowHeight(0, 50);
    Grid().SetBounds({0, 0, 300, 300});
    Grid().SetCell(0, 0, u"text");
    Grid().SetVisible(false);
    Grid().SetVisible(true);
    Of->Settle();
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridEventsSuite, RaisesNoneWhenASmallerGridMovesTheCurrentCell) {
    Shape(20, 3);
    Grid().SetRow(19);
    Grid().SetCol(2);
    Moves().clear();
    Grid().SetRows(4);
    Grid().SetCols(1);
    Grid().SetRows(0);
    Of->Settle();
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridEventsSuite, RaisesNoneWithoutCells) {
    Shape(5, 2);
    Grid().SetRow(4);
    Grid().SetCol(1);
    Grid().SetRows(0);
    Grid().SetCols(0);
    Moves().clear();
    Grid().SetRow(0);
    Grid().SetCol(0);
    Of->Settle();
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridEventsSuite, HasScrolledWhenItComes) {
    Shape(20, 1);
    std::int32_t top = 0;
    Of->OnMove = [&] { top = Grid().TopRow(); };
    Grid().SetRow(9);
    EXPECT_EQ(top, 5);
}

TEST_P(GridEventsSuite, BearsAHandlerThatTakesTheRowsAway) {
    Shape(5, 1);
    Of->OnMove = [this] { Grid().SetRows(1); };
    Grid().SetRow(4);
    EXPECT_EQ(Current(), CellPlace(0, 0));
    EXPECT_EQ(Grid().Rows(), 1);
}

// Rows without a height.

TEST_P(GridEventsSuite, LeavesARowWithoutAHeight) {
    for (const RowLeaving& leaving : RowLeavings) {
        RenewWithRows(leaving.Heights, leaving.From);
        Grid().SetRow(leaving.To);
        EXPECT_EQ(Grid().Row(), leaving.LandsOn) << Described(leaving);
        ASSERT_FALSE(Moves().empty()) << Described(leaving);
        EXPECT_EQ(Moves().back().first, leaving.LandsOn) << Described(leaving);
    }
}

TEST_P(GridEventsSuite, LeavesARowWithoutAHeightOnceItIsShown) {
    for (const RowLeaving& leaving : RowLeavings) {
        RenewWithRows(leaving.Heights, leaving.From);
        Grid().SetVisible(false);
        Grid().SetRow(leaving.To);
        EXPECT_EQ(Grid().Row(), leaving.To) << Described(leaving);
        EXPECT_THAT(Moves(), IsEmpty()) << Described(leaving);
        Grid().SetVisible(true);
        EXPECT_EQ(Grid().Row(), leaving.LandsOn) << Described(leaving);
    }
}

TEST_P(GridEventsSuite, KeepsARowWithoutAHeightWhenNoneHasOne) {
    Shape(3, 1);
    for (const std::int32_t row : {0, 1, 2})
        Grid().SetRowHeight(row, 0);
    Moves().clear();
    Grid().SetRow(1);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(1, 0)));
    EXPECT_EQ(Grid().Row(), 1);
    Grid().SetRowHeight(0, 20);
    EXPECT_EQ(Grid().Row(), 0) << "the first row that gets one again";
}

TEST_P(GridEventsSuite, LeavesTheCurrentRowThatLosesItsHeight) {
    Shape(3, 1);
    Grid().SetRow(2);
    Moves().clear();
    Grid().SetRowHeight(2, 0);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(1, 0)));
}

TEST_P(GridEventsSuite, StaysWhereAnotherRowLosesItsHeight) {
    Shape(3, 1);
    Grid().SetRow(1);
    Moves().clear();
    Grid().SetRowHeight(2, 0);
    Grid().SetRowHeight(0, 0);
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_THAT(Moves(), IsEmpty());
}

TEST_P(GridEventsSuite, LeavesTheChoiceToAHandlerThatMovesOnItself) {
    Shape(5, 1);
    Grid().SetRow(3);
    Grid().SetRowHeight(2, 0);
    Grid().SetRowHeight(1, 0);
    Moves().clear();
    Of->OnMove = [this] {
        if (Grid().RowHeight(Grid().Row()) == 0)
            Grid().SetRow(Grid().Row() - 1);
    };
    Grid().SetRow(2);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(2, 0), CellPlace(1, 0), CellPlace(0, 0)));
    EXPECT_EQ(Grid().Row(), 0);
}

TEST_P(GridEventsSuite, LeavesTheRowThatAHandlerMovedOntoInVain) {
    Shape(5, 1);
    Grid().SetRowHeight(2, 0);
    Of->OnMove = [this] {
        if (Grid().Row() == 1)
            Grid().SetRow(2);
    };
    Grid().SetRow(1);
    EXPECT_THAT(Moves(), ElementsAre(CellPlace(1, 0), CellPlace(2, 0), CellPlace(3, 0)));
}

} // namespace conformance
