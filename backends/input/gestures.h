// SPDX-License-Identifier: MIT
// The actions of a user on the form. Each returns an empty text on success, or the reason why it is not possible.
#pragma once

#include "backends/input/hand.h"

#include <string>

namespace backends {

using Refusal = std::string;

/// Returns why the form accepts no input, which is when a message box is open; empty if it does.
Refusal FormRefusal(const BackEnd& device);

/// Returns why nothing can be typed: the form accepts no input, or no input control has the focus. Empty if typing is
/// possible.
Refusal FieldRefusal(const BackEnd& device);

/// A short tap on a cell of grdMain: moves the focus and the selection there, presses and releases.
Refusal Tap(Hand& hand, std::int32_t row, std::int32_t col);
/// The same with 1.5 seconds between press and release.
Refusal Hold(Hand& hand, std::int32_t row, std::int32_t col);

/// A click on item 1 to 5, or on the caption, of soft menu 1 or 2.
Refusal ClickItem(Hand& hand, std::int32_t menu, std::int32_t item);
Refusal ClickTitle(Hand& hand, std::int32_t menu);

/// Finds the entry with that caption and clicks it as a user of this device would: an item after its menu is opened, a
/// soft key without items by its caption.
Refusal Choose(Hand& hand, const Text& caption);

/// Replaces the text of the input control that has the focus.
Refusal SetInput(Hand& hand, const Text& text);

/// A click on the close button of the title bar.
Refusal CloseForm(Hand& hand);

Refusal Answer(Hand& hand, BoxAnswer answer);

} // namespace backends
