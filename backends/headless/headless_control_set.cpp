// SPDX-License-Identifier: MIT
#include "backends/headless/headless_control_set.h"

#include "backends/loop/form_events.h"

namespace backends::headless {

HeadlessControlSet::HeadlessControlSet(Focus& focus, EventLoop& loop, Watcher& watcher, FontServer* otherFonts,
                                       float barWidth)
    : grdTitle(focus, "grdTitle"), grdMain(focus, "grdMain"), txtInputField(focus, "txtInputField"),
      cboInputField(focus, "cboInputField"), cbotxtInputField(focus, "cbotxtInputField"),
      dteInputField(focus, "dteInputField"), lstHoldMenu(focus, "lstHoldMenu"), lblStatus(focus, "lblStatus"),
      scrollBar(barWidth), boxes(loop, watcher), controls{
                                                     .form = form,
                                                     .grdTitle = grdTitle,
                                                     .grdMain = grdMain,
                                                     .txtInputField = txtInputField,
                                                     .cboInputField = cboInputField,
                                                     .cbotxtInputField = cbotxtInputField,
                                                     .dteInputField = dteInputField,
                                                     .lstHoldMenu = lstHoldMenu,
                                                     .lblStatus = lblStatus,
                                                     .scrollBar = scrollBar,
                                                     .menuTitles = {&menuTitles[0], &menuTitles[1]},
                                                     .menuItems = {Pointers(menuItems[0]), Pointers(menuItems[1])},
                                                     .fonts = otherFonts != nullptr ? *otherFonts : fonts,
                                                     .boxes = boxes,
                                                 } {
    loop.Listen(grdTitle);
    loop.Listen(grdMain);
    WireEvents(*this, watcher);
}

} // namespace backends::headless
