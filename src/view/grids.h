// SPDX-License-Identifier: MIT
// The deferred refresh of the grids and what else works on their rows.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modPDAUI {

struct GridState {
    bool GridLocked = false;     ///< nothing is painted and selection is ignored; a filling list raises it
    bool RepaintPending = false; ///< a deferred refresh is armed; RepaintGrids writes it
    /// Last row of a record that had a height, for the direction of travel; row changes and RestoreGrids write it.
    std::int32_t LastVisibleRow = 0;
};
inline GridState Grids;

/// With `now` false: in 100 ms. With `now` true: walks the selection of both hidden grids through all rows, which
/// paints each once and so settles heights and widths, and gives grdMain the focus.
void RepaintGrids(bool now);
inline void RepaintGridsSoon() {
    RepaintGrids(false);
}

/// The tick of tmrMenus, always the last one until the next request.
void HandleRepaintTimer();

/// Makes grdMain a list of these texts, one a row, in column 0.
void ShowList(const std::vector<Text>& texts);

/// Appends a row to a one-column list that starts with one empty row.
void AddGridRow(const Text& text);

/// Moves the page of grdMain so that the current row stands on it.
void ScrollRowIntoView();

/// Width that a scroll bar takes, in pixels; 0 on the devices that draw it over the cells.
std::int16_t ScrollBarWidth();

} // namespace modPDAUI
