// SPDX-License-Identifier: MIT
#include "backends/grid/grid_store.h"

#include <algorithm>

namespace backends {

namespace {

constexpr std::int32_t LargestFont = 127;

} // namespace

Text GridStore::Cell(std::int32_t row, std::int32_t col) const {
    if (!HasRow(row) || !HasCol(col))
        return {};
    return At(row).Cells[static_cast<std::size_t>(col)];
}

void GridStore::SetCell(std::int32_t row, std::int32_t col, const Text& text) {
    if (!HasRow(row) || !HasCol(col) || Cell(row, col) == text)
        return;
    At(row).Cells[static_cast<std::size_t>(col)] = text;
    Changed();
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

/// Moves the current cell and the page into a grid that has become smaller. The user has not moved them, so there is no
/// event.
void GridStore::PullBack() {
    CurrentRow = std::clamp(CurrentRow, 0, std::max(Rows() - 1, 0));
    CurrentCol = std::clamp(CurrentCol, 0, std::max(Cols() - 1, 0));
    FirstOnPage = std::clamp(FirstOnPage, 0, std::max(Rows() - 1, 0));
    Changed();
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
    const bool insideRow = row == CurrentRow && col != CurrentCol;
    CurrentRow = row;
    CurrentCol = col;
    if (!Shown && !insideRow)
        PaintRows(std::min(oldRow, row), std::max(oldRow, row));
    ScrollTo(CurrentRow); // painting may have hidden the row and moved the selection
    if (!changed)
        return;
    Changed();
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

/// Leaves a row without a height. This is done after the handlers of a move have returned, because they may move the
/// cell themselves.
void GridStore::LeaveHiddenRow() {
    if (!Shown || Announcing > 0 || !HasRow(CurrentRow) || At(CurrentRow).Height > 0)
        return;
    const std::int32_t row = NearestShownRow();
    if (row >= 0)
        SetRow(row);
}

/// Returns the next row with a height, or else the nearest one before; -1 if there is none.
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
    if (!HasRow(row))
        return;
    KeepsRow = false;
    BeginPageWith(row);
}

void GridStore::BeginPageWith(std::int32_t row) {
    if (row == FirstOnPage)
        return;
    FirstOnPage = row;
    Changed();
}

bool GridStore::StandsOnPage(std::int32_t row) const {
    return HasRow(row) && row >= FirstOnPage && static_cast<float>(TopOf(row)) < Place.Height;
}

void GridStore::PullPageTo(std::int32_t row) {
    KeepsRow = StandsOnPage(CurrentRow);
    BeginPageWith(row);
}

std::int32_t GridStore::RowHeight(std::int32_t row) const {
    return HasRow(row) ? At(row).Height : 0;
}

void GridStore::SetRowHeight(std::int32_t row, std::int32_t height) {
    if (!HasRow(row))
        return;
    if (At(row).Height == std::max(height, 0))
        return;
    At(row).Height = std::max(height, 0);
    Changed();
    LeaveHiddenRow();
}

std::int32_t GridStore::ColWidth(std::int32_t col) const {
    return HasCol(col) ? Widths[static_cast<std::size_t>(col)] : 0;
}

void GridStore::SetColWidth(std::int32_t col, std::int32_t width) {
    if (!HasCol(col) || ColWidth(col) == std::max(width, 0))
        return;
    Widths[static_cast<std::size_t>(col)] = std::max(width, 0);
    Changed();
}

std::int32_t GridStore::HeightBetween(std::int32_t from, std::int32_t to) const {
    std::int32_t height = 0;
    for (std::int32_t row = from; row <= to; ++row)
        height += At(row).Height;
    return height;
}

bool GridStore::RowOnScreen(std::int32_t row) const {
    if (!HasRow(row) || row < FirstOnPage)
        return false;
    std::int32_t height = 0; // not beyond the page, because a list may have any number of rows
    for (std::int32_t r = FirstOnPage; r <= row; ++r) {
        height += At(r).Height;
        if (static_cast<float>(height) > Place.Height)
            return false;
    }
    return true;
}

/// Scrolls as little as necessary to show the row on the page.
void GridStore::ScrollTo(std::int32_t row) {
    std::int32_t top = std::min(FirstOnPage, row);
    std::int32_t height = HeightBetween(top, row);
    while (top < row && Place.Height < static_cast<float>(height))
        height -= At(top++).Height;
    BeginPageWith(top);
    KeepsRow = true;
}

void GridStore::SetBounds(const Box& box) {
    if (box == Place)
        return;
    Place = box;
    Changed();
}

void GridStore::SetVisible(bool visible) {
    if (visible == Shown)
        return;
    Shown = visible;
    if (!visible)
        return;
    Changed();
    LeaveHiddenRow();
}

void GridStore::SetFontName(const Text& name) {
    if (name == Font)
        return;
    Font = name;
    Changed();
}

void GridStore::SetFontSize(std::int32_t size) {
    const bool offered = FontSizes.empty() || std::find(FontSizes.begin(), FontSizes.end(), size) != FontSizes.end();
    if (size < 1 || size > LargestFont || size == Size || !offered)
        return;
    Size = size;
    Changed();
}

bool GridStore::Offers(std::int32_t row, std::int32_t col) const {
    return HasRow(row) && HasCol(col) && At(row).Height > 0;
}

void GridStore::Changed() {
    if (Painting)
        ChangedByPainting = true;
    else
        LooksChanged();
}

void GridStore::PaintPage() {
    if (Painting)
        return;
    do {
        ChangedByPainting = false;
        PaintRowsOfPage();
        if (ChangedByPainting)
            PaintRowsOfPage();
    } while (BringsRowBack());
    KeepsRow = false;
}

/// Scrolls the page to the current row if painting has pushed it off the page. Returns true if the page has moved.
bool GridStore::BringsRowBack() {
    if (!KeepsRow || !HasRow(CurrentRow) || RowOnScreen(CurrentRow))
        return false;
    const std::int32_t top = FirstOnPage;
    Painting = true; // no LooksChanged: the page is about to be painted anyway
    ScrollTo(CurrentRow);
    Painting = false;
    return FirstOnPage != top;
}

/// The number of rows on the page may grow while it is painted, when rows of hidden fields lose their height.
void GridStore::PaintRowsOfPage() {
    Painting = true;
    std::int32_t y = 0;
    for (std::int32_t row = FirstOnPage; row < Rows() && static_cast<float>(y) < Place.Height; ++row) {
        PaintRow(row, y);
        y += RowHeight(row);
    }
    Painting = false;
}

/// Returns the top of a row in pixels from the top of the page; 0 for a row above the page.
std::int32_t GridStore::TopOf(std::int32_t row) const {
    return row > FirstOnPage ? HeightBetween(FirstOnPage, row - 1) : 0;
}

void GridStore::PaintRows(std::int32_t from, std::int32_t to) {
    if (Painting)
        return;
    Painting = true;
    std::int32_t y = TopOf(from);
    for (std::int32_t row = from; row <= to && row < Rows(); ++row) {
        PaintRow(row, y);
        if (row >= FirstOnPage)
            y += RowHeight(row);
    }
    Painting = false;
}

void GridStore::PaintRow(std::int32_t row, std::int32_t y) {
    CellToPaint cell;
    cell.Row = row;
    cell.Y = y;
    // A row without a height is not painted: painting would give a hidden row a height again if its text wraps.
    for (std::int32_t col = 0; col < Cols() && RowHeight(row) > 0; ++col) {
        cell.Col = col;
        cell.Width = ColWidth(col);
        cell.Height = At(row).Height;
        cell.Current = row == CurrentRow && col == CurrentCol;
        PaintCell(cell);
        cell.X += cell.Width;
    }
}

} // namespace backends
