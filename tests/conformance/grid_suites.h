// SPDX-License-Identifier: MIT
// The suites of src/view/platform/grid.h. A form runs them by the list in form_suites.h. A grid without a form joins by
// a file that derives from GridUnderTest, as tests/unit/backends/grid/grid_store_suites.cpp does.
#pragma once

#include "src/view/platform/grid.h"
#include "tests/conformance/raised_events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

namespace conformance {

using namespace platform;

using CellPlace = std::pair<std::int32_t, std::int32_t>; ///< row, column

/// A visible grid, and a record of the events that it raises.
class GridUnderTest {
public:
    virtual ~GridUnderTest() = default;
    virtual OwnerDrawGrid& Grid() = 0;
    /// Handles events, after which a visible grid that looks different has been painted.
    virtual void Settle() {}

    std::vector<CellPlace> Moves; ///< the current cell at each row-change event
    std::function<void()> OnMove; ///< what the handler of that event does
    std::vector<DrawnCell> Drawn;
    std::function<void(const DrawnCell& cell)> OnDraw; ///< what the handler of a draw-cell event does

protected:
    // Derived classes call these for the two events.
    void Moved() {
        Moves.emplace_back(Grid().Row(), Grid().Col());
        if (OnMove)
            OnMove();
    }
    void Draws(const DrawnCell& cell) {
        Drawn.push_back(cell);
        if (OnDraw)
            OnDraw(cell);
    }
};

struct GridFactory {
    const char* Name;
    std::function<std::unique_ptr<GridUnderTest>()> Make;
};

inline void PrintTo(const GridFactory& factory, std::ostream* out) {
    *out << factory.Name;
}

/// A page of five rows of 20 pixels.
class GridSuite : public testing::TestWithParam<GridFactory> {
protected:
    OwnerDrawGrid& Grid() { return Of->Grid(); }
    std::vector<CellPlace>& Moves() { return Of->Moves; }

    void Shape(std::int32_t rows, std::int32_t cols) {
        Grid().SetBounds({0, 0, 200, 100});
        Grid().SetDefaultRowHeight(20);
        Grid().SetRows(rows);
        Grid().SetCols(cols);
        for (std::int32_t col = 0; col < cols; ++col)
            Grid().SetColWidth(col, 100);
    }
    /// Makes another grid, of one column, with rows of these heights. The moves so far are forgotten.
    void RenewWithRows(const std::vector<std::int32_t>& heights, std::int32_t current) {
        Renew();
        Shape(static_cast<std::int32_t>(heights.size()), 1);
        Grid().SetRow(current);
        for (std::size_t row = 0; row < heights.size(); ++row)
            Grid().SetRowHeight(static_cast<std::int32_t>(row), heights[row]);
        Moves().clear();
    }
    /// Makes another grid, for the next row of a table.
    void Renew() {
        Of.reset();
        Of = GetParam().Make();
    }
    CellPlace Current() { return {Grid().Row(), Grid().Col()}; }
    std::vector<std::int32_t> Heights() {
        std::vector<std::int32_t> heights;
        for (std::int32_t row = 0; row < Grid().Rows(); ++row)
            heights.push_back(Grid().RowHeight(row));
        return heights;
    }
    /// Returns the rows of what was painted, in order, and forgets it.
    std::vector<std::int32_t> DrawnRows() {
        std::vector<std::int32_t> rows;
        for (const DrawnCell& cell : std::exchange(Of->Drawn, {}))
            rows.push_back(cell.Row);
        return rows;
    }

    std::unique_ptr<GridUnderTest> Of = GetParam().Make();
};

/// Cells, sizes, the current cell and the page. A grid that raises no events has these, too.
class GridCellsSuite : public GridSuite {};
/// The row-change event.
class GridEventsSuite : public GridSuite {};
/// The draw-cell event, and what painting does to the page.
class GridPaintingSuite : public GridSuite {};

} // namespace conformance
