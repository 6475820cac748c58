// SPDX-License-Identifier: MIT
#include "backends/grid/drawn_grid.h"

#include "src/view/platform/keys.h"

#include <algorithm>

namespace backends {

void DrawnGrid::RowColChanged() {
    if (Moved != nullptr)
        Moved();
}

void DrawnGrid::TakeKey(std::int32_t keyCode) {
    if (!Enabled() || !Visible())
        return;
    switch (Key{keyCode}) {
    case Key::Up:
        SetRow(Row() - 1); // a row or column outside of the grid is ignored
        break;
    case Key::Down:
        SetRow(Row() + 1);
        break;
    case Key::Left:
        SetCol(Col() - 1);
        break;
    case Key::Right:
        SetCol(Col() + 1);
        break;
    case Key::PageUp:
        if (TurnsPages)
            TurnPageUp();
        break;
    case Key::PageDown:
        if (TurnsPages)
            TurnPageDown();
        break;
    default:
        break;
    }
}

/// Moves down by the number of rows that are completely on the page, and not past the last page.
void DrawnGrid::TurnPageDown() {
    std::int32_t rows = 0;
    while (RowOnScreen(TopRow() + rows))
        ++rows;
    const std::int32_t lastTop = std::max(Rows() - std::max(rows, 1), 0);
    SetTopRow(std::min(TopRow() + std::max(rows, 1), lastTop));
}

/// Moves up by the number of rows that fit on a page above the current first one.
void DrawnGrid::TurnPageUp() {
    SetTopRow(PageUpFrom(TopRow()));
}

/// Returns the first row of a page that ends just above `row`: one row at least, if there is one.
std::int32_t DrawnGrid::PageUpFrom(std::int32_t row) const {
    std::int32_t top = row;
    float height = 0;
    while (top > 0) {
        height += static_cast<float>(RowHeight(top - 1));
        if (height > Bounds().Height && top < row)
            break;
        --top;
    }
    return top;
}

std::int32_t DrawnGrid::LastTop() const {
    return PageUpFrom(Rows());
}

void DrawnGrid::BringOnPage(std::int32_t row) {
    if (row < TopRow())
        SetTopRow(row);
    while (TopRow() < row && !RowOnScreen(row))
        SetTopRow(TopRow() + 1);
}

std::int32_t DrawnGrid::ScrolledTop(std::int32_t top, std::int32_t rows) const {
    const std::int32_t step = rows < 0 ? -1 : 1;
    for (std::int32_t left = rows; left != 0; left -= step) {
        std::int32_t next = top + step;
        while (next > 0 && next < Rows() && RowHeight(next) == 0)
            next += step;
        if (next < 0 || (step > 0 && next > LastTop()))
            break;
        top = next;
    }
    return top;
}

std::optional<DrawnGrid::CellPlace> DrawnGrid::CellAt(std::int32_t x, std::int32_t y) const {
    if (x < 0 || y < 0)
        return std::nullopt;
    std::int32_t row = TopRow();
    for (std::int32_t foot = 0; row < Rows(); ++row) {
        foot += RowHeight(row);
        if (y < foot)
            break;
    }
    std::int32_t col = 0;
    for (std::int32_t edge = 0; col < Cols(); ++col) {
        edge += ColWidth(col);
        if (x < edge)
            break;
    }
    if (!Offers(row, col))
        return std::nullopt;
    return CellPlace{row, col};
}

const CellPicture* DrawnGrid::Picture(std::int32_t row, std::int32_t col) const {
    const auto found = Pictures_.find({row, col});
    return found != Pictures_.end() ? &found->second : nullptr;
}

bool DrawnGrid::PaintIfWanted() {
    if (!PaintWanted_ || !Visible())
        return false;
    PaintWanted_ = false;
    Pictures_.clear();
    PaintPage();
    Repainted();
    return true;
}

/// Fills the empty part of a page. This comes before painting: the first row on the page decides whether a scroll bar
/// needs space, and a row that has wrapped beside a scroll bar keeps that height.
bool DrawnGrid::FillPage() {
    if (!Visible() || HandIsDown || (FieldIsOpen != nullptr && FieldIsOpen()) || TopRow() <= LastTop())
        return false;
    PullPageTo(LastTop());
    return true;
}

bool DrawnGrid::RaisePainting() {
    const bool filled = FillPage();
    const bool painted = PaintIfWanted();
    if (painted && Painted != nullptr)
        Painted();
    return filled || painted;
}

void DrawnGrid::PaintCell(const PaintedCell& cell) {
    RecordingCanvas canvas;
    if (DrawCell != nullptr)
        DrawCell(canvas, cell);
    if (!Visible())
        return; // painted only for its effect on the sizes
    if (canvas.Picture())
        Pictures_[{cell.Row, cell.Col}] = *canvas.Picture();
    else
        Pictures_.erase({cell.Row, cell.Col});
}

} // namespace backends
