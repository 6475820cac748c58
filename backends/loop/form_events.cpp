// SPDX-License-Identifier: MIT
#include "backends/loop/form_events.h"

namespace backends {

void RaiseItemClick(std::int32_t menu, std::int32_t item) {
    menu == 1 ? frmQuorin::mnuButtonO1_Click(item) : frmQuorin::mnuButtonO2_Click(item);
}

void RaiseTitleClick(std::int32_t menu) {
    menu == 1 ? frmQuorin::mnuButton1_Click() : frmQuorin::mnuButton2_Click();
}

void RaiseCloseRequest() {
    bool cancel = false;
    frmQuorin::Form_QueryUnload(cancel, frmQuorin::UnloadMode::TitleBar);
}

void RaiseKeyboard(const SystemObject& system, std::int16_t state, std::int32_t left, std::int32_t top,
                   std::int32_t width, std::int32_t height) {
    if (state != 0 && static_cast<float>(height) >= system.WorkArea().Height)
        frmQuorin::mykb_statechanged(0, 0, 0, 0, 0);
    else
        frmQuorin::mykb_statechanged(state, left, top, width, height);
}

} // namespace backends
