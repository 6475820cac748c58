// SPDX-License-Identifier: MIT
// The deferred refresh of the grids, and operations on their rows.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modPDAUI {

struct GridState {
    bool GridLocked = false;     ///< nothing is painted and selection is ignored; set while a list is filled
    bool RepaintPending = false; ///< a deferred refresh is armed; RepaintGrids writes it
    /// Last row of a record that had a height, for the direction of travel; row changes and RestoreGrids write it.
    std::int32_t LastVisibleRow = 0;
};
inline GridState Grids;

/// Without `now`: requests a refresh in 100 ms. With `now`: hides both grids and moves their selection through all
/// rows, which paints each row once and so computes its height and the widths; then grdMain has the focus.
void RepaintGrids(bool now);
inline void RepaintGridsSoon() {
    RepaintGrids(false);
}
inline void RepaintGridsNow() {
    RepaintGrids(true);
}

/// Handles the tick of tmrMenus, and stops the timer until the next request.
void HandleRepaintTimer();

/// Fills grdMain with these texts, one a row, in column 0.
void ShowList(const std::vector<Text>& texts);

/// Appends a row to a one-column list that starts with one empty row.
void AddGridRow(const Text& text);

/// Scrolls grdMain so that the current row is on the page.
void ScrollRowIntoView();

/// Returns the width of a scroll bar in pixels; 0 on devices that draw it over the cells.
std::int16_t ScrollBarWidth();

} // namespace modPDAUI
