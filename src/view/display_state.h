// SPDX-License-Identifier: MIT
// The device's display as found at start-up, and the last state of its soft keyboard.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// The arguments of the last keyboard event.
struct KeyboardState {
    std::int16_t State = 0;                                ///< not 0: the soft keyboard is shown
    std::int32_t Left = 0, Top = 0, Width = 0, Height = 0; ///< pixels
};

struct DisplayState {
    bool SoftKeyMenus = false; ///< the two soft menus are hardware keys; InitDisplay sets it
    std::int16_t UiScale = 1;  ///< 2 on a high-resolution Palm OS screen; InitDisplay sets it
    bool ColourOn = true;      ///< grids draw in colour; start-up and ToggleColour set it
    Text DefaultFontName;      ///< grdMain's font at start-up, for the status strip
    std::int32_t DefaultFontSize = 0;
    std::int32_t SelectedBackColor = 0; ///< colours of the selected cell; InitDisplay sets the three
    std::int32_t SelectedTextColor = 0;
    std::int32_t SelectedFrameColor = 0;
    KeyboardState KeyboardRect; ///< set by the keyboard event
};
inline DisplayState Display;

} // namespace modPDAUI

namespace frmQuorin {

/// The state of the form that is not in controls.
struct FormState {
    bool FormInitialised = false;    ///< the first activation has run
    bool HoldEventFired = false;     ///< the hold timer fired during the present press
    std::int64_t lastTimerEvent = 0; ///< when tmrBlue last ticked, in steady seconds; the capture sets it too
};
inline FormState Form;

} // namespace frmQuorin
