// SPDX-License-Identifier: MIT
#include "src/view/painting.h"

#include "src/text/digits.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "src/view/platform/platform.h"

#include <cmath>

namespace modPDAUI {

using modQuorin::Screens;
using platform::AlignX;
using platform::AlignY;
using platform::Device;
using platform::PaintedCell;

namespace {

constexpr std::int32_t TitleBackColour = 0xFF0000; // 0xBBGGRR: pure blue
constexpr std::int32_t TitleTextColour = platform::White;

constexpr std::int32_t WrappedMargin = 4; // pixels added to the height of wrapped text

struct Heights {
    std::int32_t Line = 0;
    std::int32_t Wrapped = 0;
    bool Wraps() const { return Wrapped > Line; }
};

Heights Measure(const platform::OwnerDrawGrid& grid, std::int32_t col, const Text& text) {
    auto& fonts = Device().fontServer;
    const auto font = fonts.GetFont(grid.FontName(), grid.FontSize(), 0);
    Heights heights;
    heights.Line = fonts.MeasureLine(font, text, 0, static_cast<std::int32_t>(text.size())).Height;
    heights.Wrapped = fonts.MeasureWrapped(font, text, grid.ColWidth(col)).Height;
    return heights;
}

bool NeedsScrollBar() {
    const auto& grdMain = Device().grdMain;
    const std::int32_t rows = grdMain.Rows();
    if (!grdMain.RowOnScreen(rows - 1) || !grdMain.RowOnScreen(0))
        return true;
    std::int32_t height = 0;
    for (std::int32_t row = 0; row < rows; ++row)
        height += grdMain.RowHeight(row);
    return static_cast<float>(height) > grdMain.Bounds().Height;
}

std::int32_t FirstColumnWidth() {
    const std::int32_t width = modQuorin::ScreenRow(Screens.CurrentScreen).ColumnPixels;
    return NeedsScrollBar() ? width - ScrollBarWidth() : width;
}

void DrawCellText(platform::CellCanvas& canvas, const platform::OwnerDrawGrid& grid, const PaintedCell& cell,
                  const Text& text, bool wraps) {
    if (wraps)
        canvas.DrawBox(cell.X + 1, cell.Y + 1, grid.ColWidth(cell.Col), grid.RowHeight(cell.Row), AlignX::Start,
                       AlignY::Top, text);
    else
        canvas.DrawLine(cell.X + 1, cell.Y + 1, text);
}

void PaintStartScreen(platform::CellCanvas& canvas, const PaintedCell& cell) {
    canvas.ClearCell();
    canvas.DrawBox(cell.X, cell.Y, cell.Width, cell.Height, AlignX::Centre, AlignY::Middle, u"Velmor \r\nTallybook");
    canvas.DrawBox(cell.X, cell.Y, cell.Width, cell.Height, AlignX::Centre, AlignY::Foot,
                   VersionLine(VersionMajor, VersionMinor));
}

void PaintPlainCell(platform::CellCanvas& canvas, const PaintedCell& cell) {
    std::int32_t backColour = 0;
    std::int32_t foreColour = 0;
    PaintListCell(canvas, cell, backColour, foreColour);
}

void PaintRecordCell(platform::CellCanvas& canvas, const PaintedCell& cell) {
    std::int32_t backColour = platform::White;
    const auto& fields = modQuorin::Inf.InfFields;
    if (static_cast<std::size_t>(cell.Row) < fields.size()) {
        const modQuorin::InfField& field = fields[static_cast<std::size_t>(cell.Row)];
        backColour = field.Display;
        if (!field.Visible && cell.Height >= 1) {
            Device().grdMain.SetRowHeight(cell.Row, 0); // the control does not offer the row again
            return;
        }
    }
    if (!Display.ColourOn) {
        PaintPlainCell(canvas, cell);
        return;
    }
    std::int32_t foreColour = 0; // if the background is 0 too, the form's colours are used
    PaintListCell(canvas, cell, backColour, foreColour);
}

void FitTitleColumns() {
    auto& grdTitle = Device().grdTitle;
    const float width = grdTitle.Bounds().Width;
    if (grdTitle.Cols() == 1) {
        grdTitle.SetColWidth(0, static_cast<std::int32_t>(width));
        return;
    }
    const bool scrollBar = NeedsScrollBar();
    const std::int32_t first = modQuorin::ScreenRow(Screens.CurrentScreen).ColumnPixels;
    grdTitle.SetColWidth(0, scrollBar ? first - ScrollBarWidth() : first);
    if (scrollBar)
        grdTitle.SetColWidth(
            1, static_cast<std::int32_t>(std::nearbyint(width - static_cast<float>(grdTitle.ColWidth(0)))));
}

} // namespace

const std::int32_t VersionMajor = QUORIN_VERSION_MAJOR;
const std::int32_t VersionMinor = QUORIN_VERSION_MINOR;

Text VersionLine(std::int32_t majorNumber, std::int32_t minorNumber) {
    return u"V " + modStringTools::NumberText(majorNumber) + u"." + modStringTools::TwoDigits(minorNumber);
}

void DrawMainCell(platform::CellCanvas& canvas, const PaintedCell& cell) {
    switch (modQuorin::ScreenRow(Screens.CurrentScreen).DrawStyle) {
    case modQuorin::CellDrawing::Table:
    case modQuorin::CellDrawing::Cell:
        PaintScreenCell(Screens.CurrentScreen, canvas, cell);
        break;
    case modQuorin::CellDrawing::List:
        PaintPlainCell(canvas, cell);
        break;
    default:
        break;
    }
}

void PaintScreenCell(modQuorin::ScreenId screen, platform::CellCanvas& canvas, const PaintedCell& cell) {
    if (screen == modQuorin::ScrMain)
        PaintStartScreen(canvas, cell);
    else if (screen == modQuorin::ScrInfRecord)
        PaintRecordCell(canvas, cell);
    else
        PaintPlainCell(canvas, cell);
}

void PaintListCell(platform::CellCanvas& canvas, const PaintedCell& cell, std::int32_t& backColour,
                   std::int32_t& foreColour) {
    if (Grids.GridLocked)
        return;
    auto& grdMain = Device().grdMain;
    if (backColour == 0 && foreColour == 0) {
        backColour = Device().colours.Background;
        foreColour = Device().colours.Foreground;
    }
    canvas.SetBackColor(backColour);
    canvas.SetForeColor(foreColour);
    const Text text = grdMain.Cell(cell.Row, cell.Col);
    Heights heights = Measure(grdMain, cell.Col, text);
    grdMain.SetColWidth(0, FirstColumnWidth());
    if (heights.Wraps()) {
        heights.Wrapped += WrappedMargin;
        if (grdMain.RowHeight(cell.Row) != heights.Wrapped)
            grdMain.SetRowHeight(cell.Row, heights.Wrapped);
    }
    canvas.SetBackColor(backColour);
    canvas.ClearCell();
    if (cell.Current) {
        canvas.SetBackColor(Display.SelectedBackColor);
        canvas.ClearCell();
        canvas.SetForeColor(Display.SelectedFrameColor);
        canvas.FrameRect(cell.X, cell.Y, cell.Width, cell.Height);
        canvas.SetForeColor(Display.SelectedTextColor);
    } else {
        canvas.SetForeColor(foreColour);
    }
    DrawCellText(canvas, grdMain, cell, text, heights.Wraps());
}

void PaintTitleCell(platform::CellCanvas& canvas, const PaintedCell& cell) {
    const auto& grdTitle = Device().grdTitle;
    const Text text = grdTitle.Cell(cell.Row, cell.Col);
    const Heights heights = Measure(grdTitle, cell.Col, text);
    FitTitleColumns();
    canvas.SetBackColor(TitleBackColour);
    canvas.SetForeColor(TitleTextColour);
    canvas.ClearCell();
    DrawCellText(canvas, grdTitle, cell, text, heights.Wraps());
}

} // namespace modPDAUI
