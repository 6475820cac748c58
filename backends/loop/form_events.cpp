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

void RaiseKeyboard(const SystemObject& system, const modPDAUI::KeyboardState& keyboard) {
    const bool coversAll = keyboard.State != 0 && static_cast<float>(keyboard.Height) >= system.WorkArea().Height;
    const modPDAUI::KeyboardState reported = coversAll ? modPDAUI::KeyboardState() : keyboard;
    frmQuorin::mykb_statechanged(reported.State, reported.Left, reported.Top, reported.Width, reported.Height);
}

} // namespace backends
