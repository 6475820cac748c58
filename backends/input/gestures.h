// SPDX-License-Identifier: MIT
// What a person does to the form. Each gives an empty text, or why it can't be done.
#pragma once

#include "backends/loop/back_end.h"

#include <string>

namespace backends {

using Refusal = std::string;

/// Why the form takes no input at all: a message box takes it.
Refusal FormRefusal(const BackEnd& device);

/// Why nothing can be typed: the form takes no input, or no input control has the focus.
Refusal FieldRefusal(const BackEnd& device);

/// A short tap on a cell of grdMain: the focus and the selection move there, press, release.
Refusal Tap(BackEnd& device, std::int32_t row, std::int32_t col);
/// The same with 1.5 seconds between press and release.
Refusal Hold(BackEnd& device, std::int32_t row, std::int32_t col);

/// A click on item 1 to 5, or on the caption, of soft menu 1 or 2.
Refusal ClickItem(BackEnd& device, std::int32_t menu, std::int32_t item);
Refusal ClickTitle(BackEnd& device, std::int32_t menu);

/// Finds the entry with that caption and clicks it as a user of this device would: an item after its menu was opened, a
/// soft key that has no items by its caption.
Refusal Choose(BackEnd& device, const Text& caption);

/// Replaces the text of the input control that has the focus.
Refusal SetInput(BackEnd& device, const Text& text);

/// The title bar's close.
Refusal CloseForm(BackEnd& device);

Refusal Answer(BackEnd& device, BoxAnswer answer);

} // namespace backends
