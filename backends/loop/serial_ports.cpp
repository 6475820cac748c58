// SPDX-License-Identifier: MIT
#include "backends/loop/serial_ports.h"

#include <utility>

namespace backends {

namespace {

/// An event that has read so many characters is not shown any more of them.
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

/// A listener or a command may be there again at once. One opening fails all the same, or nobody would ever see that
/// the link was lost.
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

/// What a device has received stays to be read, also when nobody has looked yet.
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
