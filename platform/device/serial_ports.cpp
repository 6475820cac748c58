// SPDX-License-Identifier: MIT
#include "platform/device/serial_ports.h"

namespace platform::device {

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

void DeviceSerial::ClosePort() {
    Real.Close();
    Open = false;
    Waiting.clear();
}

Text DeviceSerial::ReadInput() {
    Text taken;
    taken.swap(Waiting);
    return taken;
}

void DeviceSerial::Drop() {
    ClosePort();
}

void DeviceSerial::TakeFromDevice() {
    if (!Real.IsOpen())
        return;
    const std::size_t before = Waiting.size();
    if (Real.ReadAvailable(Waiting) == common::ReadState::Gone)
        Open = false; // what came before stays to be read
    HasHeard = HasHeard || Waiting.size() > before;
}

bool DeviceSerial::RaiseWhatIsPending() {
    TakeFromDevice();
    if (Threshold <= 0 || InBufferCount() < Threshold)
        return false;
    Receive();
    return true;
}

} // namespace platform::device
