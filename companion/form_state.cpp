// SPDX-License-Identifier: MIT
#include "companion/form_state.h"

#include "src/drivers/inf_tables.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/file_slots.h"
#include "src/view/inf_fields.h"
#include "src/view/screen_table.h"

namespace companion {

using modQuorin::Screens;

bool RecordIsOpen() {
    const modQuorin::ScreenId screen =
        Screens.CurrentScreen == modQuorin::ScrInput ? Screens.PreviousScreen : Screens.CurrentScreen;
    return screen != 0 && screen == modQuorin::ScrInfRecord;
}

std::vector<Text> FieldNames() {
    std::vector<Text> names;
    for (const modQuorin::InfField& field : modQuorin::Inf.InfFields)
        names.push_back(field.FieldName);
    return names;
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
