// SPDX-License-Identifier: MIT
#include "src/drivers/registry.h"

#include "src/drivers/downloads.h"
#include "src/drivers/inf_tables.h"
#include "src/drivers/record_editor.h"
#include "src/drivers/selection.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/table_lack.h"
#include "src/storage/volumes.h"
#include "src/view/grids.h"
#include "src/view/navigation.h"
#include "src/view/platform/platform.h"
#include "src/view/questions.h"

#include <algorithm>

namespace modQuorin {

using namespace modFileSystem;
using platform::Device;

namespace {

const Text DriversHeader = u"NAME|INFFILE";

void OpenDrivers() {
    OpenTable(Paths.DriversFile, u"r", DataType, DataCreator);
}

void ShowDriverRow() {
    GotoScreen(ScrDriverProperties);
    Device().grdTitle.SetCell(0, 0, u"Edit Driver");
}

} // namespace

void CreateBlankDriversFile() {
    CreateTable(Paths.DriversFile, DriversHeader, u"w", DataType, DataCreator);
    CloseTable();
    CreateTable(Paths.ControlFile, ControlHeader, u"r", DataType, DataCreator);
    CloseTable();
}

void LoadDriverList() {
    Registry.DriverNames.clear();
    const TableLack lack = LookAtTable(Paths.DriversFile);
    if (lack == TableLack::File) {
        CreateBlankDriversFile();
        OpenDrivers();
    } else if (lack == TableLack::Header) { // writing stopped before the header: without it the first driver would
                                            // become the header
        MakeTable(Paths.DriversFile, DriversHeader);
    }
    if (!Table.TableFile.valid)
        return;
    const std::int32_t count = TableRowCount();
    if (count > 0)
        FirstRow();
    for (std::int32_t i = 0; i < count; ++i) {
        Registry.DriverNames.push_back(GetField(u"NAME"));
        NextRow();
    }
    CloseTable();
}

void ShowDriverList(const Text& title) {
    LoadDriverList();
    Device().grdTitle.SetCell(0, 0, title);
    modPDAUI::ShowList(Registry.DriverNames);
    Selection.SelectedDriver = Device().grdMain.Cell(Device().grdMain.Row(), 0);
    modPDAUI::RepaintGridsSoon();
}

void EditDriver(const Text& name) {
    if (name.empty())
        return;
    OpenDrivers();
    FindRow(NameSelection(name));
    ShowDriverRow();
}

void NewDriver() {
    OpenDrivers();
    if (!AddRow(-1))
        return;
    SetField(u"NAME", u"Untitled Driver");
    SetField(u"INFFILE", u"untitled.txt");
    SaveRow();
    ShowDriverRow();
}

bool TakeUpDriver(const Text& name, const Text& infFile) {
    const TableLack lack = LookAtTable(Paths.DriversFile);
    if (lack == TableLack::File || lack == TableLack::Header)
        MakeTable(Paths.DriversFile, DriversHeader);
    const Text line = name + u"|" + infFile;
    const bool isAdded = InsertFileLine(Table.TableFile, std::max(TableRowCount(), 0) + 1, InsertPosition::After, line);
    CloseTable();
    return isAdded;
}

void DeleteDriver(Text name) {
    if (name.empty() || !modPDAUI::AskTwice(u"Delete Driver?"))
        return;
    const Text folder = GetDataPath(u"");
    OpenDrivers();
    if (!FindRow(NameSelection(name)))
        return;
    DeleteFile(folder + GetField(u"INFFILE"));
    DeleteRow();
    GotoScreen(Screens.CurrentScreen);
}

void SaveDriverProperties() {
    // Read before the save: if the save renames the driver, it is looked up under its old name, which no longer exists.
    Selection.SelectedDriver = GetField(u"NAME");
    SaveRecordFromGrid();
    OpenInfEditor(Selection.SelectedDriver);
}

} // namespace modQuorin
