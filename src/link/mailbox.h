// SPDX-License-Identifier: MIT
// The folder through which an outside server process hands over what it receives, where the device's Bluetooth can't be
// reached from here. The server makes "rfcomm.run" while it runs and "ipcout.lock" while it writes "ipcout.txt"; this
// side reads that file and deletes it, and writes nothing.
#pragma once

#include "text/text.h"

namespace modBluetooth {

/// Sets MailboxPath by device type and the setting RFCOMM_Path.
void SetMailboxPath();

/// Whether the server's mark is in the mailbox.
bool MailboxServerRunning();

/// Takes the lines of the server's file, unless the server is writing it, and deletes it.
void PollMailbox(const Text& fullName);

} // namespace modBluetooth
