// SPDX-License-Identifier: MIT
// A grid whose cells the application paints: it records what was painted, knows when to repaint, and handles keys. A
// back-end adds the display of the pictures.
#pragma once

#include "backends/grid/cell_picture.h"
#include "backends/grid/grid_store.h"

#include <map>
#include <optional>
#include <utility>

namespace backends {

using DrawCellHandler = void (*)(CellCanvas&, const PaintedCell&);

class DrawnGrid : public GridStore {
public:
    /// Returns what was last painted of a cell on the page; null if nothing was.
    const CellPicture* Picture(std::int32_t row, std::int32_t col) const;

    /// Called in each round of events: fills an empty part of the page, once a round, and paints the page if its look
    /// has changed. Returns true if it did either.
    bool RaisePainting();
    void PaintNow() override { PaintIfWanted(); }
    void WantPainting() { PaintWanted_ = true; }

    /// Arrow keys move the current cell; page keys turn the page on devices whose grids do that.
    void TakeKey(std::int32_t keyCode);

    struct CellPlace {
        std::int32_t Row = 0, Col = 0;
    };
    /// Returns the cell at a point, in pixels from the grid's corner.
    std::optional<CellPlace> CellAt(std::int32_t x, std::int32_t y) const;
    /// Returns the first row of a page after scrolling down, or up if negative, by rows that have a height, but not
    /// past the last page.
    std::int32_t ScrolledTop(std::int32_t top, std::int32_t rows) const;
    /// Returns the first row of the last page.
    std::int32_t LastTop() const;
    /// Scrolls as little as necessary to show a row on the page.
    void BringOnPage(std::int32_t row);

    bool TurnsPages = false;
    bool HandIsDown = false;         ///< the pointer is down on a cell, which must not move meanwhile
    bool (*FieldIsOpen)() = nullptr; ///< true if a field is open over a cell, which must not move meanwhile
    void (*Moved)() = nullptr;       ///< called when the current cell has changed
    void (*Painted)() = nullptr;     ///< called when the page was painted and no handler waits for that
    DrawCellHandler DrawCell = nullptr;

protected:
    void LooksChanged() override { WantPainting(); }
    virtual void Repainted() {} ///< called when the page has been painted

private:
    bool PaintIfWanted();
    bool FillPage();
    void RowColChanged() override;
    void PaintCell(const PaintedCell& cell) override;
    void TurnPageDown();
    void TurnPageUp();
    std::int32_t PageUpFrom(std::int32_t row) const;

    bool PaintWanted_ = false;
    std::map<std::pair<std::int32_t, std::int32_t>, CellPicture> Pictures_; ///< by row and column
};

} // namespace backends
