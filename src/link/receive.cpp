// SPDX-License-Identifier: MIT
#include "src/link/receive.h"

#include "src/blob/capture.h"
#include "src/blob/decoding.h"
#include "src/blob/tags.h"
#include "src/blob/verdicts.h"
#include "src/link/mailbox.h"
#include "src/link/ports.h"
#include "src/view/platform/platform.h"

#include <algorithm>

namespace modBluetooth {

using platform::Device;

namespace {

const Text LinkLineEnd = u"\r\n";
const Text EndOfBlob = u"[/BLob]\r\n"; // exactly this case: a text that ends with "[/BLOB]" waits for a later end tag
constexpr float PauseSeconds = 0.5F;

void ClosePort() {
    Device().serConnection.SetPortOpen(false); // a failure to close needs no action
}

bool ReadyTextEndsABlob() {
    const Text& ready = Receive.ReadyText;
    return ready.size() >= EndOfBlob.size() &&
           ready.compare(ready.size() - EndOfBlob.size(), EndOfBlob.size(), EndOfBlob) == 0;
}

/// Decodes the burst as one batch, half a second after the last tick before its end was seen.
void DecodeAfterPause() {
    const float now = Device().clock.TimeOfDay();
    if (Receive.LastPollTime == 0) {
        Receive.LastPollTime = now;
        return;
    }
    if (Receive.LastPollTime + PauseSeconds > now)
        return;
    Receive.BlobEndSeen = false; // first, so that a tick while a question is open does not decode the same text again
    Receive.Decoded = Receive.ReadyText.size();
    Device().readingLog.DecodingBegins();
    modBLob::ProcessReceivedText(Receive.ReadyText);
    modBLob::JudgeEmptied(modBLob::Framing, modBLob::Decoder, Receive.ReadyText.substr(Receive.Decoded));
    Receive.ReadyText.clear(); // also what was received while a question was open
    Receive.Decoded = 0;
}

/// A half line that has been received stays in one piece. The end tag may be in any case here: the BLob is complete.
void DeliverAgain() {
    if (Receive.Again.empty() || !Receive.RxText.empty())
        return;
    Device().readingLog.TextReceived(platform::TextSource::Again, Receive.Again);
    Receive.RxText.swap(Receive.Again);
    Receive.LinkWanted = true;
    if (TakeCompleteLines())
        Receive.BlobEndSeen = true;
}

void KeepLink() {
    Ports.LinkOpen = false;
    if (Receive.LinkState == LinkPhase::Open) {
        OpenLink();
    } else if (Receive.LinkState == LinkPhase::Reset) {
        if (Device().serConnection.PortOpen())
            ClosePort();
        else
            Receive.LinkState = LinkPhase::Open;
    }
}

} // namespace

void ArmLink() {
    Receive.LinkWanted = true;
    Receive.LinkState = LinkPhase::Open;
}

void HandleBlueOnComm() {
    auto& port = Device().serConnection;
    if (port.LastEvent() != platform::PortEvent::CharactersReceived || port.InBufferCount() < 1)
        return;
    port.SetReceiveThreshold(0); // no further event during the drain
    Receive.LinkWanted = true;
    while (port.InBufferCount() >= 1) {
        const Text input = port.ReadInput();
        Device().readingLog.TextReceived(platform::TextSource::Port, input);
        Receive.RxText += input;
        if (TakeCompleteLines() && ReadyTextEndsABlob())
            Receive.BlobEndSeen = true;
        DeliverAgain();
        Device().runTime.DoEvents();
    }
    port.SetReceiveThreshold(1);
}

void HandleBlueTimer() {
    if (!Receive.LinkWanted) {
        if (Ports.LinkOpen) {
            Ports.LinkOpen = false;
            ClosePort();
        }
        return;
    }
    const bool wasOpen = Ports.LinkOpen;
    if (Receive.BlobEndSeen) {
        DecodeAfterPause();
        return;
    }
    KeepLink();
    if (Ports.LinkOpen != wasOpen)
        ShowLinkStatus(Ports.LinkOpen);
    if (Ports.ServerMode)
        PollMailbox(Mailbox.MailboxPath + u"ipcout.txt");
    Receive.LastPollTime = Device().clock.TimeOfDay();
}

void TakeAgain(const Text& blob) {
    for (const char16_t character : blob) {
        Receive.Again += character;
        if (character == modBLob::LineEnd)
            Receive.Again += u'\n';
    }
    DeliverAgain();
}

void PollMailbox(const Text& fullName) {
    const auto lines = TakeDelivery(fullName);
    if (!lines)
        return;
    Receive.RxText += *lines;
    // Each file counts as complete: a BLob that continues in the next file waits in the buffer of the framing.
    if (TakeCompleteLines())
        Receive.BlobEndSeen = true;
    DeliverAgain();
}

// What has been searched is not searched again: noise without a line end may arrive for hours. The last character is
// searched again, because it may be the first half of a line end.
bool TakeCompleteLines() {
    Text& received = Receive.RxText;
    const std::size_t from = Receive.RxSearched - std::min<std::size_t>(Receive.RxSearched, 1);
    const std::size_t end = TextView(received).substr(from).rfind(LinkLineEnd);
    const bool found = end != TextView::npos;
    if (found) {
        if (Receive.ReadyText.empty())
            Receive.ReadySince = Device().clock.Now();
        Receive.ReadyText.append(received, 0, from + end + LinkLineEnd.size());
        received.erase(0, from + end + LinkLineEnd.size());
    }
    Receive.RxSearched = received.size();
    return found;
}

void TellWhatWaits() {
    if (Receive.Decoded > 0) // a batch is being delivered, to the record that is opened now
        return;
    const bool wholeRecord = modBLob::HasTag(Receive.ReadyText, modBLob::EndTag);
    if (wholeRecord || modBLob::ResultsWait(modBLob::Decoder))
        Device().onlooker.ReadingWaits(Receive.ReadySince);
}

void ShowLinkStatus(bool linkOpen) {
    Device().grdTitle.SetCell(0, 0, linkOpen ? u"Bluetooth :-)" : u"Bluetooth :-(");
}

} // namespace modBluetooth
