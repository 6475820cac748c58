// SPDX-License-Identifier: MIT
// What can be read from the form's state between two events.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace companion {

/// True if a record is on the screen, or under a prompt.
bool RecordIsOpen();

/// Returns the names of the open driver's columns.
std::vector<Text> FieldNames();

/// True if a table of this bare name is the download that was opened last.
bool IsOpenDownload(const Text& file);

/// True if the record on screen takes readings, and a Back that did not leave the record has closed its link.
bool LinkWasTakenDown();

/// True if the link is open while the table of a driver is edited, which takes no readings.
bool LinkIsUpInTheEditor();

} // namespace companion
