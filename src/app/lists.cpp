// SPDX-License-Identifier: MIT
#include "src/app/lists.h"

#include "src/drivers/downloads.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/grids.h"
#include "src/view/platform/application.h"
#include "src/view/platform/platform.h"
#include "src/view/screen_table.h"

namespace modQuorin {

using platform::Device;

namespace {

constexpr std::int32_t TestRows = 10;
constexpr std::int32_t MostFonts = 1000;

void SetTitle(const Text& title) {
    Device().grdTitle.SetCell(0, 0, title);
}

/// Shows the entries and makes the stored one the current row.
void ShowChoices(const std::vector<Text>& entries, const Text& stored) {
    modPDAUI::ShowList(entries);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i] == stored)
            Device().grdMain.SetRow(static_cast<std::int32_t>(i));
    }
    modPDAUI::RepaintGridsSoon();
}

void FillVolumeList() {
    modFileSystem::EnumVolumesAnew(); // a card may have been inserted or removed
    const Text stored = GetSetting(VolumeKey, modFileSystem::Storage.BestVolume);
    SetTitle(u"Select Volume");
    ShowChoices(modFileSystem::Storage.VolumeList, stored);
}

void FillTestList() {
    modPDAUI::Grids.GridLocked = true;
    const Text stored = GetSetting(u"DummyTest", u"");
    SetTitle(u"Dummy Test List");
    std::vector<Text> rows;
    for (std::int32_t i = 1; i <= TestRows; ++i)
        rows.push_back(u"This is list item number " + modStringTools::NumberText(i) + u" and is long");
    ShowChoices(rows, stored);
}

/// Returns the platform's fonts in its order, each run of equal names once, a thousand at most.
std::vector<Text> FontNames() {
    auto& fonts = Device().fontServer;
    std::vector<Text> names;
    for (Text name = fonts.FirstFontName(); !name.empty() && names.size() < MostFonts; name = fonts.NextFontName()) {
        if (names.empty() || name != names.back())
            names.push_back(name);
    }
    return names;
}

void FillFontList() {
    const Text stored = GetSetting(u"Font", u"");
    SetTitle(u"Available Fonts");
    ShowChoices(FontNames(), stored);
}

void FillPortList() {
    const Text stored = GetSetting(u"ComPort", u"");
    modBluetooth::ListPorts();
    SetTitle(u"Com Port");
    ShowChoices(modBluetooth::Ports.PortList, stored);
}

void FillFileList() {
    SetTitle(u"File List");
    modPDAUI::ShowList(modFileSystem::Storage.FileList);
    modPDAUI::RepaintGridsSoon();
}

struct KindOfList {
    const char16_t* Kind = u"";
    const char16_t* Key = nullptr; ///< the setting that stores the choice; null if none is stored
    void (*Fill)() = nullptr;
};

constexpr KindOfList Kinds[] = {
    {.Kind = u"STORAGEVOLUME", .Key = VolumeKey, .Fill = FillVolumeList},
    {.Kind = u"TESTLIST", .Key = u"DummyTest", .Fill = FillTestList},
    {.Kind = u"FONT", .Key = u"Font", .Fill = FillFontList},
    {.Kind = u"COMMPORT", .Key = u"ComPort", .Fill = FillPortList},
    {.Kind = u"DIR", .Fill = FillFileList},
};

const KindOfList* CurrentKind() {
    for (const KindOfList& kind : Kinds) {
        if (Screens.ListKind == kind.Kind)
            return &kind;
    }
    return nullptr;
}

Text CurrentRowText() {
    return Device().grdMain.Cell(Device().grdMain.Row(), 0);
}

/// Makes the first row with a height current, looking from row `from` in steps of 1 or -1. Does nothing if there is
/// none.
void TakeFirstShownRow(std::int32_t from, std::int32_t step) {
    auto& grdMain = Device().grdMain;
    for (std::int32_t row = from; row >= 0 && row < grdMain.Rows(); row += step) {
        if (grdMain.RowHeight(row) >= 1) {
            grdMain.SetRow(row);
            return;
        }
    }
}

} // namespace

void FillList() {
    if (const KindOfList* kind = CurrentKind())
        kind->Fill();
}

void RowChanged(std::int32_t screen) {
    if (const auto changed = ScreenRow(screen).Behaviour.RowChanged)
        changed();
}

void StoreListChoice() {
    const KindOfList* kind = CurrentKind();
    const Text choice = CurrentRowText();
    if (kind != nullptr && kind->Key != nullptr && !choice.empty())
        SaveSetting(kind->Key, choice);
}

void RememberPreferenceRow() {
    Lists.PreferenceRow = Device().grdMain.Row();
}

void TakeDriverOfRow() {
    Selection.SelectedDriver = CurrentRowText();
}

void TakeDownloadOfRow() {
    const auto row = static_cast<std::size_t>(Device().grdMain.Row());
    if (row < Downloads.DownloadFiles.size())
        Selection.SelectedDownload = Downloads.DownloadFiles[row];
}

void TakePackageOfRow() {
    Selection.SelectedPackage = CurrentRowText();
}

void SkipHiddenRows() {
    auto& grdMain = Device().grdMain;
    const std::int32_t row = grdMain.Row();
    const std::int32_t last = grdMain.Rows() - 1;
    if (grdMain.RowHeight(row) > 0) {
        modPDAUI::Grids.LastVisibleRow = row;
    } else if (row > modPDAUI::Grids.LastVisibleRow) {
        // Each change of the row calls this again, so one step at a time is enough.
        if (row == last)
            TakeFirstShownRow(last, -1);
        else
            grdMain.SetRow(row + 1);
    } else {
        if (row == 0)
            TakeFirstShownRow(1, 1);
        else
            grdMain.SetRow(row - 1);
    }
}

} // namespace modQuorin
