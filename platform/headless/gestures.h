// SPDX-License-Identifier: MIT
// What a person does to the form. Each gives an empty text, or why it can't be done.
#pragma once

#include "platform/headless/headless_platform.h"

#include <string>

namespace platform::headless {

using Refusal = std::string;

inline constexpr const char* NoInputControl = "no input control has the focus";

/// Why the form takes no input at all: a message box takes it.
Refusal FormRefusal(const HeadlessPlatform& device);

/// A short tap on a cell of grdMain: the focus and the selection move there, press, release.
Refusal Tap(HeadlessPlatform& device, std::int32_t row, std::int32_t col);
/// The same with 1.5 seconds between press and release.
Refusal Hold(HeadlessPlatform& device, std::int32_t row, std::int32_t col);

/// A click on item 1 to 5, or on the caption, of soft menu 1 or 2.
Refusal ClickItem(HeadlessPlatform& device, std::int32_t menu, std::int32_t item);
Refusal ClickTitle(HeadlessPlatform& device, std::int32_t menu);

/// Finds the entry with that caption and clicks it as a user of this device would: an item after its menu was opened, a
/// soft key that has no items by its caption.
Refusal Choose(HeadlessPlatform& device, const Text& caption);

/// Replaces the text of the input control that has the focus.
Refusal SetInput(HeadlessPlatform& device, const Text& text);

/// The title bar's close.
Refusal CloseForm(HeadlessPlatform& device);

Refusal Answer(HeadlessPlatform& device, BoxAnswer answer);

} // namespace platform::headless
