// SPDX-License-Identifier: MIT
#include "apps/quorin-console/reports.h"

#include "src/app/lists.h"
#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/drivers/selection.h"
#include "src/link/mailbox.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "src/view/prompt.h"
#include "src/view/screen_table.h"

#include <cstdio>

namespace console {

using backends::BackEnd;
using backends::Controls;
using backends::DrawnGrid;

namespace {

Json ScreenName(modQuorin::ScreenId id) {
    return id == 0 ? Json(nullptr) : Json(modQuorin::ScreenRow(id).Name);
}

Json BoxReport(const platform::Box& box) {
    Json report = Json::array();
    for (const float size : {box.Left, box.Top, box.Width, box.Height}) {
        const bool whole = size == static_cast<float>(static_cast<std::int64_t>(size));
        report.push_back(whole ? Json(static_cast<std::int64_t>(size)) : Json(size));
    }
    return report;
}

Json CellsReport(const DrawnGrid& grid) {
    Json cells = Json::array();
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
        Json line = Json::array();
        for (std::int32_t col = 0; col < grid.Cols(); ++col)
            line.push_back(Utf8(grid.Cell(row, col)));
        cells.push_back(line);
    }
    return cells;
}

/// Adds what is reported of both grids: cells, sizes and box.
void AddShape(Json& report, const DrawnGrid& grid) {
    report["cells"] = CellsReport(grid);
    report["widths"] = Json::array();
    for (std::int32_t col = 0; col < grid.Cols(); ++col)
        report["widths"].push_back(grid.ColWidth(col));
    report["heights"] = Json::array();
    for (std::int32_t row = 0; row < grid.Rows(); ++row)
        report["heights"].push_back(grid.RowHeight(row));
    report["box"] = BoxReport(grid.Bounds());
}

Json TitleReport(const Controls& form) {
    Json report = {{"visible", form.grdTitle.Visible()}};
    AddShape(report, form.grdTitle);
    return report;
}

Json GridReport(const Controls& form) {
    const DrawnGrid& grid = form.grdMain;
    Json report = {{"visible", grid.Visible()},
                   {"enabled", grid.Enabled()},
                   {"row", grid.Row()},
                   {"col", grid.Col()},
                   {"top", grid.TopRow()}};
    AddShape(report, grid);
    report["font"] = {Utf8(grid.FontName()), grid.FontSize()};
    return report;
}

Json MenuReport(const Controls& form, std::size_t menu) {
    const platform::MenuItem& title = *form.menuTitles[menu];
    Json items = Json::array();
    for (const platform::MenuItem* item : form.menuItems[menu]) {
        if (item->Visible())
            items.push_back(Utf8(item->Caption()));
    }
    return {{"caption", Utf8(title.Caption())},
            {"visible", title.Visible()},
            {"enabled", title.Enabled()},
            {"items", items}};
}

Json InputReport(const Controls& form) {
    if (form.dteInputField.Visible())
        return {{"kind", "date"},
                {"date", IsoDate(form.dteInputField.Date())},
                {"box", BoxReport(form.dteInputField.Bounds())}};
    if (form.txtInputField.Visible())
        return {{"kind", "text"},
                {"text", Utf8(form.txtInputField.Contents())},
                {"box", BoxReport(form.txtInputField.Bounds())},
                {"multiline", form.txtInputField.MultiLine()}};
    if (form.cboInputField.Visible()) {
        Json list = Json::array();
        for (const Text& item : form.cboInputField.Items())
            list.push_back(Utf8(item));
        return {{"kind", "combo"},
                {"text", Utf8(form.cboInputField.Contents())},
                {"box", BoxReport(form.cboInputField.Bounds())},
                {"list", list}};
    }
    if (form.cbotxtInputField.Visible())
        return {{"kind", "combotext"},
                {"text", Utf8(form.cbotxtInputField.Contents())},
                {"box", BoxReport(form.cbotxtInputField.Bounds())}};
    return nullptr;
}

} // namespace

std::string IsoDate(const platform::CalendarDate& date) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.Year, date.Month, date.Day);
    return text;
}

