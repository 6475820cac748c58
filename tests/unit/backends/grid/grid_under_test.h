// SPDX-License-Identifier: MIT
// A grid that records its events and paintings, with a page of five rows of 20 pixels.
#pragma once

#include "backends/grid/grid_store.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <utility>

namespace backends {

using CellPlace = std::pair<std::int32_t, std::int32_t>; ///< row, column

inline void PrintTo(const PaintedCell& cell, std::ostream* out) {
    *out << "row " << cell.Row << " col " << cell.Col << " at " << cell.X << "," << cell.Y << " of " << cell.Width
         << "x" << cell.Height << (cell.Current ? " current" : "");
}

class RecordingGrid final : public GridStore {
public:
    using GridStore::PaintPage;
    void SetFocus() override {}
    void PaintNow() override { PaintPage(); }

    std::vector<CellPlace> Moves; ///< the current cell at each row-change event
    std::vector<PaintedCell> Painted;
    int PaintingsWanted = 0;

    std::function<void()> OnMove;
    std::function<void(const PaintedCell&)> OnPaint;

private:
    void RowColChanged() override {
        Moves.emplace_back(Row(), Col());
        if (OnMove)
            OnMove();
    }
    void PaintCell(const PaintedCell& cell) override {
        Painted.push_back(cell);
        if (OnPaint)
            OnPaint(cell);
    }
    void LooksChanged() override { ++PaintingsWanted; }
};

class GridUnderTest : public testing::Test {
protected:
    void Shape(std::int32_t rows, std::int32_t cols) {
        Grid.SetBounds({0, 0, 200, 100});
        Grid.SetDefaultRowHeight(20);
        Grid.SetRows(rows);
        Grid.SetCols(cols);
        for (std::int32_t col = 0; col < cols; ++col)
            Grid.SetColWidth(col, 100);
        Grid.PaintingsWanted = 0;
    }
    CellPlace Current() const { return {Grid.Row(), Grid.Col()}; }
    std::vector<std::int32_t> Heights() const {
        std::vector<std::int32_t> heights;
        for (std::int32_t row = 0; row < Grid.Rows(); ++row)
            heights.push_back(Grid.RowHeight(row));
        return heights;
    }
    /// Returns the painted rows in order, and forgets them.
    std::vector<std::int32_t> PaintedRows() {
        std::vector<std::int32_t> rows;
        for (const PaintedCell& cell : Grid.Painted)
            rows.push_back(cell.Row);
        Grid.Painted.clear();
        return rows;
    }

    RecordingGrid Grid;
};

} // namespace backends
