// SPDX-License-Identifier: MIT
#include "src/view/grids.h"

#include "src/view/input_fields.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

#include <cmath>

namespace modPDAUI {

using platform::Device;

namespace {

constexpr std::int32_t RepaintDelay = 100; // milliseconds

/// Selects the first and then the last row, which paints every row. The grid is hidden meanwhile, so that this is not
/// visible and raises no row-change event. `shown`: the grid is visible afterwards.
void PaintThrough(platform::OwnerDrawGrid& grid, bool shown) {
    grid.Recalc();
    grid.SetVisible(false);
    const std::int32_t topRow = grid.TopRow();
    const std::int32_t row = grid.Row();
    grid.SetRow(0);
    grid.SetRow(grid.Rows() - 1);
    grid.SetRow(row);
    grid.SetTopRow(topRow);
    grid.SetVisible(shown);
}

} // namespace

void RepaintGrids(bool now) {
    if (platform::Traits().RepaintEndsHold)
        Device().tmrHoldEvent.SetEnabled(false);
    if (!now) {
        Grids.RepaintPending = true;
        Device().tmrMenus.SetInterval(RepaintDelay);
        Device().tmrMenus.SetEnabled(true);
        return;
    }
    Grids.GridLocked = false;
    PaintThrough(Device().grdTitle, true);
    // A refresh that was pending when a prompt opened must not show the grid over the prompt's field.
    PaintThrough(Device().grdMain, !OnPromptScreen());
    Device().grdMain.SetFocus();
    Grids.RepaintPending = false;
}

void HandleRepaintTimer() {
    if (Grids.RepaintPending)
        RepaintGridsNow();
    Device().tmrMenus.SetEnabled(false);
}

void ShowList(const std::vector<Text>& texts) {
    auto& grdMain = Device().grdMain;
    grdMain.SetRows(static_cast<std::int32_t>(texts.size()));
    for (std::size_t i = 0; i < texts.size(); ++i)
        grdMain.SetCell(static_cast<std::int32_t>(i), 0, texts[i]);
}

void AddGridRow(const Text& text) {
    auto& grdMain = Device().grdMain;
    if (!grdMain.Cell(grdMain.Rows() - 1, 0).empty())
        grdMain.SetRows(grdMain.Rows() + 1);
    grdMain.SetCell(grdMain.Rows() - 1, 0, text);
}

void ScrollRowIntoView() {
    auto& grdMain = Device().grdMain;
    const std::int32_t row = grdMain.Row();
    if (row <= grdMain.TopRow()) {
        if (row < grdMain.TopRow())
            grdMain.SetTopRow(row);
        return;
    }
    std::int32_t height = 0;
    for (std::int32_t r = grdMain.TopRow(); r <= row; ++r)
        height += grdMain.RowHeight(r);
    std::int32_t top = grdMain.TopRow();
    while (top < row && grdMain.Bounds().Height < static_cast<float>(height)) {
        height -= grdMain.RowHeight(top);
        ++top;
    }
    if (top != grdMain.TopRow())
        grdMain.SetTopRow(top);
}

std::int16_t ScrollBarWidth() {
    if (platform::Traits().BarOverCells)
        return 0;
    return static_cast<std::int16_t>(std::nearbyint(Device().AFVScrollBar1.Width()));
}

} // namespace modPDAUI
