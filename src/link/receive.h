// SPDX-License-Identifier: MIT
// Collects received characters into complete lines, and keeps the link open (a state machine).
#pragma once

#include "src/text/text.h"
#include "src/view/platform/device.h"

namespace modBluetooth {

enum class LinkPhase : std::int16_t {
    Idle = 0,  ///< at start
    Reset = 1, ///< the port is to be closed first
    Open = 2,  ///< the port is to be opened and kept open
};

struct ReceiveState {
    bool LinkWanted = false;               ///< set by ArmLink and by received text; every Back clears it
    LinkPhase LinkState = LinkPhase::Idle; ///< set to Open by what wants results, to Reset after a sleep
    Text RxText;                           ///< received, not yet ended by CR LF
    std::size_t RxSearched = 0;            ///< the number of characters at the start of RxText that hold no CR LF
    Text Again;                            ///< BLobs that are taken again once RxText is empty
    Text ReadyText;                        ///< complete lines that wait for decoding
    std::size_t Decoded = 0;               ///< the number of characters at the start of ReadyText that were decoded
    platform::DateTime ReadySince;         ///< when the first of these lines was received
    bool BlobEndSeen = false;              ///< ReadyText is ready for decoding
    float LastPollTime = 0;                ///< seconds since midnight at the last full tick; 0 at start
};
inline ReceiveState Receive;

/// Requests the link; the next tick opens it.
void ArmLink();

/// Handles the receive event of the serial port.
void HandleBlueOnComm();

/// Handles a tick of the link timer, which comes every 500 ms.
void HandleBlueTimer();

/// Takes a delivery of the mailbox, if there is one, as received text.
void PollMailbox(const Text& fullName);

/// Takes a BLob once more as if it were received, as soon as no half line waits in RxText. Its lines end with a
/// carriage return.
void TakeAgain(const Text& blob);

/// Moves RxText up to and including its last CR LF to ReadyText. Returns false if there is no CR LF.
bool TakeCompleteLines();

/// Reports a reading that has been received and still waits: it will go into the record that was just shown.
void TellWhatWaits();

/// Shows the state of the link in place of the title of the screen.
void ShowLinkStatus(bool linkOpen);

} // namespace modBluetooth
