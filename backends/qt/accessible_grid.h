// SPDX-License-Identifier: MIT
// What a screen reader finds of a grid: a table, whose cells have their text, their place and their state.
#pragma once

#include <QAccessible>

#include <cstdint>
#include <utility>
#include <vector>

namespace backends::qt {

class GridWidget;
class QtGrid;

/// To be called once, before a screen reader asks for the first grid.
void InstallAccessibleGrids();

/// Tells a screen reader what has become of a grid, when there is one to be told.
class GridNews {
public:
    /// Follows a grid, which must not outlive it.
    explicit GridNews(QtGrid& grid);
    GridNews(const GridNews&) = delete;
    GridNews& operator=(const GridNews&) = delete;

    // Whether anyone listens, and where it is told: a test puts itself there.
    static inline bool (*IsHeard)() = QAccessible::isActive;
    static inline void (*Say)(QAccessibleEvent*) = QAccessible::updateAccessibility;

private:
    struct State {
        std::int32_t Rows = 0, Cols = 0, Row = 0, Col = 0;
        bool HasFocus = false;
    };

    void CellChanged(std::int32_t row, std::int32_t col);
    /// Whatever has changed since the last time.
    void Tell();
    State Now() const;
    void TellCells();

    GridWidget& Grid_;
    State Reported_;
    std::vector<std::pair<std::int32_t, std::int32_t>> Changed_; ///< row and column
};

} // namespace backends::qt
