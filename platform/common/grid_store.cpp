// SPDX-License-Identifier: MIT
#include "platform/common/grid_store.h"

#include <algorithm>

namespace platform::common {

namespace {

constexpr std::int32_t LargestFont = 127;

} // namespace

Text GridStore::Cell(std::int32_t row, std::int32_t col) const {
    if (!HasRow(row) || !HasCol(col))
        return {};
    return At(row).Cells[static_cast<std::size_t>(col)];
}

void GridStore::SetCell(std::int32_t row, std::int32_t col, const Text& text) {
    if (HasRow(row) && HasCol(col))
        At(row).Cells[static_cast<std::size_t>(col)] = text;
}

void GridStore::SetRows(std::int32_t rows) {
    Line fresh;
    fresh.Cells.resize(Widths.size());
    fresh.Height = NewRowHeight;
    Lines.resize(static_cast<std::size_t>(std::max(rows, 0)), fresh);
    PullBack();
}

void GridStore::SetCols(std::int32_t cols) {
    Widths.resize(static_cast<std::size_t>(std::max(cols, 0)));
    for (Line& line : Lines)
        line.Cells.resize(Widths.size());
    PullBack();
}

/// Being pulled back into a smaller grid is nobody's choice: no event comes of it.
void GridStore::PullBack() {
    CurrentRow = std::clamp(CurrentRow, 0, std::max(Rows() - 1, 0));
    CurrentCol = std::clamp(CurrentCol, 0, std::max(Cols() - 1, 0));
    FirstOnPage = std::clamp(FirstOnPage, 0, std::max(Rows() - 1, 0));
}

void GridStore::SetRow(std::int32_t row) {
    SetCurrentCell(row, CurrentCol);
}

void GridStore::SetCol(std::int32_t col) {
    SetCurrentCell(CurrentRow, col);
}

void GridStore::SetCurrentCell(std::int32_t row, std::int32_t col) {
    if (!HasRow(row) || !HasCol(col))
        return;
    const std::int32_t oldRow = CurrentRow;
    const bool changed = row != CurrentRow || col != CurrentCol;
    CurrentRow = row;
    CurrentCol = col;
    PaintRows(std::min(oldRow, row), std::max(oldRow, row));
    ScrollTo(row);
    if (changed)
        Announce();
}

void GridStore::Announce() {
    if (!Shown)
        return;
    ++Announcing;
    RowColChanged();
    --Announcing;
    LeaveHiddenRow();
}

/// A row without a height is not offered. Only once the handlers of a move have come back: they may move on themselves.
void GridStore::LeaveHiddenRow() {
    if (!Shown || Announcing > 0 || !HasRow(CurrentRow) || At(CurrentRow).Height > 0)
        return;
    const std::int32_t row = NearestShownRow();
    if (row >= 0)
        SetRow(row);
}

/// The next row with a height, else the nearest one before; -1 when there is none.
std::int32_t GridStore::NearestShownRow() const {
    for (std::int32_t row = CurrentRow + 1; row < Rows(); ++row) {
        if (At(row).Height > 0)
            return row;
    }
    for (std::int32_t row = CurrentRow - 1; row >= 0; --row) {
        if (At(row).Height > 0)
            return row;
    }
    return -1;
}

void GridStore::SetTopRow(std::int32_t row) {
    if (HasRow(row))
        FirstOnPage = row;
}

std::int32_t GridStore::RowHeight(std::int32_t row) const {
    return HasRow(row) ? At(row).Height : 0;
}

void GridStore::SetRowHeight(std::int32_t row, std::int32_t height) {
    if (!HasRow(row))
        return;
    At(row).Height = std::max(height, 0);
    if (row == CurrentRow)
        LeaveHiddenRow();
}

std::int32_t GridStore::ColWidth(std::int32_t col) const {
    return HasCol(col) ? Widths[static_cast<std::size_t>(col)] : 0;
}

void GridStore::SetColWidth(std::int32_t col, std::int32_t width) {
    if (HasCol(col))
        Widths[static_cast<std::size_t>(col)] = std::max(width, 0);
}

std::int32_t GridStore::HeightBetween(std::int32_t from, std::int32_t to) const {
    std::int32_t height = 0;
    for (std::int32_t row = from; row <= to; ++row)
        height += At(row).Height;
    return height;
}

bool GridStore::RowOnScreen(std::int32_t row) const {
    return HasRow(row) && row >= FirstOnPage && static_cast<float>(HeightBetween(FirstOnPage, row)) <= Place.Height;
}

/// Brings the current row onto the page, by as little as it takes.
void GridStore::ScrollTo(std::int32_t row) {
    FirstOnPage = std::min(FirstOnPage, row);
    std::int32_t height = HeightBetween(FirstOnPage, row);
    while (FirstOnPage<row&& static_cast<float>(height)> Place.Height)
        height -= At(FirstOnPage++).Height;
}

void GridStore::SetVisible(bool visible) {
    if (visible == Shown)
        return;
    Shown = visible;
    if (!visible)
        return;
    PaintPage();
    LeaveHiddenRow();
}

void GridStore::SetFontSize(std::int32_t size) {
    if (size >= 1 && size <= LargestFont)
        Size = size;
}

bool GridStore::Offers(std::int32_t row, std::int32_t col) const {
    return HasRow(row) && HasCol(col) && At(row).Height > 0;
}

void GridStore::PaintPage() {
    std::int32_t last = FirstOnPage;
    while (last + 1 < Rows() && static_cast<float>(HeightBetween(FirstOnPage, last)) < Place.Height)
        ++last;
    PaintRows(FirstOnPage, last);
}

void GridStore::PaintRows(std::int32_t from, std::int32_t to) {
    if (Painting)
        return;
    Painting = true;
    for (std::int32_t row = from; row <= to && row < Rows(); ++row)
        PaintRow(row);
    Painting = false;
}

void GridStore::PaintRow(std::int32_t row) {
    CellToPaint cell;
    cell.Row = row;
    if (row > FirstOnPage)
        cell.Y = HeightBetween(FirstOnPage, row - 1);
    // A row without a height does not come on screen: painting it would make a hidden row grow again whose text wraps.
    for (std::int32_t col = 0; col < Cols() && RowHeight(row) > 0; ++col) {
        cell.Col = col;
        cell.Width = ColWidth(col);
        cell.Height = At(row).Height;
        cell.Current = row == CurrentRow && col == CurrentCol;
        PaintCell(cell);
        cell.X += cell.Width;
    }
}

} // namespace platform::common
