// SPDX-License-Identifier: MIT
#include "companion/form_state.h"

#include "src/drivers/downloads.h"
#include "src/drivers/inf_tables.h"
#include "src/drivers/record_editor.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/view/inf_fields.h"
#include "src/view/platform/platform.h"
#include "src/view/screen_table.h"

#include <algorithm>

namespace companion {

using modQuorin::Screens;

namespace {

modQuorin::ScreenId ScreenOrUnderPrompt() {
    return Screens.CurrentScreen == modQuorin::ScrInput ? Screens.PreviousScreen : Screens.CurrentScreen;
}

/// Returns the alias that the list of downloads has for a file; empty if it has none.
Text ListedAlias(const Text& file) {
    const auto& files = modQuorin::Downloads.DownloadFiles;
    const auto listed = static_cast<std::size_t>(std::find(files.begin(), files.end(), file) - files.begin());
    const auto& aliases = modQuorin::Downloads.DownloadAliases;
    return listed < aliases.size() ? aliases[listed] : Text();
}

} // namespace

bool RecordIsOpen() {
    const modQuorin::ScreenId screen = ScreenOrUnderPrompt();
    return screen != 0 && screen == modQuorin::ScrInfRecord;
}

std::vector<Text> FieldNames() {
    std::vector<Text> names;
    for (const modQuorin::InfField& field : modQuorin::Inf.InfFields)
        names.push_back(field.FieldName);
    return names;
}

bool IsStartScreen() {
    return Screens.CurrentScreen != 0 && Screens.CurrentScreen == modQuorin::ScrMain;
}

bool DownloadsAreListed() {
    return ScreenOrUnderPrompt() == modQuorin::ScrDownloads && modQuorin::ScrDownloads != 0;
}

bool AnyDownloadIsListed() {
    return DownloadsAreListed() && !modQuorin::Downloads.DownloadFiles.empty();
}

std::optional<std::int32_t> NextEditedRow(std::int32_t row, std::int32_t step) {
    if (!modQuorin::IsRecordScreen(Screens.CurrentScreen))
        return std::nullopt;
    const auto& grdMain = platform::Device().grdMain;
    for (row += step; row >= 0 && row < grdMain.Rows(); row += step)
        if (grdMain.RowHeight(row) > 0 && modQuorin::IsEditedInPlace(row))
            return row;
    return std::nullopt;
}

bool ListStoresNothing() {
    const modQuorin::ScreenId screen = Screens.CurrentScreen;
    return screen != 0 && screen != modQuorin::ScrList &&
           modQuorin::ScreenRow(screen).DrawStyle == modQuorin::CellDrawing::List;
}

Text WindowTitle() {
    if (!RecordIsOpen() || modQuorin::Inf.InfFields.empty())
        return u"Quorin";
    const Text file = modFileSystem::BareName(modQuorin::Selection.SelectedDownload);
    const Text alias = ListedAlias(file);
    const Text name = file.substr(0, file.rfind(u'.'));
    using modStringTools::NumberText;
    return name + (alias.empty() ? u"" : u" (" + alias + u")") + u" · record " +
           NumberText(modFileSystem::Table.TableRowIndex) + u" of " + NumberText(modFileSystem::Table.TableRowTotal) +
           u" · " + modQuorin::Selection.SelectedDriver;
}

std::optional<CurrentDownload> DownloadOfNow() {
    const bool isOpen = RecordIsOpen() && IsOpenDownload(modFileSystem::Table.TableName);
    const bool isListed = DownloadsAreListed() && AnyDownloadIsListed();
    if (!isOpen && !isListed)
        return std::nullopt;
    const Text file = modFileSystem::BareName(modQuorin::Selection.SelectedDownload);
    return CurrentDownload{file, modQuorin::Selection.DownloadOwner, ListedAlias(file)};
}

bool IsOpenDownload(const Text& file) {
    return !file.empty() && file == modFileSystem::BareName(modQuorin::Selection.SelectedDownload);
}

bool LinkWasTakenDown() {
    return Screens.CurrentScreen == modQuorin::ScrInfRecord && !modBluetooth::Receive.LinkWanted &&
           modQuorin::AnyFieldReceivesResults();
}

bool LinkIsUpInTheEditor() {
    return Screens.CurrentScreen == modQuorin::ScrInfRecord && modQuorin::Inf.InfFields.empty() &&
           modBluetooth::Receive.LinkWanted && modBluetooth::Ports.LinkOpen;
}

} // namespace companion
