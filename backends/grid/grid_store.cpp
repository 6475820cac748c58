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
    fresh.Cells.resize(Widths_.size());
    fresh.Height = NewRowHeight_;
    Lines_.resize(static_cast<std::size_t>(std::max(rows, 0)), fresh);
    PullBack();
}

void GridStore::SetCols(std::int32_t cols) {
    Widths_.resize(static_cast<std::size_t>(std::max(cols, 0)));
    for (Line& line : Lines_)
        line.Cells.resize(Widths_.size());
    PullBack();
}

/// Moves the current cell and the page into a grid that has become smaller. The user has not moved them, so there is no
/// event.
void GridStore::PullBack() {
    CurrentRow_ = std::clamp(CurrentRow_, 0, std::max(Rows() - 1, 0));
    CurrentCol_ = std::clamp(CurrentCol_, 0, std::max(Cols() - 1, 0));
    FirstOnPage_ = std::clamp(FirstOnPage_, 0, std::max(Rows() - 1, 0));
    Changed();
}

void GridStore::SetRow(std::int32_t row) {
    SetCurrentCell(row, CurrentCol_);
}

void GridStore::SetCol(std::int32_t col) {
    SetCurrentCell(CurrentRow_, col);
}

void GridStore::SetCurrentCell(std::int32_t row, std::int32_t col) {
    if (!HasRow(row) || !HasCol(col))
        return;
    const std::int32_t oldRow = CurrentRow_;
    const bool changed = row != CurrentRow_ || col != CurrentCol_;
    const bool insideRow = row == CurrentRow_ && col != CurrentCol_;
    CurrentRow_ = row;
    CurrentCol_ = col;
    if (!Visible_ && !insideRow)
        PaintRows(std::min(oldRow, row), std::max(oldRow, row));
    ScrollTo(CurrentRow_); // painting may have hidden the row and moved the selection
    if (!changed)
        return;
    Changed();
    Announce();
}

void GridStore::Announce() {
    if (!Visible_)
        return;
    ++Announcing_;
    RowColChanged();
    --Announcing_;
    LeaveHiddenRow();
}

/// Leaves a row without a height. This is done after the handlers of a move have returned, because they may move the
/// cell themselves.
void GridStore::LeaveHiddenRow() {
    if (!Visible_ || Announcing_ > 0 || !HasRow(CurrentRow_) || At(CurrentRow_).Height > 0)
        return;
    const std::int32_t row = NearestShownRow();
    if (row >= 0)
        SetRow(row);
}

/// Returns the next row with a height, or else the nearest one before; -1 if there is none.
std::int32_t GridStore::NearestShownRow() const {
    for (std::int32_t row = CurrentRow_ + 1; row < Rows(); ++row) {
        if (At(row).Height > 0)
            return row;
    }
    for (std::int32_t row = CurrentRow_ - 1; row >= 0; --row) {
        if (At(row).Height > 0)
            return row;
    }
    return -1;
}

void GridStore::SetTopRow(std::int32_t row) {
    if (!HasRow(row))
        return;
    KeepsRow_ = false;
    BeginPageWith(row);
}

void GridStore::BeginPageWith(std::int32_t row) {
    if (row == FirstOnPage_)
        return;
    FirstOnPage_ = row;
    Changed();
}

bool GridStore::StandsOnPage(std::int32_t row) const {
    return HasRow(row) && row >= FirstOnPage_ && static_cast<float>(TopOf(row)) < Bounds_.Height;
}

void GridStore::PullPageTo(std::int32_t row) {
    KeepsRow_ = StandsOnPage(CurrentRow_);
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
    return HasCol(col) ? Widths_[static_cast<std::size_t>(col)] : 0;
}

void GridStore::SetColWidth(std::int32_t col, std::int32_t width) {
    if (!HasCol(col) || ColWidth(col) == std::max(width, 0))
        return;
    Widths_[static_cast<std::size_t>(col)] = std::max(width, 0);
    Changed();
}

std::int32_t GridStore::HeightBetween(std::int32_t from, std::int32_t to) const {
    std::int32_t height = 0;
    for (std::int32_t row = from; row <= to; ++row)
        height += At(row).Height;
    return height;
}

