// SPDX-License-Identifier: MIT
// Where a measurement becomes data: the current result is put into the record on screen.
#pragma once

#include "src/text/text.h"

namespace modBLob {

/// Decodes what the text completes and captures each result into the record on screen, under the status strip.
void ProcessReceivedText(const Text& received);

/// Puts the current result into the record on screen, or lists it on the link trace; any other screen drops it.
/// Nothing here touches the file: the record is saved by the record screen's rules.
void CaptureResult();

/// Fills the automatic date and time rows of the record on screen.
void FillFormulaFields();

/// What a formula makes of a cell: the date as day/month/year, the time as hours:minutes, each padded to two digits and
/// the year in full. An unknown formula gives an empty text.
Text FormulaValue(const Text& formula, const Text& current);

/// A text with zeros put in front up to `width`; a longer one stays as it is.
Text PadZeros(const Text& text, std::int16_t width);

} // namespace modBLob
