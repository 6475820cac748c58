// SPDX-License-Identifier: MIT
// Puts the current result into the record on screen.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/device.h"

namespace modBLob {

/// Decodes the BLobs that the text completes and captures each result, while the status strip is shown.
void ProcessReceivedText(const Text& received);

/// Puts the current result into the record on screen, or lists it on the link trace; on any other screen it is dropped.
/// No file is written here: the record is saved by the rules of the record screen.
void CaptureResult();

/// Fills the automatic date and time rows of the record on screen.
void FillFormulaFields();

/// Returns what a formula puts into a cell: the date as day/month/year, the time as hours:minutes, each padded to two
/// digits and the year in full. `current` is the cell's text: a start date or start time that is there already is kept.
/// Returns an empty text for an unknown formula.
Text FormulaValue(const Text& formula, const Text& current);

/// The same at this moment.
Text FormulaValueAt(const platform::DateTime& now, const Text& formula, const Text& current);

/// Returns a text with zeros before it, up to `width` characters; a longer text is returned as it is.
Text PadZeros(const Text& text, std::int16_t width);

} // namespace modBLob
