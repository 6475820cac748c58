// SPDX-License-Identifier: MIT
// The actions of a user at a device, once they have been found possible. Each back-end performs them the way its own
// controls are used: as a call without a window, as a click or a key with one.
#pragma once

#include "backends/loop/back_end.h"

namespace backends {

using namespace platform;

class Hand {
public:
    /// The device must exist for as long as the hand.
    explicit Hand(BackEnd& device) : Device_(device) {}
    Hand(const Hand&) = delete;
    Hand& operator=(const Hand&) = delete;
    virtual ~Hand() = default;

    BackEnd& Device() const { return Device_; }

    /// The pointer goes down on a visible cell of grdMain, which gets the focus and then becomes the current one, and
    /// up again.
    virtual void PressCell(std::int32_t row, std::int32_t col) = 0;
    virtual void ReleaseCell() = 0;

    /// A click on item 1 to 5, or on the caption, of soft menu 1 or 2.
    virtual void ClickItem(std::int32_t menu, std::int32_t item) = 0;
    virtual void ClickTitle(std::int32_t menu) = 0;

    /// A key of the device goes down and up.
    virtual void StrikeKey(std::int32_t keyCode) = 0;

    /// One character, typed into the control that has the focus: two units for one beyond the first 65,536. The form
    /// gets no key event of it; those are StrikeKey's.
    virtual void TypeCharacter(TextView character) = 0;
    /// Several printable characters, in their order. The result is the same as typing them one by one, but a control
    /// may treat them as one change.
    virtual void TypeCharacters(TextView characters) = 0;
    /// Replaces all of the text of the control that has the focus.
    virtual void ReplaceText(const Text& text) = 0;
    virtual void ChooseDate(const CalendarDate& date) = 0;

    virtual void CloseWindow() = 0;
    virtual void PressBoxButton(BoxAnswer answer) = 0;

private:
    BackEnd& Device_;
};

} // namespace backends