bool GridStore::RowOnScreen(std::int32_t row) const {
    if (!HasRow(row) || row < FirstOnPage_)
        return false;
    std::int32_t height = 0; // not beyond the page, because a list may have any number of rows
    for (std::int32_t r = FirstOnPage_; r <= row; ++r) {
        height += At(r).Height;
        if (static_cast<float>(height) > Bounds_.Height)
            return false;
    }
    return true;
}

/// Scrolls as little as necessary to show the row on the page.
void GridStore::ScrollTo(std::int32_t row) {
    std::int32_t top = std::min(FirstOnPage_, row);
    std::int32_t height = HeightBetween(top, row);
    while (top < row && Bounds_.Height < static_cast<float>(height))
        height -= At(top++).Height;
    BeginPageWith(top);
    KeepsRow_ = true;
}

void GridStore::SetBounds(const Box& box) {
    if (box == Bounds_)
        return;
    Bounds_ = box;
    Changed();
}

void GridStore::SetVisible(bool visible) {
    if (visible == Visible_)
        return;
    Visible_ = visible;
    if (!visible)
        return;
    Changed();
    LeaveHiddenRow();
}

void GridStore::SetFontName(const Text& name) {
    if (name == Font_)
        return;
    Font_ = name;
    Changed();
}

void GridStore::SetFontSize(std::int32_t size) {
    const bool offered =
        FontSizes_.empty() || std::find(FontSizes_.begin(), FontSizes_.end(), size) != FontSizes_.end();
    if (size < 1 || size > LargestFont || size == Size_ || !offered)
        return;
    Size_ = size;
    Changed();
}

bool GridStore::Offers(std::int32_t row, std::int32_t col) const {
    return HasRow(row) && HasCol(col) && At(row).Height > 0;
}

void GridStore::Changed() {
    if (Painting_)
        ChangedByPainting_ = true;
    else
        LooksChanged();
}

void GridStore::PaintPage() {
    if (Painting_)
        return;
    do {
        ChangedByPainting_ = false;
        PaintRowsOfPage();
        if (ChangedByPainting_)
            PaintRowsOfPage();
    } while (BringsRowBack());
    KeepsRow_ = false;
}

/// Scrolls the page to the current row if painting has pushed it off the page. Returns true if the page has moved.
bool GridStore::BringsRowBack() {
    if (!KeepsRow_ || !HasRow(CurrentRow_) || RowOnScreen(CurrentRow_))
        return false;
    const std::int32_t top = FirstOnPage_;
    Painting_ = true; // no LooksChanged: the page is about to be painted anyway
    ScrollTo(CurrentRow_);
    Painting_ = false;
    return FirstOnPage_ != top;
}

/// The number of rows on the page may grow while it is painted, when rows of hidden fields lose their height.
void GridStore::PaintRowsOfPage() {
    Painting_ = true;
    std::int32_t y = 0;
    for (std::int32_t row = FirstOnPage_; row < Rows() && static_cast<float>(y) < Bounds_.Height; ++row) {
        PaintRow(row, y);
        y += RowHeight(row);
    }
    Painting_ = false;
}

/// Returns the top of a row in pixels from the top of the page; 0 for a row above the page.
std::int32_t GridStore::TopOf(std::int32_t row) const {
    return row > FirstOnPage_ ? HeightBetween(FirstOnPage_, row - 1) : 0;
}

void GridStore::PaintRows(std::int32_t from, std::int32_t to) {
    if (Painting_)
        return;
    Painting_ = true;
    std::int32_t y = TopOf(from);
    for (std::int32_t row = from; row <= to && row < Rows(); ++row) {
        PaintRow(row, y);
        if (row >= FirstOnPage_)
            y += RowHeight(row);
    }
    Painting_ = false;
}

void GridStore::PaintRow(std::int32_t row, std::int32_t y) {
    PaintedCell cell;
    cell.Row = row;
    cell.Y = y;
    // A row without a height is not painted: painting would give a hidden row a height again if its text wraps.
    for (std::int32_t col = 0; col < Cols() && RowHeight(row) > 0; ++col) {
        cell.Col = col;
        cell.Width = ColWidth(col);
        cell.Height = At(row).Height;
        cell.Current = row == CurrentRow_ && col == CurrentCol_;
        PaintCell(cell);
        cell.X += cell.Width;
    }
}

} // namespace backends
