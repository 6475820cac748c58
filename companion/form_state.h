// SPDX-License-Identifier: MIT
// What can be seen of the form's state between two events.
#pragma once

namespace companion {

/// A record is on the screen, or under a prompt.
bool RecordIsOpen();

/// The record on screen takes readings, and a Back that did not leave it has taken its link down.
bool LinkWasTakenDown();

/// The link is up over the table of a driver, where no reading belongs.
bool LinkIsUpInTheEditor();

} // namespace companion
