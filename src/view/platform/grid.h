// SPDX-License-Identifier: MIT
// The owner-drawn grid: it keeps the text of its cells and the current cell, scrolls, and raises a draw-cell event for
// each cell that has to be painted.
#pragma once

#include "src/view/platform/controls.h"

namespace platform {

enum class GridStyle : std::int32_t {
    OneCell = 0, ///< one cell fills the grid
    Table = 2,   ///< tables and lists
};

/// Rows and columns are numbered from 0.
///
/// Events: a change of the current row or column, by tap, key or program, raises the row-change event while the grid is
/// visible. While it is hidden no event is raised, so that filling or painting it stores nothing. A row of height 0
/// can't be selected: once the handlers of a move have run, the selection of a visible grid is never on such a row
/// while another row has a height.
///
/// Painting: moving the selection of a hidden grid from row to row paints every row that it passes, at once. A visible
/// grid is painted after events have been handled, never while a handler fills it; only PaintNow paints at once. If
/// painting finds rows higher than they were, the current row stays on the page, unless TopRow was set since. Once
/// events have been handled and no field is open, there is no empty space below the last row while rows above the page
/// could fill it.
class OwnerDrawGrid : public FontControl {
public:
    /// The text of a cell. For a cell outside the grid the text is empty, and setting it does nothing.
    virtual Text Cell(std::int32_t row, std::int32_t col) const = 0;
    virtual void SetCell(std::int32_t row, std::int32_t col, const Text& text) = 0;

    /// The size. Cells that stay inside keep their text; new cells are empty, and new rows have the default height. A
    /// current cell outside the new size is moved into the grid, without an event; it is 0, 0 in an empty grid.
    virtual std::int32_t Rows() const = 0;
    virtual void SetRows(std::int32_t rows) = 0;
    virtual std::int32_t Cols() const = 0;
    virtual void SetCols(std::int32_t cols) = 0;

    /// The current cell. Setting a row or column outside the grid does nothing.
    virtual std::int32_t Row() const = 0;
    virtual void SetRow(std::int32_t row) = 0;
    virtual std::int32_t Col() const = 0;
    virtual void SetCol(std::int32_t col) = 0;

    /// The first row on the page. Setting a row outside the grid does nothing.
    virtual std::int32_t TopRow() const = 0;
    virtual void SetTopRow(std::int32_t row) = 0;

    /// The height of a row in pixels; a height of 0 hides the row. It is 0 for a row outside the grid.
    virtual std::int32_t RowHeight(std::int32_t row) const = 0;
    virtual void SetRowHeight(std::int32_t row, std::int32_t height) = 0;
    virtual std::int32_t ColWidth(std::int32_t col) const = 0;
    virtual void SetColWidth(std::int32_t col, std::int32_t width) = 0;
    virtual std::int32_t DefaultRowHeight() const = 0;
    virtual void SetDefaultRowHeight(std::int32_t height) = 0;

    /// True if the whole row is inside the visible page.
    virtual bool RowOnScreen(std::int32_t row) const = 0;

    virtual void SetGridMode(GridStyle style) = 0;

    /// Paints the page of a visible grid if it looks different. Widths and heights are final when this returns.
    virtual void PaintNow() = 0;

    /// Applies changed sizes. Called once before a forced redraw.
    virtual void Recalc() = 0;
};

} // namespace platform
