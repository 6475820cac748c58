// SPDX-License-Identifier: MIT
// The events of the form that every back-end raises alike.
#pragma once

#include "backends/loop/form_controls.h"
#include "backends/loop/services.h"
#include "src/app/form.h"
#include "src/view/display_state.h"
#include "src/view/platform/grid.h"

namespace backends {

/// Report a press on a cell of grdMain, before the cell becomes the current one, and its release.
void ReportPress(const OwnerDrawGrid& grid, std::int32_t row, std::int32_t col);
void ReportRelease();
/// Report a press on grdMain beside its cells, and one on grdTitle: each may close a field.
void ReportPressBesideCells();
void ReportHeading();

/// Raises the click on item 1 to 5, or on the caption, of soft menu 1 or 2.
void RaiseItemClick(std::int32_t menu, std::int32_t item);
void RaiseTitleClick(std::int32_t menu);
/// Raises the closing of the date picker, which shows the chosen date.
void RaiseDateChosen();
/// Raises the click on the selected entry of the hold menu.
void RaiseHoldMenuClick();
/// Raises the request to close the form by its title bar, as a person's act and as none.
void RaiseCloseRequest();
void AskToClose();

/// Reports that the soft keyboard has appeared, gone or moved. One that covers the whole form counts as none.
void RaiseKeyboard(const SystemObject& system, const modPDAUI::KeyboardState& keyboard);

/// The working area has another size: the form lays itself out in it, as it does when a soft keyboard opens or closes.
/// An open field stays where it is as far as there is room.
void TakeUpWorkArea(DeviceSystem& system, const Controls& seen, ScreenSize size);

/// Connects the events that a back-end's controls raise. In each back-end the controls have the form's names.
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
