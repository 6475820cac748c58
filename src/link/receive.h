// SPDX-License-Identifier: MIT
// From received characters to complete lines, and the state machine that keeps the link alive.
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
    bool LinkWanted = false;               ///< something wants the link; every Back clears it
    LinkPhase LinkState = LinkPhase::Idle; ///< set to open by who wants results, to reset after a sleep
    Text RxText;                           ///< received, not yet ended by CR LF
    std::size_t RxSearched = 0;            ///< so many characters at the head of RxText have no CR LF among them
    Text ReadyText;                        ///< complete lines that wait for decoding
    platform::DateTime ReadySince;         ///< when the first of these lines came
    bool BlobEndSeen = false;              ///< ReadyText is ready for decoding
    float LastPollTime = 0;                ///< seconds since midnight at the last full tick; 0 at start
};
inline ReceiveState Receive;

/// Asks for the link and for its opening at the next tick.
void ArmLink();

/// The receive event of the serial port.
void HandleBlueOnComm();

/// A tick of the link timer, each 500 ms.
void HandleBlueTimer();

/// Takes a delivery of the mailbox for received text.
void PollMailbox(const Text& fullName);

/// Moves what RxText holds up to and including its last CR LF to ReadyText. False when there is no CR LF.
bool TakeCompleteLines();

/// Tells where a reading that has come is still waiting: it goes into the record that has just come on the screen.
void TellWhatWaits();

/// Writes the state of the link over the title of the screen.
void ShowLinkStatus(bool linkOpen);

} // namespace modBluetooth
