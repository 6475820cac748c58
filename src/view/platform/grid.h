// SPDX-License-Identifier: MIT
// The owner-drawn grid: it keeps the text of its cells and the current cell, scrolls, and asks for each cell that comes
// on screen to be painted.
#pragma once

#include "src/view/platform/controls.h"

namespace platform {

enum class GridStyle : std::int32_t {
    OneCell = 0, ///< one cell fills the grid
    Table = 2,   ///< tables and lists
};

/// Rows and columns are counted from 0.
///
/// Events: a change of the current row or column, by tap, key or program, raises the row-change event while the grid is
/// visible, and none while it is hidden, so that nothing is stored by being filled or painted. A row of height 0 is not
/// offered: once the handlers of a move have run, the selection of a visible grid is never on such a row while another
/// row has a height.
///
/// Painting: moving the selection of a hidden grid from row to row paints every row that it passes, at once. A grid on
/// show is painted when events have been handled and not before, so that a handler that fills it is never caught
/// halfway; PaintNow alone does not wait. The page keeps the current row where painting finds rows higher than they
/// were, unless TopRow was set since; and it shows nothing below the last row while rows stand above it, once events
/// have been handled and no field is open.
class OwnerDrawGrid : public FontControl {
public:
    /// The text of a cell. Outside the grid the text is empty, and setting it changes nothing.
    virtual Text Cell(std::int32_t row, std::int32_t col) const = 0;
    virtual void SetCell(std::int32_t row, std::int32_t col, const Text& text) = 0;

    /// The size. Cells that stay inside keep their text, new ones are empty; rows that come anew have the default
    /// height. The current cell is pulled back into the grid, without an event, and is 0, 0 in an empty one.
    virtual std::int32_t Rows() const = 0;
    virtual void SetRows(std::int32_t rows) = 0;
    virtual std::int32_t Cols() const = 0;
    virtual void SetCols(std::int32_t cols) = 0;

    /// The current cell. A row or column outside the grid is not taken, and nothing happens.
    virtual std::int32_t Row() const = 0;
    virtual void SetRow(std::int32_t row) = 0;
    virtual std::int32_t Col() const = 0;
    virtual void SetCol(std::int32_t col) = 0;

    /// The first row on the page; a row outside the grid is not taken.
    virtual std::int32_t TopRow() const = 0;
    virtual void SetTopRow(std::int32_t row) = 0;

    /// Height of a row in pixels; 0 hides it. 0 for a row outside the grid.
    virtual std::int32_t RowHeight(std::int32_t row) const = 0;
    virtual void SetRowHeight(std::int32_t row, std::int32_t height) = 0;
    virtual std::int32_t ColWidth(std::int32_t col) const = 0;
    virtual void SetColWidth(std::int32_t col, std::int32_t width) = 0;
    virtual std::int32_t DefaultRowHeight() const = 0;
    virtual void SetDefaultRowHeight(std::int32_t height) = 0;

    /// Whether the whole row lies inside the visible page.
    virtual bool RowOnScreen(std::int32_t row) const = 0;

    virtual void SetGridMode(GridStyle style) = 0;

    /// Paints the page of a visible grid, if it has come to look different: its widths and heights are settled then.
    virtual void PaintNow() = 0;

    /// Takes up changed sizes; run once before a forced redraw.
    virtual void Recalc() = 0;
};

} // namespace platform
