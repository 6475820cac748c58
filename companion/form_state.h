// SPDX-License-Identifier: MIT
// What can be read from the form's state between two events.
#pragma once

#include "src/text/text.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace companion {

/// True if a record is on the screen, or under a prompt.
bool RecordIsOpen();

/// Returns the names of the open driver's columns.
std::vector<Text> FieldNames();

/// True if the first screen is shown.
bool IsStartScreen();
/// True if the list of downloads is on the screen, or under a prompt.
bool DownloadsAreListed();
/// True if that list is not empty.
bool AnyDownloadIsListed();

/// Returns the next shown row of the record on the screen, after `row` or, with a `step` of -1, before it, whose value
/// is edited in place; nothing if there is none, or no record is on the screen. Rows of dates are passed over.
std::optional<std::int32_t> NextEditedRow(std::int32_t row, std::int32_t step);

/// True if a list is on the screen in which moving the highlight stores nothing.
bool ListStoresNothing();

/// Returns the title of the window: "qrn0002 (North wall) · record 2 of 5 · Climate Meter" while a record of a download
/// is open, else the name of the program.
Text WindowTitle();

/// A download that a person has before them.
struct CurrentDownload {
    Text File; ///< without a folder
    Text Driver;
    Text Alias; ///< empty for none
};
/// Returns the download whose record is on the screen, or under a prompt, or that is selected in its list; nothing if
/// there is none.
std::optional<CurrentDownload> DownloadOfNow();

/// True if a table of this bare name is the download that was opened last.
bool IsOpenDownload(const Text& file);

/// True if the record on screen takes readings, and a Back that did not leave the record has closed its link.
bool LinkWasTakenDown();

/// True if the link is open while the table of a driver is edited, which takes no readings.
bool LinkIsUpInTheEditor();

} // namespace companion
