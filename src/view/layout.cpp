// SPDX-License-Identifier: MIT
#include "src/view/layout.h"

#include "src/view/display_state.h"
#include "src/view/input_fields.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"
#include "src/view/screen_table.h"

#include <algorithm>
#include <cmath>

namespace modPDAUI {

namespace {

using modQuorin::ScreenDef;
using modQuorin::Screens;
using platform::Box;
using platform::Device;

constexpr float DesktopWidth = 640;
constexpr float DesktopHeight = 480;

/// Clamped, because the size that a soft keyboard reports may not fit into 32 bits.
std::int32_t Pixels(float size) {
    constexpr float Farthest = 1'000'000; // no screen reaches that far
    return static_cast<std::int32_t>(std::nearbyint(std::clamp(size, -Farthest, Farthest)));
}

/// Returns the part of grdMain's width that its columns can use.
float UsableWidth() {
    return Device().grdMain.Bounds().Width - 2 * static_cast<float>(Display.UiScale);
}

std::int32_t LineHeight(const platform::FontControl& control) {
    auto& fonts = Device().fontServer;
    return fonts.FontHeight(fonts.GetFont(control.FontName(), control.FontSize(), 0));
}

void SizeForm(bool desktop) {
    auto& form = Device().form;
    const float x = form.TwipsPerPixelX();
    const float y = form.TwipsPerPixelY();
    Box box = form.Bounds();
    if (desktop) {
        box.Width = DesktopWidth * x;
        box.Height = DesktopHeight * y;
    } else {
        const Box work = Device().myCsys.WorkArea();
        const auto& keyboard = Display.KeyboardRect;
        const float keyboardHeight = keyboard.State != 0 ? static_cast<float>(keyboard.Height) : 0;
        const bool atTop = keyboard.State != 0 && keyboard.Top == 0;
        box.Left = work.Left * x;
        box.Width = work.Width * x;
        box.Top = (atTop ? work.Top + keyboardHeight : work.Top) * y;
        box.Height = (work.Height - keyboardHeight) * y;
    }
    form.SetBounds(box);
}

/// Puts grdMain below the title band, over its lowest `overlap` pixels; without a title it fills the client area.
void PlaceMainGrid(float overlap) {
    const Box client = Device().form.ClientArea();
    auto& grdTitle = Device().grdTitle;
    if (!grdTitle.Visible()) {
        Device().grdMain.SetBounds(client);
        return;
    }
    const float band = grdTitle.Bounds().Height;
    Device().grdMain.SetBounds({client.Left, band - overlap, client.Width, client.Height - band + overlap});
}

void PlaceGrids() {
    const Box client = Device().form.ClientArea();
    auto& grdTitle = Device().grdTitle;
    grdTitle.SetBounds({client.Left, client.Top, client.Width, grdTitle.Bounds().Height});
    PlaceMainGrid(1);
}

void LayOutCurrentScreenAgain() {
    auto& grdMain = Device().grdMain;
    const std::int32_t row = grdMain.Row();
    const std::int32_t topRow = grdMain.TopRow();
    FitGrids();
    grdMain.SetRow(row);
    grdMain.SetTopRow(topRow);
    grdMain.PaintNow();
    if (grdMain.Visible() && !AnyInputFieldVisible())
        grdMain.SetFocus();
}

/// Shortens the grid by the text box's height, and puts the text box below it.
void PlaceFieldUnderGrid() {
    auto& field = Device().txtInputField;
    auto& grdMain = Device().grdMain;
    if (!field.Visible())
        return;
    Box grid = grdMain.Bounds();
    const float height = field.Bounds().Height;
    grid.Height -= height;
    grdMain.SetBounds(grid);
    field.SetBounds({grid.Left, grid.Top + grid.Height, grid.Width, height});
}

void FillPlaceOfGrid(platform::Control& field, bool wholeHeight) {
    if (!field.Visible())
        return;
    Box box = Device().grdMain.Bounds();
    if (!wholeHeight)
        box.Height = field.Bounds().Height;
    field.SetBounds(box);
}

void PlacePromptFields() {
    FillPlaceOfGrid(Device().dteInputField, true);
    FillPlaceOfGrid(Device().txtInputField, Device().txtInputField.MultiLine());
    if (platform::Traits().ListFieldIsText)
        FillPlaceOfGrid(Device().cbotxtInputField, false);
    else
        FillPlaceOfGrid(Device().cboInputField, false);
}

void PlaceOverEditedRow(platform::Control& field) {
    if (!field.Visible())
        return;
    auto& grdMain = Device().grdMain;
    grdMain.SetTopRow(Input.EditRow);
    grdMain.PaintNow(); // the first row decides whether there is a scroll bar, which changes the width of column 0
    Box box = field.Bounds();
    box.Left = static_cast<float>(grdMain.ColWidth(0));
    box.Width = static_cast<float>(grdMain.ColWidth(1));
    box.Top = grdMain.Bounds().Top;
    for (std::int32_t row = grdMain.TopRow(); row < Input.EditRow; ++row)
        box.Top += static_cast<float>(grdMain.RowHeight(row));
    field.SetBounds(box);
    NoteCellBox();
}

void PlaceInputFields() {
    if (Screens.CurrentScreen == modQuorin::ScrFileSelect) {
        PlaceFieldUnderGrid();
    } else if (Screens.CurrentScreen == modQuorin::ScrInput) {
        PlacePromptFields();
    } else {
        PlaceOverEditedRow(Device().txtInputField);
        PlaceOverEditedRow(Device().cboInputField);
        PlaceOverEditedRow(Device().cbotxtInputField);
    }
}

void EmptyAndResize(platform::OwnerDrawGrid& grid, std::int32_t rows, std::int32_t cols) {
    grid.SetRows(0);
    grid.SetCols(0);
    grid.SetRows(rows);
    grid.SetCols(cols);
}

void SetAllRowHeights(platform::OwnerDrawGrid& grid, std::int32_t height) {
    for (std::int32_t row = 0; row < grid.Rows(); ++row)
        grid.SetRowHeight(row, height);
}

void SetColumnWidths(platform::OwnerDrawGrid& grid, std::int32_t first) {
    grid.SetColWidth(0, first);
    if (grid.Cols() != 1)
        grid.SetColWidth(1, Pixels(UsableWidth() - static_cast<float>(first)));
}

void LayOutTitle(const ScreenDef& screen, bool reset) {
    auto& grdTitle = Device().grdTitle;
    grdTitle.SetVisible(false);
    if (screen.TitleRows <= 0 || screen.TitleCols <= 0)
        return;
    if (reset)
        EmptyAndResize(grdTitle, screen.TitleRows, screen.TitleCols);
    SetColumnWidths(grdTitle, screen.ColumnPixels);
    if (reset)
        SetAllRowHeights(grdTitle, LineHeight(grdTitle) + 2);
    Box box = grdTitle.Bounds();
    box.Height = 0;
    for (std::int32_t row = 0; row < grdTitle.Rows(); ++row)
        box.Height += static_cast<float>(grdTitle.RowHeight(row));
    grdTitle.SetBounds(box);
    grdTitle.SetVisible(true);
}

void LayOutTable(const ScreenDef& screen, bool reset) {
    auto& grdMain = Device().grdMain;
    if (reset) {
        grdMain.SetDefaultRowHeight(LineHeight(grdMain) + 2);
        SetAllRowHeights(grdMain, grdMain.DefaultRowHeight());
    }
    SetColumnWidths(grdMain, screen.ColumnPixels);
    grdMain.SetGridMode(platform::GridStyle::Table);
}

void LayOutSingleCell() {
    auto& grdMain = Device().grdMain;
    const float margin = 2 * static_cast<float>(Display.UiScale);
    grdMain.SetColWidth(0, Pixels(grdMain.Bounds().Width - margin));
    grdMain.SetRowHeight(0, Pixels(grdMain.Bounds().Height - margin));
    grdMain.SetGridMode(platform::GridStyle::OneCell);
}

void LayOutMain(const ScreenDef& screen, bool reset) {
    auto& grdMain = Device().grdMain;
    grdMain.SetVisible(false);
    if (screen.GridRows <= 0 || screen.GridCols <= 0)
        return;
    PlaceMainGrid(static_cast<float>(Display.UiScale));
    if (reset)
        EmptyAndResize(grdMain, screen.GridRows, screen.GridCols);
    if (screen.DrawStyle == modQuorin::CellDrawing::Cell)
        LayOutSingleCell();
    else
        LayOutTable(screen, reset);
    // The field of a prompt is shown in place of the grid.
    grdMain.SetVisible(reset || !OnPromptScreen());
    grdMain.SetRow(0);
}

} // namespace

void LayoutForm(bool desktop) {
    SizeForm(desktop);
    PlaceGrids();
    if (Screens.CurrentScreen == 0)
        return;
    LayOutCurrentScreenAgain();
    PlaceInputFields();
}

void LayoutScreen(bool reset) {
    ScreenDef& screen = modQuorin::ScreenRow(Screens.CurrentScreen);
    // Half a pixel is rounded to the even number: 50 percent of 401 is 200. Multiplied first, so that a half is exact.
    const double hundredths = static_cast<double>(UsableWidth()) * screen.ColumnPercent;
    screen.ColumnPixels = static_cast<std::int32_t>(std::nearbyint(hundredths / 100));
    LayOutTitle(screen, reset);
    LayOutMain(screen, reset);
}

} // namespace modPDAUI
