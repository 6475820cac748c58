// SPDX-License-Identifier: MIT
// A grid whose cells the application paints: it keeps what was painted, knows when it is to be painted again, and moves
// by key. What a back-end adds is where the pictures are seen.
#pragma once

#include "backends/grid/cell_picture.h"
#include "backends/grid/grid_store.h"

#include <map>
#include <optional>
#include <utility>

namespace backends {

using DrawCellHandler = void (*)(CellCanvas&, std::int32_t row, std::int32_t col, std::int32_t x, std::int32_t y,
                                 std::int32_t width, std::int32_t height, std::int32_t selected);

class DrawnGrid : public GridStore {
public:
    /// What was last painted of a cell that stands on the page; nothing where nothing was.
    const CellPicture* Picture(std::int32_t row, std::int32_t col) const;

    /// What a round of events leaves to the grid: an empty part of the page is filled, once a round, and the page is
    /// painted if it has come to look different. Whether there was anything.
    bool RaisePainting();
    void PaintNow() override { PaintIfWanted(); }
    void WantPainting() { PaintWanted = true; }

    /// The arrows move the current cell; the page keys turn the page where the device's grids do so.
    void TakeKey(std::int32_t keyCode);

    struct CellPlace {
        std::int32_t Row = 0, Col = 0;
    };
    /// The cell under a point, in pixels from the grid's corner.
    std::optional<CellPlace> CellAt(std::int32_t x, std::int32_t y) const;
    /// The first row of a page that has been moved on, or back, by rows that have a height: never past the last page.
    std::int32_t ScrolledTop(std::int32_t top, std::int32_t rows) const;
    /// The first row of the last page.
    std::int32_t LastTop() const;
    /// Moves the page to where a row stands on it, by as little as it takes.
    void BringOnPage(std::int32_t row);

    bool TurnsPages = false;
    bool HandIsDown = false;         ///< on a cell, which must not move away under it
    bool (*FieldIsOpen)() = nullptr; ///< over a cell, which must not move away under it either
    void (*Moved)() = nullptr;       ///< the current cell is another one
    void (*Painted)() = nullptr;     ///< the page, and no handler is waiting for it
    DrawCellHandler DrawCell = nullptr;

protected:
    void LooksChanged() override { WantPainting(); }
    virtual void Repainted() {} ///< the page has been painted

private:
    bool PaintIfWanted();
    bool FillPage();
    void RowColChanged() override;
    void PaintCell(const CellToPaint& cell) override;
    void TurnPageDown();
    void TurnPageUp();
    std::int32_t PageUpFrom(std::int32_t row) const;

    bool PaintWanted = false;
    std::map<std::pair<std::int32_t, std::int32_t>, CellPicture> Pictures; ///< by row and column
};

} // namespace backends
