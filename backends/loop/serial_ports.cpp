// SPDX-License-Identifier: MIT
#include "backends/loop/serial_ports.h"

#include <utility>

namespace backends {

namespace {

/// Once an event has read this many characters, the port shows it no more.
constexpr std::size_t ShareOfAnEvent = 4096;

} // namespace

ErrorNumber DeviceSerial::SetPortOpen(bool open) {
    if (open == Open)
        return NoError;
    if (open)
        return OpenPort();
    ClosePort();
    return NoError;
}

ErrorNumber DeviceSerial::OpenPort() {
    HasHeard = false;
    const auto pinned = Paths.Pinned.find(Id);
    OnSource = pinned != Paths.Pinned.end() || Paths.Find;
    if (OnSource) {
        const SourceTrouble trouble =
            OpenSource(pinned != Paths.Pinned.end() ? pinned->second : PathAddress(Paths.Find(Id)));
        Outcome = trouble.Error;
        LastTrouble = trouble.Why;
    } else {
        Outcome = OpenSimulatedPort();
    }
    Open = Outcome == NoError;
    return Outcome;
}

/// After a source has ended, one opening fails even if a listener or a command is available again at once: without that
/// the loss of the link would never be seen.
SourceTrouble DeviceSerial::OpenSource(const PortAddress& address) {
    LastAddress = AddressText(address);
    if (LastAddress.empty())
        return {FileNotFound, {}};
    if (!Source || address != AddressOfSource) {
        Source = MakeSource(address);
        AddressOfSource = address;
        Ending.clear();
    }
    if (!Source)
        return {NotAvailable, WhyNotBuilt(address)};
    if (!Ending.empty())
        return {NotAvailable, std::exchange(Ending, {})};
    return Source->Open(Line);
}

ErrorNumber DeviceSerial::OpenSimulatedPort() {
    LastAddress.clear();
    LastTrouble.clear();
    if (FailuresLeft == 0)
        return NoError;
    if (FailuresLeft > 0)
        --FailuresLeft;
    return NotAvailable;
}

/// Characters that a real source has received stay readable, even if none were read before the closing.
void DeviceSerial::ClosePort() {
    if (OnSource) {
        TakeFromSource();
        Source->Close();
        Decoder.Reset();
        Ending.clear();
    } else {
        Waiting.clear();
    }
    Open = false;
}

std::int32_t DeviceSerial::InBufferCount() const {
    return Given < ShareOfAnEvent ? static_cast<std::int32_t>(Waiting.size()) : 0;
}

Text DeviceSerial::ReadInput() {
    Text taken;
    taken.swap(Waiting);
    Given += taken.size();
    return taken;
}

void DeviceSerial::Drop() {
    ClosePort();
}

void DeviceSerial::Arrive(Text text) {
    if (BytesCame)
        BytesCame(modStringTools::ToBytes(text));
    modStringTools::BlankNuls(text);
    Waiting += text;
}

void DeviceSerial::TakeFromSource() {
    if (!Source)
        return;
    std::string bytes;
    const ReadState state = Source->TakeAvailable(bytes);
    if (!bytes.empty()) {
        if (BytesCame)
            BytesCame(bytes);
        const Text characters = Decoder.Decode(bytes);
        Waiting += characters;
        HasHeard = HasHeard || !characters.empty();
    }
    if (Open && OnSource && state == ReadState::Gone) {
        Open = false;
        Decoder.Reset();
        Ending = Source->Ending();
    }
}

bool DeviceSerial::RaiseWhatIsPending() {
    TakeFromSource();
    if (Held && Held())
        return false;
    if (Threshold <= 0 || static_cast<std::int32_t>(Waiting.size()) < Threshold)
        return false;
    Given = 0;
    Receive();
    Given = 0;
    return true;
}

} // namespace backends
