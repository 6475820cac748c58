// SPDX-License-Identifier: MIT
// A reading of the journal in words for people.
#pragma once

#include "journal/journal_format.h"

#include <string>

namespace journal {

/// True if a reading with this verdict is in the field that asked for it: companion::Outcome::Taken. A verdict of a
/// newer program counts as not stored.
bool IsStored(const std::string& verdict);

/// Returns the verdicts for which IsStored is true, separated by commas.
std::string StoredVerdicts();

/// Returns "Moisture 14.1 %".
std::string ResultOf(const Line& reading);

/// Returns the text that the form writes into a field for a reading, "14.1 %".
std::string FieldTextOf(const Line& reading);

/// Returns what the window says of such a reading, or the verdict itself if it is one of a newer program.
std::string VerdictOf(const Line& reading);

/// Returns a text with blanks in place of control characters.
std::string OneLine(std::string text);

/// Returns a text as a row of a table has it: with blanks in place of line feeds and NULs.
std::string InARow(std::string text);

/// Returns "2026-11-22 20:30:05" for a time of the journal.
std::string TimeText(std::string time);

} // namespace journal
