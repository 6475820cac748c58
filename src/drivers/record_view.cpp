// SPDX-License-Identifier: MIT
#include "src/drivers/record_view.h"

#include "src/drivers/downloads.h"
#include "src/drivers/inf_tables.h"
#include "src/drivers/record_editor.h"
#include "src/drivers/selection.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/table_lack.h"
#include "src/storage/volumes.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "src/view/navigation.h"
#include "src/view/platform/application.h"
#include "src/view/platform/platform.h"
#include "src/view/status_strip.h"

#include <algorithm>

namespace modQuorin {

using namespace modFileSystem;
using platform::Device;

namespace {

constexpr std::int32_t MarkColumn = 1;
const Text Mark = u"X";

/// Opens a download, which is created if it is missing, and returns what of its record can be stored. The form shows a
/// record that can't be stored like any other.
platform::RecordPlace OpenOrCreateDownload(const Text& file, const Text& header) {
    const TableLack lack = LookAtTable(file);
    if (lack == TableLack::File || lack == TableLack::Header)
        MakeTable(file, header);
    if (TableRowCount() != 0)
        FirstRow();
    else
        AddRow(-1);
    if (!Table.TableFile.valid)
        return platform::RecordPlace::NoFile;
    return TableRowCount() > 0 ? platform::RecordPlace::Stored : platform::RecordPlace::NoRecord;
}

bool IsListed(const Text& file) {
    const std::vector<Text>& files = Downloads.DownloadFiles;
    return std::find(files.begin(), files.end(), file) != files.end();
}

} // namespace

void OpenDownload(const Text& driver, Text& file) {
    if (driver.empty() || file.empty())
        return;
    modPDAUI::ShowBusy(true);
    if (!OpenInfTable(InfPath(driver))) {
        modPDAUI::ShowBusy(false);
        return;
    }
    const Text header = LoadInfFields();
    if (AnyFieldReceivesResults())
        modBluetooth::ArmLink();
    platform::OpenedRecord opened;
    opened.Driver = driver;
    opened.Listed = IsListed(file);
    opened.Owner = opened.Listed ? driver : Selection.DownloadOwner;
    file = GetDataPath(ApplicationName) + file;
    opened.Place = OpenOrCreateDownload(file, header);
    opened.File = Table.TableName;
    opened.Why = Table.TableFile.error;
    Screens.RecordReturnScreen = ScrDownloads;
    GotoScreen(ScrInfRecord);
    ShowRecordTitle(u"Download");
    modPDAUI::ShowBusy(false);
    Device().onlooker.RecordOpened(opened);
    modBluetooth::TellWhatWaits();
}

void ShowColumnChoices(const Text& driver) {
    auto& grdMain = Device().grdMain;
    Device().grdTitle.SetCell(0, 0, u"Show/Hide Columns");
    if (driver.empty())
        return;
    Inf.InfFields.clear();
    if (!OpenInfTable(InfPath(driver)))
        return;
    modPDAUI::ShowBusy(true);
    FirstRow();
    const std::int32_t count = TableRowCount();
    grdMain.SetRows(count);
    for (std::int32_t row = 0; row < count; ++row) {
        grdMain.SetCell(row, 0, GetField(u"FIELDNAME"));
        grdMain.SetCell(row, MarkColumn, GetField(u"VISIBLE") == u"1" ? Mark : Text());
        NextRow();
    }
    modPDAUI::RepaintGridsSoon();
    modPDAUI::ShowBusy(false);
}

void ToggleColumnChoice(std::int32_t, std::int32_t) {
    auto& grdMain = Device().grdMain;
    const bool marked = !grdMain.Cell(grdMain.Row(), MarkColumn).empty();
    grdMain.SetCell(grdMain.Row(), MarkColumn, marked ? Text() : Mark);
}

void SaveColumnChoices() {
    if (!Table.TableFile.valid)
        return;
    modPDAUI::ShowBusy(true);
    FirstRow();
    const std::int32_t count = TableRowCount();
    for (std::int32_t row = 0; row < count; ++row) {
        const Text flag = Device().grdMain.Cell(row, MarkColumn).empty() ? u"0" : u"1";
        if (flag != GetField(u"VISIBLE")) {
            SetField(u"VISIBLE", flag);
            SaveRow();
        }
        NextRow();
    }
    CloseTable();
    modPDAUI::ShowBusy(false);
}

} // namespace modQuorin
