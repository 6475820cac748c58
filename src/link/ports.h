// SPDX-License-Identifier: MIT
// Chooses the road to the instrument by the setting ComPort and opens it: a serial port, the mailbox of a server
// process, or a connection by name.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/device.h"

#include <memory>
#include <vector>

namespace modBluetooth {

/// What a ComPort leads to.
enum class LinkRoad {
    None,       ///< "OFF"
    Server,     ///< the mailbox of one: "SERVER"
    Connection, ///< by name, on a device that has named ports
    Serial,     ///< a number, with "Com" in front or not; a text that is none is a run-time failure when it is opened
};

struct PortState {
    std::vector<Text> PortList; ///< the names offered on this device; entry n stands at n less 1. ListPorts writes it
    bool LinkOpen = false;      ///< the link is up, as of the last tick; the tick and OpenLink write it
    Text LinkPortName;          ///< the name that OpenNamedLink works on; OpenLink writes it
    bool NamedLinkOpen = false; ///< OpenNamedLink has succeeded; never cleared during a run
    bool ServerMode = false;    ///< results come through the mailbox
    Text LastFailedPort;        ///< the last name whose failure was told, so that each tick does not tell it again
    std::unique_ptr<platform::Connection> NamedConnection; ///< what a named connection left; only kept
};
inline PortState Ports;

/// Fills PortList by device type. The first entry is always "OFF".
void ListPorts();

/// The text that the setting ComPort holds; "OFF" without one.
Text StoredPort();

/// The road of a ComPort on this device.
LinkRoad RoadOf(const Text& port);

/// Opens the road that ComPort names, or finds it open. A ComPort that stands for a serial port and is no number is a
/// run-time failure.
bool OpenLink();

/// Why a try to open what ComPort holds is a run-time failure, with what to do about it; empty where it is none.
Text PortFailure();

/// Opens the road named by LinkPortName: the mailbox of a running server, or a connection. A failure is told once for
/// each name.
bool OpenNamedLink();

} // namespace modBluetooth
