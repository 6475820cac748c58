// SPDX-License-Identifier: MIT
#include "src/app/commands.h"

#include "src/app/debug_screens.h"
#include "src/app/preferences.h"
#include "src/drivers/downloads.h"
#include "src/drivers/inf_tables.h"
#include "src/drivers/installation.h"
#include "src/drivers/record_editor.h"
#include "src/drivers/record_view.h"
#include "src/drivers/registry.h"
#include "src/drivers/selection.h"
#include "src/link/receive.h"
#include "src/storage/line_files.h"
#include "src/storage/volumes.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/menu_table.h"
#include "src/view/navigation.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"
#include "src/view/questions.h"

namespace modQuorin {

using platform::Device;

namespace {

void GotoList(const char16_t* kind) {
    Screens.ListKind = kind;
    GotoScreen(ScrList);
}

void ListDataFolder() {
    Screens.ListKind = u"DIR";
    modFileSystem::ListFiles(modFileSystem::GetDataPath(u""), u"", u"QVRN");
    GotoScreen(ScrList);
}

void Zoom() {
    ZoomGridFont();
    SaveFontSize();
}

/// A command, the screen that it belongs to, and what it does.
struct Command {
    const char16_t* Name;   ///< in upper case
    const ScreenId* Screen; ///< null: on any screen
    void (*Run)();
    bool OnRecords = false; ///< acts on the record on the screen
};

constexpr bool OnRecords = true;

// clang-format off: a row a command, the first that fits runs
const Command Commands[] = {
    {u"SELECT STORAGE VOLUME...", nullptr, [] { GotoList(u"STORAGEVOLUME"); }},
    {u"ZOOM", nullptr, Zoom},
    {u"TEST LIST", nullptr, [] { GotoList(u"TESTLIST"); }},
    {u"DEBUG", &ScrFileDebug, FileApiCheck},
    {u"DEBUG", nullptr, StringToolsCheck},
    {u"BLUETOOTH DEBUG...", nullptr, [] { GotoScreen(ScrBluetoothDebug); }},
    {u"FILE DEBUG...", nullptr, [] { GotoScreen(ScrFileDebug); }},
    {u"DIR...", nullptr, ListDataFolder},
    {u"SAVE SAMPLE TEXT FILE", nullptr, SaveSampleFile},
    {u"LOAD SAMPLE TEXT FILE", nullptr, [] { LoadSampleFile(u"sample.txt"); }},
    {u"ENTER CUSTOM SERIAL ID...", nullptr, EnterSerialId},
    {u"FONTS...", nullptr, [] { GotoList(u"FONT"); }},
    {u"START...", nullptr, [] { GotoScreen(ScrDrivers); }},
    {u"PREFERENCES...", nullptr, [] { GotoScreen(ScrPreferences); }},
    {u"INF EDITOR...", nullptr, [] { GotoScreen(ScrInstalledDrivers); }},
    {u"DRIVER PROPERTIES...", nullptr, [] { GotoScreen(ScrInstalledDrivers); }},
    {u"RENAME", &ScrDownloads, [] { RenameDownload(Selection.SelectedDriver, Selection.SelectedDownload); }},
    {u"EDIT", &ScrInstalledDrivers, [] { EditDriver(Selection.SelectedDriver); }},
    {u"SAVE", &ScrDriverProperties, SaveDriverProperties},
    {u"BACK", nullptr, GoBack},
    {u"OK", &ScrDrivers, [] { GotoScreen(ScrDownloads); }},
    {u"OK", &ScrInput, modPDAUI::AcceptInput},
    {u"OPEN", &ScrDownloads, [] { OpenDownload(Selection.SelectedDriver, Selection.SelectedDownload); }},
    {u"BLUETOOTH SERIAL SETUP...", nullptr, [] { GotoList(u"COMMPORT"); }},
    {u"NEXT RECORD", nullptr, [] { RecordCommand(u"NEXT"); }, OnRecords},
    {u"PREVIOUS RECORD", nullptr, [] { RecordCommand(u"PREV"); }, OnRecords},
    {u"FIRST RECORD", nullptr, [] { RecordCommand(u"FIRST"); }, OnRecords},
    {u"LAST RECORD", nullptr, [] { RecordCommand(u"LAST"); }, OnRecords},
    {u"NEW RECORD", nullptr, [] { RecordCommand(u"NEW"); }, OnRecords},
    {u"INSERT RECORD", nullptr, [] { RecordCommand(u"INSERT"); }, OnRecords},
    {u"DELETE RECORD", nullptr, [] { RecordCommand(u"DELETE"); }, OnRecords},
    {u"NEW", &ScrInstalledDrivers, NewDriver},
    {u"NEW", &ScrDownloads, [] { NewDownload(Selection.SelectedDriver); }},
    {u"DELETE", &ScrInstalledDrivers, [] { DeleteDriver(Selection.SelectedDriver); }},
    {u"DELETE", &ScrDownloads, [] { DeleteDownload(Selection.SelectedDriver, Selection.SelectedDownload); }},
    {u"TOGGLE COLOUR: ON", nullptr, ToggleColour},
    {u"TOGGLE COLOUR: OFF", nullptr, ToggleColour},
    {u"SHOW/HIDE COLUMNS...", nullptr, [] { GotoScreen(ScrColumns); }},
    {u"ADD DRIVER...", nullptr, [] { GotoScreen(ScrAddDriver); }},
    {u"INSTALL...", nullptr, InstallDriver},
};
// clang-format on

bool IsOnItsScreen(const Command& command) {
    return command.Screen == nullptr || *command.Screen == Screens.CurrentScreen;
}

/// True if the current screen offers a command. A menu runs a record command on any screen, but only record screens
/// offer it.
bool HasPlace(const Command& command) {
    return IsOnItsScreen(command) && (!command.OnRecords || IsRecordScreen(Screens.CurrentScreen));
}

struct CommandFound {
    const Command* Row = nullptr; ///< the first of that name that `fits` accepts
    bool Known = false;           ///< there is one of that name, perhaps on another screen
};

CommandFound FindCommand(const Text& name, bool (*fits)(const Command&)) {
    CommandFound found;
    for (const Command& command : Commands) {
        if (name != command.Name)
            continue;
        found.Known = true;
        if (found.Row == nullptr && fits(command))
            found.Row = &command;
    }
    return found;
}

} // namespace

void MenuEvent(const Text& text) {
    const CommandFound found = FindCommand(modStringTools::UpperCase(text), IsOnItsScreen);
    if (found.Row != nullptr)
        found.Row->Run();
    else if (!found.Known)
        modPDAUI::Tell(u"MenuEvent: ERROR Menu does not exist: " + text);
}

Text CommandRefusal(const Text& text) {
    const Text name = modStringTools::UpperCase(text);
    if (Screens.CurrentScreen == ScrInput && name != u"OK" && name != u"BACK")
        return u"a prompt is open, only Ok and Back are possible";
    const CommandFound found = FindCommand(name, HasPlace);
    return found.Known && found.Row == nullptr ? u"is not available on this screen" : u"";
}

void MenuClick(std::int32_t menu, std::int32_t index) {
    const MenuDef& row = MenuRow(ScreenRow(Screens.CurrentScreen).Menu);
    if (index < 0 || index > platform::MenuItemCount)
        platform::RuntimeFailure(u"A menu has no entry " + modStringTools::NumberText(index));
    const auto i = static_cast<std::size_t>(index);
    const EntryMarker marker = menu == 1 ? row.Marker1[i] : row.Marker2[i];
    const Text text = menu == 1 ? row.Text1[i] : row.Text2[i];
    if (marker == EntryMarker::Command)
        MenuEvent(text);
    else if (marker == EntryMarker::Back)
        GoBack();
}

void MenuTitleClick(std::int32_t menu) {
    if (!modPDAUI::Display.SoftKeyMenus)
        return; // the platform opens the list of items
    auto& device = Device();
    const Text title = menu == 1 ? device.mnuButton1.Caption() : device.mnuButton2.Caption();
    const Text item = menu == 1 ? device.mnuButtonO1[0]->Caption() : device.mnuButtonO2[0]->Caption();
    // For the second menu too, the item checked is that of the first menu.
    if (item == title || device.mnuButtonO1[0]->Caption().empty())
        MenuClick(menu, 0);
}

void SelectAction(std::int32_t row, std::int32_t col) {
    if (const auto select = ScreenRow(Screens.CurrentScreen).Behaviour.Select)
        select(row, col);
}

void SelectCurrentRow() {
    if (Device().lstHoldMenu.Visible() || modPDAUI::Grids.GridLocked)
        return;
    modPDAUI::ScrollRowIntoView();
    SelectAction(Device().grdMain.Row(), Device().grdMain.Col());
}

void GoBack() {
    modBluetooth::Receive.LinkWanted = false;
    const ScreenDef& screen = ScreenRow(Screens.CurrentScreen);
    if (screen.Behaviour.BeforeBack != nullptr && screen.Behaviour.BeforeBack())
        return;
    switch (screen.BackMode) {
    case BackStep::ToScreen:
        GotoScreen(screen.BackScreen);
        break;
    case BackStep::EndsProgram:
        Device().runTime.EndProgram();
        break;
    case BackStep::ToPrevious:
        GotoScreen(Screens.PreviousScreen);
        break;
    default:
        break;
    }
}

} // namespace modQuorin
