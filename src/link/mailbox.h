// SPDX-License-Identifier: MIT
// The folder through which a server process hands over what it receives, where this program can't reach the device's
// Bluetooth. The server keeps "rfcomm.run" while it runs and "ipcout.lock" while it writes "ipcout.txt"; this program
// reads that file and deletes it, and writes nothing.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/storage.h"

#include <optional>

namespace modBluetooth {

/// The contents of one "ipcout.txt".
struct Delivery {
    platform::FileStamp Stamp;
    Text Lines; ///< its bytes as a text file is read, each line ended by CR LF
    bool operator==(const Delivery&) const = default;
};

struct MailboxState {
    Text MailboxPath; ///< folder of the mailbox, with its trailing `\`; SetMailboxPath writes it
    /// What was taken and could not be deleted; not taken again while the file is the same. TakeDelivery writes it.
    std::optional<Delivery> Left;
};
inline MailboxState Mailbox;

/// Sets MailboxPath by device type and the setting RFCOMM_Path.
void SetMailboxPath();

/// True if the file is there by which the server shows that it runs.
bool MailboxServerRunning();

/// Returns the lines of the server's file, each ended by CR LF, and deletes the file. Returns nothing if there is no
/// file, or while the server writes it. A file that can't be deleted is taken only once. The bytes are decoded as those
/// of the serial line: UTF-8, or Windows-1252 where they are not valid UTF-8.
std::optional<Text> TakeDelivery(const Text& fullName);

} // namespace modBluetooth
