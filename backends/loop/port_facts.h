// SPDX-License-Identifier: MIT
// What the line of the link is told of a device's serial port.
#pragma once

#include "backends/loop/serial_ports.h"
#include "companion/link_watch.h"

namespace backends {

inline companion::PortFacts PortFactsOf(const DeviceSerial& serial) {
    return {
        .Address = serial.Address(),
        .Open = serial.PortOpen(),
        .Waiting = serial.WaitingCharacters(),
        .LastOpening = serial.LastOpening(),
        .Trouble = serial.Trouble(),
    };
}

} // namespace backends
