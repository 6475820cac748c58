// SPDX-License-Identifier: MIT
#include "companion/taking_again.h"

#include "src/link/receive.h"
#include "src/view/screen_table.h"

namespace companion {

Text AgainRefusal(platform::Fate fate, bool isAsked) {
    if (fate == platform::Fate::Waiting)
        return u"this reading waits and comes by itself";
    if (isAsked)
        return u"a message box is open";
    const modQuorin::ScreenId screen = modQuorin::Screens.CurrentScreen;
    if (screen != modQuorin::ScrInfRecord && screen != modQuorin::ScrBluetoothDebug)
        return u"neither a record nor the trace is on the screen";
    return {};
}

bool AgainWaits() {
    return !modBluetooth::Receive.Again.empty();
}

} // namespace companion
