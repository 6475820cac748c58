// SPDX-License-Identifier: MIT
#include "backends/loop/serial_ports.h"

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
    if (pinned != Paths.Pinned.end())
        Outcome = OpenHostPort(pinned->second);
    else
        Outcome = Paths.Find ? OpenHostPort(Paths.Find(Id)) : OpenSimulatedPort();
    Open = Outcome == NoError;
    return Outcome;
}

ErrorNumber DeviceSerial::OpenHostPort(const std::string& path) {
    LastPath = path;
    return path.empty() ? FileNotFound : Real.Open(path, Line);
}

ErrorNumber DeviceSerial::OpenSimulatedPort() {
    LastPath.clear();
    if (FailuresLeft == 0)
        return NoError;
    if (FailuresLeft > 0)
        --FailuresLeft;
    return NotAvailable;
}

/// What a device has received stays to be read, also when nobody has looked yet.
void DeviceSerial::ClosePort() {
    if (Real.IsOpen())
        TakeFromDevice();
    else
        Waiting.clear();
    Real.Close();
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

void DeviceSerial::TakeFromDevice() {
    if (!Real.IsOpen())
        return;
    const std::size_t before = Waiting.size();
    if (Real.ReadAvailable(Waiting) == ReadState::Gone)
        Open = false;
    HasHeard = HasHeard || Waiting.size() > before;
}

bool DeviceSerial::RaiseWhatIsPending() {
    TakeFromDevice();
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
