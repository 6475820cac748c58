// SPDX-License-Identifier: MIT
#include "companion/form_state.h"

#include "src/drivers/inf_tables.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/view/inf_fields.h"
#include "src/view/screen_table.h"

namespace companion {

using modQuorin::Screens;

bool RecordIsOpen() {
    const modQuorin::ScreenId screen =
        Screens.CurrentScreen == modQuorin::ScrInput ? Screens.PreviousScreen : Screens.CurrentScreen;
    return screen != 0 && screen == modQuorin::ScrInfRecord;
}

bool IsOpenDownload(const Text& file) {
    const Text& path = modQuorin::Selection.SelectedDownload;
    return !file.empty() && file == path.substr(path.rfind(u'\\') + 1); // npos + 1 is 0
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
