// SPDX-License-Identifier: MIT
#include "platform/headless/serial_ports.h"

namespace platform::headless {

ErrorNumber HeadlessSerial::SetPortOpen(bool open) {
    if (open == Open)
        return NoError;
    if (open)
        return OpenPort();
    ClosePort();
    return NoError;
}

ErrorNumber HeadlessSerial::OpenPort() {
    const auto device = Devices.find(Id);
    if (device != Devices.end()) {
        const ErrorNumber error = Real.Open(device->second, Line);
        Open = error == NoError;
        return error;
    }
    if (FailuresLeft != 0) {
        if (FailuresLeft > 0)
            --FailuresLeft;
        return NotAvailable;
    }
    Open = true;
    return NoError;
}

void HeadlessSerial::ClosePort() {
    Real.Close();
    Open = false;
    Waiting.clear();
}

Text HeadlessSerial::ReadInput() {
    Text taken;
    taken.swap(Waiting);
    return taken;
}

void HeadlessSerial::Drop() {
    ClosePort();
}

void HeadlessSerial::TakeFromDevice() {
    if (!Real.IsOpen())
        return;
    if (Real.ReadAvailable(Waiting) == common::ReadState::Gone)
        Open = false; // what came before stays to be read
}

bool HeadlessSerial::RaiseWhatIsPending() {
    TakeFromDevice();
    if (Threshold <= 0 || InBufferCount() < Threshold)
        return false;
    Receive();
    return true;
}

} // namespace platform::headless
