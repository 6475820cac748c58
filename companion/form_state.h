// SPDX-License-Identifier: MIT
// What can be read from the form's state between two events.
#pragma once

namespace companion {

/// True if a record is on the screen, or under a prompt.
bool RecordIsOpen();

/// True if the record on screen takes readings, and a Back that did not leave the record has closed its link.
bool LinkWasTakenDown();

/// True if the link is open while the table of a driver is edited, which takes no readings.
bool LinkIsUpInTheEditor();

} // namespace companion
