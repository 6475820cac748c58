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
    modPDAUI::DropInput();
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

/// The grids of a screen when it is shaped; by default a table of one column.
struct Shape {
    std::int32_t Rows = 1;      ///< of grdMain
    std::int32_t Cols = 1;      ///< of grdMain
    std::int32_t Percent = 100; ///< width of its first column in percent of the usable width
    std::int32_t TitleRows = 1;
    std::int32_t TitleCols = 1;
    CellDrawing DrawStyle = CellDrawing::Table;
};

constexpr Shape ListShape = {.DrawStyle = CellDrawing::List};
constexpr Shape RecordShape = {.Cols = 2, .Percent = 50, .TitleCols = 2};

struct Screen {
    const char* Name = "";
    Shape Grids = {};
    MenuId Menu = 0;
    BackStep Back = BackStep::ToPrevious;
    ScreenId BackTo = 0; ///< for BackStep::ToScreen
    ScreenBehaviour Does = {};
};

void Add(ScreenId& id, const Screen& screen) {
    AddScreen(id, {.BackMode = screen.Back,
                   .BackScreen = screen.BackTo,
                   .GridRows = screen.Grids.Rows,
                   .GridCols = screen.Grids.Cols,
                   .ColumnPercent = screen.Grids.Percent,
                   .TitleRows = screen.Grids.TitleRows,
                   .TitleCols = screen.Grids.TitleCols,
                   .Menu = screen.Menu,
                   .DrawStyle = screen.Grids.DrawStyle,
                   .Behaviour = screen.Does,
                   .Name = screen.Name});
}

} // namespace

// A row a screen. What a row does not name is as in Shape and Screen.

void AddInputScreens() {
    Add(ScrInput, {.Name = "ScrInput", .Menu = MenuInput, .Does = {.BeforeBack = CancelInput}});
    Add(ScrFileSelect, {.Name = "ScrFileSelect", .Grids = {.TitleRows = 2}, .Menu = MenuFileSelect});
    Add(ScrMessage, {.Name = "ScrMessage", .Grids = ListShape, .Menu = MenuMessage});
}

void AddApplicationScreens() {
    Add(ScrMain, {.Name = "ScrMain",
                  .Grids = {.TitleRows = 0, .TitleCols = 0, .DrawStyle = CellDrawing::Cell},
                  .Menu = MenuMain,
                  .Back = BackStep::EndsProgram,
                  .Does = {.Select = SelectStart}});
    Add(ScrDrivers,
        {.Name = "ScrDrivers",
         .Grids = ListShape,
         .Menu = MenuOk,
         .Back = BackStep::ToScreen,
         .BackTo = ScrMain,
         .Does = {.Fill = FillDrivers, .BeforeBack = LeaveDrivers, .Select = SelectOk, .RowChanged = TakeDriverOfRow}});
    Add(ScrInstalledDrivers, {.Name = "ScrInstalledDrivers",
                              .Grids = ListShape,
                              .Menu = MenuDrivers,
                              .Back = BackStep::ToScreen,
                              .BackTo = ScrMain,
                              .Does = {.Fill = FillInstalledDrivers, .RowChanged = TakeDriverOfRow}});
    Add(ScrPreferences, {.Name = "ScrPreferences",
                         .Grids = ListShape,
                         .Menu = MenuBackCommand,
                         .Does = {.Fill = FillPreferences,
                                  .BeforeBack = LeavePreferences,
                                  .Select = SelectCommandRow,
                                  .RowChanged = RememberPreferenceRow}});
    Add(ScrList, {.Name = "ScrList",
                  .Grids = ListShape,
                  .Menu = MenuBack,
                  .Does = {.Fill = FillList, .Select = SelectListEntry, .RowChanged = StoreListChoice}});
    Add(ScrDownloads, {.Name = "ScrDownloads",
                       .Grids = ListShape,
                       .Menu = MenuDownloads,
                       .Back = BackStep::ToScreen,
                       .BackTo = ScrDrivers,
                       .Does = {.Fill = FillDownloads, .Select = SelectOpen, .RowChanged = TakeDownloadOfRow}});
    Add(ScrDownload, {.Name = "ScrDownload",
                      .Grids = {.Cols = 2, .Percent = 50, .TitleRows = 2, .TitleCols = 2},
                      .Menu = MenuDownload,
                      .Back = BackStep::ToScreen,
                      .BackTo = ScrDownloads,
                      .Does = {.Fill = FillDownload, .Select = SelectDownloadCell}});
    Add(ScrBluetoothDebug, {.Name = "ScrBluetoothDebug", .Menu = MenuBack, .Does = {.Fill = FillBluetoothDebug}});
    Add(ScrFileDebug, {.Name = "ScrFileDebug",
                       .Menu = MenuBack,
                       .Back = BackStep::ToScreen,
                       .BackTo = ScrMain,
                       .Does = {.Fill = FillFileDebug, .Select = SelectCommandRow}});
    Add(ScrTextFile, {.Name = "ScrTextFile", .Grids = ListShape, .Menu = MenuBack, .Does = {.Fill = FillTextFile}});
    Add(ScrDriverProperties, {.Name = "ScrDriverProperties",
                              .Grids = RecordShape,
                              .Menu = MenuSave,
                              .Back = BackStep::ToScreen,
                              .BackTo = ScrInstalledDrivers,
                              .Does = {.Fill = FillRecord, .BeforeBack = LeaveRecord, .Select = SelectRecordCell}});
    Add(ScrInfRecord,
        {.Name = "ScrInfRecord",
         .Grids = RecordShape,
         .Menu = MenuRecord,
         .Back = BackStep::Nothing,
         .Does = {
             .Fill = FillRecord, .BeforeBack = LeaveRecord, .Select = SelectRecordCell, .RowChanged = SkipHiddenRows}});
    Add(ScrColumns, {.Name = "ScrColumns",
                     .Grids = {.Cols = 2, .Percent = 80},
                     .Menu = MenuBack,
                     .Does = {.Fill = FillColumns, .BeforeBack = LeaveColumns, .Select = ToggleColumnChoice}});
    Add(ScrAddDriver, {.Name = "ScrAddDriver",
                       .Grids = ListShape,
                       .Menu = MenuInstall,
                       .Does = {.Fill = FillAddDriver, .RowChanged = TakePackageOfRow}});
}

} // namespace modQuorin
