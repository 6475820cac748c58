// SPDX-License-Identifier: MIT
// The folder through which an outside server process hands over what it receives, where the device's Bluetooth can't be
// reached from here. The server makes "rfcomm.run" while it runs and "ipcout.lock" while it writes "ipcout.txt"; this
// side reads that file and deletes it, and writes nothing.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/storage.h"

#include <optional>

namespace modBluetooth {

/// One "ipcout.txt".
struct Delivery {
    platform::FileStamp Stamp;
    Text Lines; ///< its bytes, as text files are read, each line ended by CR LF
    bool operator==(const Delivery&) const = default;
};

struct MailboxState {
    Text MailboxPath; ///< folder of the mailbox, with its trailing `\`; SetMailboxPath writes it
    /// What was taken and could not be deleted: it is left until it is another one. TakeDelivery writes it.
    std::optional<Delivery> Left;
};
inline MailboxState Mailbox;

/// Sets MailboxPath by device type and the setting RFCOMM_Path.
void SetMailboxPath();

/// Whether the server's mark is in the mailbox.
bool MailboxServerRunning();

/// Returns the lines of the server's file, each ended by CR LF, and deletes it; nothing while the server writes it, or
/// there is none. A file that can't be deleted is taken once. Its bytes are read as those of the line are: UTF-8, and
/// Windows-1252 where they are none.
std::optional<Text> TakeDelivery(const Text& fullName);

} // namespace modBluetooth
