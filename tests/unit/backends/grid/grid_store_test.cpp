// SPDX-License-Identifier: MIT
// What a GridStore has beyond the platform's grid, which the suites of tests/conformance test: taps, and when it asks
// to be painted.
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

TEST_F(GridUnderTest, WantsNoPaintingForASizeOutside) {
    Shape(2, 1);
    Grid.SetRowHeight(2, 9);
    Grid.SetRowHeight(-1, 9);
    Grid.SetColWidth(1, 9);
    Grid.SetColWidth(-1, 9);
    EXPECT_EQ(Grid.PaintingsWanted, 0);
}

// Events.

struct Move {
    const char* Name;
    void (*Make)(GridStore&);
    CellPlace To; ///< the start is 2, 0 in a grid of 5 rows and 2 columns
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
    testing::Values(Move{"RowByATap", [](GridStore& grid) { grid.SetCurrentCell(1, 0); }, {1, 0}},
                    Move{"ColumnByATap", [](GridStore& grid) { grid.SetCurrentCell(2, 1); }, {2, 1}},
                    Move{"BothByATap", [](GridStore& grid) { grid.SetCurrentCell(3, 1); }, {3, 1}}),
    [](const auto& each) { return each.param.Name; });

TEST_F(GridUnderTest, OffersNoRowWithoutAHeight) {
    Shape(2, 1);
    Grid.SetRowHeight(1, 0);
    EXPECT_TRUE(Grid.Offers(0, 0));
    EXPECT_FALSE(Grid.Offers(1, 0));
}

} // namespace
} // namespace backends
