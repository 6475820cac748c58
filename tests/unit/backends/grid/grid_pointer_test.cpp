// SPDX-License-Identifier: MIT
// Which cell is at a position of the pointer, and how the pointer scrolls the page.
#include "backends/grid/drawn_grid.h"

#include <gtest/gtest.h>

namespace backends {
namespace {

class SilentGrid final : public DrawnGrid {
public:
    void SetFocus() override {}
};

/// A page of five rows of 20 pixels, two columns of 100.
class PointerOnAGrid : public testing::Test {
protected:
    void Shape(std::int32_t rows) {
        Grid.SetBounds({0, 0, 200, 100});
        Grid.SetDefaultRowHeight(20);
        Grid.SetRows(rows);
        Grid.SetCols(2);
        Grid.SetColWidth(0, 100);
        Grid.SetColWidth(1, 100);
    }
    /// Returns "row,col", or "none".
    std::string At(std::int32_t x, std::int32_t y) {
        const auto cell = Grid.CellAt(x, y);
        return cell ? std::to_string(cell->Row) + "," + std::to_string(cell->Col) : "none";
    }
    void ScrollBy(std::int32_t rows) { Grid.SetTopRow(Grid.ScrolledTop(Grid.TopRow(), rows)); }

    SilentGrid Grid;
};

TEST_F(PointerOnAGrid, FindsTheCellUnderItToThePixel) {
    Shape(10);
    EXPECT_EQ(At(0, 0), "0,0");
    EXPECT_EQ(At(99, 19), "0,0");
    EXPECT_EQ(At(100, 20), "1,1");
    EXPECT_EQ(At(199, 99), "4,1");
    EXPECT_EQ(At(200, 50), "none");
    EXPECT_EQ(At(-1, 5), "none");
    EXPECT_EQ(At(5, -1), "none");
}

TEST_F(PointerOnAGrid, CountsFromTheTopRow) {
    Shape(10);
    Grid.SetTopRow(4);
    EXPECT_EQ(At(0, 0), "4,0");
    EXPECT_EQ(At(0, 45), "6,0");
}

TEST_F(PointerOnAGrid, FindsNothingBelowTheLastRow) {
    Shape(2);
    EXPECT_EQ(At(0, 39), "1,0");
    EXPECT_EQ(At(0, 40), "none");
}

TEST_F(PointerOnAGrid, PassesHiddenRowsOver) {
    Shape(4);
    Grid.SetRowHeight(1, 0);
    EXPECT_EQ(At(0, 20), "2,0");
    Grid.SetRowHeight(0, 0);
    EXPECT_EQ(At(0, 0), "2,0");
}

TEST_F(PointerOnAGrid, MovesThePageByRowsAndNeverPastTheLastPage) {
    Shape(10);
    EXPECT_EQ(Grid.LastTop(), 5);
    ScrollBy(3);
    EXPECT_EQ(Grid.TopRow(), 3);
    ScrollBy(3);
    EXPECT_EQ(Grid.TopRow(), 5);
    ScrollBy(-1);
    EXPECT_EQ(Grid.TopRow(), 4);
    ScrollBy(-30);
    EXPECT_EQ(Grid.TopRow(), 0);
    EXPECT_EQ(Grid.Row(), 0) << "the selection stays";
}

TEST_F(PointerOnAGrid, DoesNotStopAtHiddenRows) {
    Shape(10);
    for (const std::int32_t row : {1, 2, 3})
        Grid.SetRowHeight(row, 0);
    ScrollBy(1);
    EXPECT_EQ(Grid.TopRow(), 4);
    ScrollBy(-1);
    EXPECT_EQ(Grid.TopRow(), 0);
}

TEST_F(PointerOnAGrid, HasNoOtherPageWhereAllRowsFit) {
    Shape(5);
    EXPECT_EQ(Grid.LastTop(), 0);
    ScrollBy(2);
    EXPECT_EQ(Grid.TopRow(), 0);
    Shape(0);
    EXPECT_EQ(Grid.LastTop(), 0);
    ScrollBy(1);
    EXPECT_EQ(Grid.TopRow(), 0);
}

TEST_F(PointerOnAGrid, ScrollsARowHigherThanThePage) {
    Shape(3);
    Grid.SetRowHeight(2, 300);
    EXPECT_EQ(Grid.LastTop(), 2);
    ScrollBy(5);
    EXPECT_EQ(Grid.TopRow(), 2);
}

} // namespace
} // namespace backends
