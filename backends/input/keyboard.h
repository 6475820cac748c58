// SPDX-License-Identifier: MIT
// What a person does with keys and with the date picker. Each gives an empty text, or why it can't be done.
#pragma once

#include "backends/input/gestures.h"

namespace backends {

/// Key down, key press where the code is a character, key up. The control that has the focus, or grdMain while none
/// has, acts in between, unless the form has swallowed the key: arrows on a grid, a list or a date, left and right in a
/// text, characters in a text. On Palm OS the page keys turn the page of grdMain whatever has the focus.
Refusal PressKey(BackEnd& device, std::int32_t keyCode);

/// The characters one by one into the input control that has the focus.
Refusal TypeText(BackEnd& device, const Text& text);

/// The length of the character at the head of a text: two units outside of the first 65,536.
std::size_t FirstLength(TextView text);

/// Chooses a date in the open date picker.
Refusal PickDate(BackEnd& device, const CalendarDate& date);

} // namespace backends
