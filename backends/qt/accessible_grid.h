// SPDX-License-Identifier: MIT
// Presents a grid to screen readers: a table whose cells have a text, a place and a state.
#pragma once

#include <QAccessible>

#include <cstdint>
#include <utility>
#include <vector>

namespace backends::qt {

class GridWidget;
class QtGrid;

/// Must be called once, before a screen reader asks for the first grid.
void InstallAccessibleGrids();

/// Reports the changes of a grid to a screen reader, if one is active.
class GridNews {
public:
    /// Follows a grid. The grid calls this object and must not be used after it is gone.
    explicit GridNews(QtGrid& grid);
    GridNews(const GridNews&) = delete;
    GridNews& operator=(const GridNews&) = delete;

private:
    struct State {
        std::int32_t Rows = 0, Cols = 0, Row = 0, Col = 0;
        bool HasFocus = false;
    };

    void CellChanged(std::int32_t row, std::int32_t col);
    /// Reports what has changed since the last call.
    void Tell();
    State Now() const;
    void TellCells();

    GridWidget& Grid_;
    State Reported_;
    std::vector<std::pair<std::int32_t, std::int32_t>> Changed_; ///< row and column
};

} // namespace backends::qt
