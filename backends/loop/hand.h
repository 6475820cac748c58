// SPDX-License-Identifier: MIT
// What a hand does at a device, once it has been found possible. Each back-end lets it arrive the way its own controls
// are used: as a call where there is no window, as a click or a key where there is one.
#pragma once

#include "src/view/platform/controls.h"
#include "src/view/platform/run_time.h"

namespace backends {

using namespace platform;

class Hand {
public:
    virtual ~Hand() = default;

    /// The pointer goes down on a cell of grdMain that stands there, and up again.
    virtual void PressCell(std::int32_t row, std::int32_t col) = 0;
    virtual void ReleaseCell() = 0;

    /// Item 1 to 5, or the caption, of soft menu 1 or 2.
    virtual void ClickItem(std::int32_t menu, std::int32_t item) = 0;
    virtual void ClickTitle(std::int32_t menu) = 0;

    /// A key of the device goes down and up.
    virtual void StrikeKey(std::int32_t keyCode) = 0;

    /// One character, as typed into the control that has the focus: two units outside of the first 65,536.
    virtual void TypeCharacter(TextView character) = 0;
    /// Several characters that write something, in their order. What comes of them is what comes of one after the
    /// other, and a control may take them as one change.
    virtual void TypeCharacters(TextView characters) = 0;
    /// All of the text of the control that has the focus.
    virtual void ReplaceText(const Text& text) = 0;
    virtual void ChooseDate(const CalendarDate& date) = 0;

    virtual void CloseWindow() = 0;
    virtual void PressBoxButton(BoxAnswer answer) = 0;
};

} // namespace backends
