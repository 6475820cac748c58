// SPDX-License-Identifier: MIT
// The event handlers of the one form, where all processing starts. A back-end calls them, one at a time, on the thread
// of its event loop. A handler that lets events run may be entered again.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/canvas.h"

namespace frmQuorin {

/// The cause of a request to close the form.
enum class UnloadMode : std::int32_t {
    TitleBar = 0, ///< the close button of the title bar
    Program = 1,
    System = 2, ///< the platform; this can't be refused
};

void Form_Load();
void Form_Activate(); ///< whenever the form becomes active; the first time starts the application
/// Sets `cancel` to true if the form stays open.
void Form_QueryUnload(bool& cancel, UnloadMode unloadMode);
void Form_Unload();

// Key codes and characters are the platform's; a handler that writes 0 to one consumes the key.
void Form_KeyDown(std::int32_t& keyCode, std::int32_t shift);
void Form_KeyUp(std::int32_t& keyCode, std::int32_t shift);
void Form_KeyPress(std::int32_t& character);

void grdMain_Press();
void grdMain_Release();
void grdMain_RowColChange();
void grdMain_DrawCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell);
void grdTitle_GotFocus();
void grdTitle_Release();
void grdTitle_RowColChange();
void grdTitle_DrawCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell);

void lstHoldMenu_Click();
void lstHoldMenu_LostFocus();

void mnuButton1_Click();
void mnuButton2_Click();
void mnuButtonO1_Click(std::int32_t index); ///< item 1 to 5
void mnuButtonO2_Click(std::int32_t index);
/// For a soft-key layer that ignores captions: runs the menu's own entry at once.
void SoftKey1Pressed();
void SoftKey2Pressed();

void serConnection_Receive();
void tmrBlue_Tick();
void tmrHoldEvent_Tick();
void tmrMenus_Tick();

void txtInputField_GotFocus();
void txtInputField_LostFocus();
void txtInputField_Change();
void cboInputField_GotFocus();
void cboInputField_LostFocus();
void dteInputField_Closed();

// The application does not save, close the link or stop a timer when it leaves the foreground.
void myCsys_AppBackground();
void myCsys_AppMaximized();
void myCsys_AppMinimized();

/// The soft keyboard was shown, hidden or moved: `state` says whether it is shown; its box is in pixels.
void mykb_statechanged(std::int16_t state, std::int32_t left, std::int32_t top, std::int32_t width,
                       std::int32_t height);

} // namespace frmQuorin
