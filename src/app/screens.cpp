// SPDX-License-Identifier: MIT
#include "src/app/screens.h"

#include "src/app/commands.h"
#include "src/app/debug_screens.h"
#include "src/app/lists.h"
#include "src/app/preferences.h"
#include "src/drivers/downloads.h"
#include "src/drivers/installation.h"
#include "src/drivers/record_editor.h"
#include "src/drivers/record_view.h"
#include "src/drivers/registry.h"
#include "src/drivers/selection.h"
#include "src/view/menu_table.h"
#include "src/view/navigation.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"

namespace modQuorin {

namespace {

void FillDrivers() {
    ShowDriverList(u"Drivers");
}

void FillInstalledDrivers() {
    ShowDriverList(u"Installed Drivers");
}

void FillDownloads() {
    ShowDownloadList(Selection.SelectedDriver);
}

void FillDownload() {
    OpenDownload(Selection.SelectedDriver, Selection.SelectedDownload);
}

void FillTextFile() {
    platform::Device().grdTitle.SetCell(0, 0, u"View Text File");
}

void FillRecord() {
    ShowRecord();
    Screens.GridEditMode = true;
}

void FillColumns() {
    ShowColumnChoices(Selection.SelectedDriver);
}

void FillAddDriver() {
    ShowDriverPackages(u"Add Driver");
}

bool CancelInput() {
    modPDAUI::EndInput(true);
    return true;
}

bool LeaveDrivers() {
    GotoScreen(ScrMain);
    return true;
}

bool LeaveColumns() {
    SaveColumnChoices();
    return false;
}

void SelectStart(std::int32_t, std::int32_t) {
    MenuEvent(u"Start...");
}

void SelectOk(std::int32_t, std::int32_t) {
    MenuEvent(u"Ok");
}

void SelectOpen(std::int32_t, std::int32_t) {
    MenuEvent(u"Open");
}

void SelectCommandRow(std::int32_t row, std::int32_t col) {
    MenuEvent(platform::Device().grdMain.Cell(row, col));
}

/// A tap also chooses the row that was highlighted already: no change of the row has stored it.
void SelectListEntry(std::int32_t, std::int32_t) {
    StoreListChoice();
    GoBack();
}

void SelectDownloadCell(std::int32_t, std::int32_t) {
    auto& grdMain = platform::Device().grdMain;
    Text value = grdMain.Cell(grdMain.Row(), 1);
    modPDAUI::EditByPrompt(grdMain.Cell(grdMain.Row(), 0), modPDAUI::PromptKind::Text, value);
}

struct Shape {
    std::int32_t Rows, Cols, Percent, TitleRows, TitleCols;
    CellDrawing DrawStyle;
};

constexpr Shape TableShape = {1, 1, 100, 1, 1, CellDrawing::Table};
constexpr Shape ListShape = {1, 1, 100, 1, 1, CellDrawing::List};
constexpr Shape RecordShape = {1, 2, 50, 1, 2, CellDrawing::Table};

void Add(ScreenId& id, const char* name, const Shape& shape, MenuId menu, BackStep backMode, ScreenId backScreen,
         const ScreenBehaviour& behaviour) {
    AddScreen(id, {.BackMode = backMode,
                   .BackScreen = backScreen,
                   .GridRows = shape.Rows,
                   .GridCols = shape.Cols,
                   .ColumnPercent = shape.Percent,
                   .TitleRows = shape.TitleRows,
                   .TitleCols = shape.TitleCols,
                   .Menu = menu,
                   .DrawStyle = shape.DrawStyle,
                   .Behaviour = behaviour,
                   .Name = name});
}

} // namespace

// clang-format off: a row a screen
//  screen              name                   shape                        menu             Back                back to
//      fill                  before Back       select             row changed

void AddInputScreens() {
    Add(ScrInput, "ScrInput", TableShape, MenuInput, BackStep::ToPrevious, 0, {nullptr, CancelInput, nullptr, nullptr});
    Add(ScrFileSelect, "ScrFileSelect", {1, 1, 100, 2, 1, CellDrawing::Table}, MenuFileSelect, BackStep::ToPrevious, 0,
        {nullptr, nullptr, nullptr, nullptr});
    Add(ScrMessage, "ScrMessage", ListShape, MenuMessage, BackStep::ToPrevious, 0,
        {nullptr, nullptr, nullptr, nullptr});
}

void AddApplicationScreens() {
    Add(ScrMain, "ScrMain", {1, 1, 100, 0, 0, CellDrawing::Cell}, MenuMain, BackStep::EndsProgram, 0,
        {nullptr, nullptr, SelectStart, nullptr});
    Add(ScrDrivers, "ScrDrivers", ListShape, MenuOk, BackStep::ToScreen, ScrMain,
        {FillDrivers, LeaveDrivers, SelectOk, TakeDriverOfRow});
    Add(ScrInstalledDrivers, "ScrInstalledDrivers", ListShape, MenuDrivers, BackStep::ToScreen, ScrMain,
        {FillInstalledDrivers, nullptr, nullptr, TakeDriverOfRow});
    Add(ScrPreferences, "ScrPreferences", ListShape, MenuBackCommand, BackStep::ToPrevious, 0,
        {FillPreferences, LeavePreferences, SelectCommandRow, RememberPreferenceRow});
    Add(ScrList, "ScrList", ListShape, MenuBack, BackStep::ToPrevious, 0,
        {FillList, nullptr, SelectListEntry, StoreListChoice});
    Add(ScrDownloads, "ScrDownloads", ListShape, MenuDownloads, BackStep::ToScreen, ScrDrivers,
        {FillDownloads, nullptr, SelectOpen, TakeDownloadOfRow});
    Add(ScrDownload, "ScrDownload", {1, 2, 50, 2, 2, CellDrawing::Table}, MenuDownload, BackStep::ToScreen,
        ScrDownloads, {FillDownload, nullptr, SelectDownloadCell, nullptr});
    Add(ScrBluetoothDebug, "ScrBluetoothDebug", TableShape, MenuBack, BackStep::ToPrevious, 0,
        {FillBluetoothDebug, nullptr, nullptr, nullptr});
    Add(ScrFileDebug, "ScrFileDebug", TableShape, MenuBack, BackStep::ToScreen, ScrMain,
        {FillFileDebug, nullptr, SelectCommandRow, nullptr});
    Add(ScrTextFile, "ScrTextFile", ListShape, MenuBack, BackStep::ToPrevious, 0,
        {FillTextFile, nullptr, nullptr, nullptr});
    Add(ScrDriverProperties, "ScrDriverProperties", RecordShape, MenuSave, BackStep::ToScreen, ScrInstalledDrivers,
        {FillRecord, LeaveRecord, SelectRecordCell, nullptr});
    Add(ScrInfRecord, "ScrInfRecord", RecordShape, MenuRecord, BackStep::Nothing, 0,
        {FillRecord, LeaveRecord, SelectRecordCell, SkipHiddenRows});
    Add(ScrColumns, "ScrColumns", {1, 2, 80, 1, 1, CellDrawing::Table}, MenuBack, BackStep::ToPrevious, 0,
        {FillColumns, LeaveColumns, ToggleColumnChoice, nullptr});
    Add(ScrAddDriver, "ScrAddDriver", ListShape, MenuInstall, BackStep::ToPrevious, 0,
        {FillAddDriver, nullptr, nullptr, TakePackageOfRow});
}
// clang-format on

} // namespace modQuorin
