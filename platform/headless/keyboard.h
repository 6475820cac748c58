// SPDX-License-Identifier: MIT
// What a person does with keys and with the date picker. Each gives an empty text, or why it can't be done.
#pragma once

#include "platform/headless/gestures.h"

namespace platform::headless {

/// Key down, key press where the code is a character, key up. The control that has the focus, or grdMain while none
/// has, acts in between, unless the form has swallowed the key: arrows on a grid, a list or a date, left and right in a
/// text, characters in a text. On Palm OS the page keys turn the page of grdMain whatever has the focus. Characters are
/// the codes 8, 9, 13, 27, 32 and 41 to 126.
Refusal PressKey(HeadlessPlatform& device, std::int32_t keyCode);

/// The characters one by one into the input control that has the focus.
Refusal TypeText(HeadlessPlatform& device, const Text& text);

/// Chooses a date in the open date picker.
Refusal PickDate(HeadlessPlatform& device, const CalendarDate& date);

} // namespace platform::headless
