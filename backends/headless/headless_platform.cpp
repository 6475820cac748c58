// SPDX-License-Identifier: MIT
#include "backends/headless/headless_platform.h"

namespace backends::headless {

HeadlessPlatform::HeadlessPlatform(HostDevice& device, CommandSource& commands, Watcher& watcher)
    : HostBackEnd(device, static_cast<PollPump&>(*this), commands, watcher), HeadlessControlSet(focus, loop, watcher),
      record(RecordOf(controls)) {
    DesignControls(controls);
    boxes.Opening = [this] {
        if (grdMain.HandIsDown)
            tmrHoldEvent.SetEnabled(false);
        grdMain.HandIsDown = false; // the release goes to the box
    };
}

} // namespace backends::headless