Json ScreenReport(const BackEnd& device) {
    const Controls& form = device.Seen();
    const auto* holder = device.focus.Holder();
    return {{"screen", ScreenName(modQuorin::Screens.CurrentScreen)},
            {"previous", ScreenName(modQuorin::Screens.PreviousScreen)},
            {"title", TitleReport(form)},
            {"grid", GridReport(form)},
            {"menus", Json::array({MenuReport(form, 0), MenuReport(form, 1)})},
            {"input", InputReport(form)},
            {"status", form.lblStatus.Visible() ? Json(Utf8(form.lblStatus.Caption())) : Json(nullptr)},
            {"focus", holder != nullptr ? Json(holder->Name) : Json(nullptr)},
            {"form", BoxReport(backends::PixelsOf(form.form))}};
}

Json StateReport(const BackEnd& device) {
    const auto& link = modBluetooth::Ports;
    const auto& receive = modBluetooth::Receive;
    const auto& table = modFileSystem::Table;
    const auto& display = modPDAUI::Display;
    return {{"Contract", 1}, // of docs/console.md
            {"SelectedDriver", Utf8(modQuorin::Selection.SelectedDriver)},
            {"SelectedDownload", Utf8(modQuorin::Selection.SelectedDownload)},
            {"SelectedPackage", Utf8(modQuorin::Selection.SelectedPackage)},
            {"ListKind", Utf8(modQuorin::Screens.ListKind)},
            {"LinkWanted", receive.LinkWanted},
            {"LinkOpen", link.LinkOpen},
            {"LinkState", static_cast<std::int16_t>(receive.LinkState)},
            {"ServerMode", link.ServerMode},
            {"LinkHeld", device.Seen().boxes.Piled()},
            {"CharactersWaiting", device.serial.WaitingCharacters()},
            {"BlobBuffer", Utf8(modBLob::Framing.BlobBuffer)},
            {"ConnectedID", Utf8(modBLob::Decoder.ConnectedID)},
            {"RecordDirty", table.RecordDirty},
            {"TableRowIndex", table.TableRowIndex},
            {"TableRowTotal", table.TableRowTotal},
            {"ColourOn", display.ColourOn},
            {"UiScale", display.UiScale},
            {"SoftKeyMenus", display.SoftKeyMenus},
            {"GridEditMode", modQuorin::Screens.GridEditMode},
            {"GridLocked", modPDAUI::Grids.GridLocked},
            {"PreferenceRow", modQuorin::Lists.PreferenceRow},
            {"RecordReturnScreen", ScreenName(modQuorin::Screens.RecordReturnScreen)},
            {"NamedLinkOpen", link.NamedLinkOpen},
            {"LinkPortName", Utf8(link.LinkPortName)},
            {"LastFailedPort", Utf8(link.LastFailedPort)},
            {"MailboxPath", Utf8(modBluetooth::Mailbox.MailboxPath)},
            {"RxText", Utf8(receive.RxText)},
            {"ReadyText", Utf8(receive.ReadyText)},
            {"BlobEndSeen", receive.BlobEndSeen},
            {"LastPollTime", receive.LastPollTime},
            {"BlobErrorCode", modBLob::Decoder.BlobErrorCode},
            {"BlobErrorText", Utf8(modBLob::Decoder.BlobErrorText)},
            {"SlotCount", modBLob::Decoder.SlotCount},
            {"TableFile", Utf8(table.TableFile.path + table.TableFile.name)},
            {"TableOpen", table.TableFile.valid},
            {"DriversFile", Utf8(modQuorin::Paths.DriversFile)},
            {"ControlFile", Utf8(modQuorin::Paths.ControlFile)},
            {"BestVolume", Utf8(modFileSystem::Storage.BestVolume)},
            {"EditRow", modPDAUI::Input.EditRow},
            {"EditCol", modPDAUI::Input.EditCol},
            {"PromptOpen", modPDAUI::Prompt.PromptOpen},
            {"PromptResult", Utf8(modPDAUI::Prompt.PromptResult)},
            {"RepaintPending", modPDAUI::Grids.RepaintPending}};
}

} // namespace console
