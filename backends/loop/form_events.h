// SPDX-License-Identifier: MIT
// The events of the form that every back-end raises alike.
#pragma once

#include "backends/loop/services.h"
#include "src/app/form.h"

namespace backends {

/// Item 1 to 5, or the caption, of soft menu 1 or 2.
void RaiseItemClick(std::int32_t menu, std::int32_t item);
void RaiseTitleClick(std::int32_t menu);
/// The form is asked to close by its frame.
void RaiseCloseRequest();

/// The soft keyboard has come, gone, or another place. One that leaves nothing of the form is taken as none.
void RaiseKeyboard(const SystemObject& system, std::int16_t state, std::int32_t left, std::int32_t top,
                   std::int32_t width, std::int32_t height);

/// What a back-end's controls raise. They go by the form's names in each back-end.
template <class BackEndControls>
void WireEvents(BackEndControls& of, Watcher& watcher) {
    of.grdMain.Follower = &of.grdTitle;
    of.grdTitle.GotFocus = frmQuorin::grdTitle_GotFocus;
    of.lstHoldMenu.LostFocus = frmQuorin::lstHoldMenu_LostFocus;
    of.txtInputField.GotFocus = frmQuorin::txtInputField_GotFocus;
    of.txtInputField.LostFocus = frmQuorin::txtInputField_LostFocus;
    of.txtInputField.Change = frmQuorin::txtInputField_Change;
    of.cboInputField.GotFocus = frmQuorin::cboInputField_GotFocus;
    of.cboInputField.LostFocus = frmQuorin::cboInputField_LostFocus;
    of.lblStatus.Painted = [&of, &watcher] { watcher.StatusShown(of.lblStatus.Caption()); };
    of.lblStatus.Hidden = [&watcher] { watcher.StatusHidden(); };
}

} // namespace backends
