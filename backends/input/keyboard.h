// SPDX-License-Identifier: MIT
// The actions of a user with keys and the date picker. Each returns an empty text on success, or the reason why it is
// not possible.
#pragma once

#include "backends/input/gestures.h"

namespace backends {

/// Key down, key press if the code is a character, key up. In between the control that has the focus, or grdMain if
/// none has, reacts unless the form has swallowed the key: arrows on a grid, a list or a date, left and right in a
/// text, characters in a text. On Palm OS the page keys turn the page of grdMain whatever has the focus.
Refusal PressKey(Hand& hand, std::int32_t keyCode);

/// Types the characters one after another into the input control that has the focus.
Refusal TypeText(Hand& hand, const Text& text);

/// Returns the length of the first character of a text: two units for one beyond the first 65,536.
std::size_t FirstLength(TextView text);

/// Chooses a date in the open date picker.
Refusal PickDate(Hand& hand, const CalendarDate& date);

} // namespace backends
