// SPDX-License-Identifier: MIT
// Chooses the way to the instrument by the setting ComPort and opens it: a serial port, the mailbox of a server
// process, or a named connection.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/device.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace modBluetooth {

/// The kind of link that a ComPort names.
enum class LinkKind {
    None,       ///< "OFF"
    Server,     ///< "SERVER": the mailbox of a server process
    Connection, ///< a named connection, on a device that has named ports
    Serial,     ///< a number, with or without "Com" before it; any other text is a run-time failure when it is opened
};

struct PortState {
    std::vector<Text> PortList; ///< the names offered on this device; entry n has index n-1. ListPorts writes it
    bool LinkOpen = false;      ///< the link was open at the last tick; the tick and OpenLink write it
    Text LinkPortName;          ///< the name that OpenNamedLink works on; OpenLink writes it
    bool NamedLinkOpen = false; ///< OpenNamedLink has succeeded; never cleared during a run
    bool ServerMode = false;    ///< results come through the mailbox
    Text LastFailedPort;        ///< the last name whose failure was shown, so that the next tick does not show it again
    std::unique_ptr<platform::Connection> NamedConnection; ///< what opening a named connection returned; only kept
};
inline PortState Ports;

/// Fills PortList by device type. The first entry is always "OFF".
void ListPorts();

/// Returns the setting ComPort, or "OFF" if it is not set.
Text StoredPort();

/// Returns the kind of link that a ComPort names on this device.
LinkKind KindOf(const Text& port);

/// Returns the number of a ComPort of the kind Serial; none if it has none, such as an empty one, which is shown as the
/// first port of the list, "OFF".
std::optional<std::int32_t> PortNumber(const Text& port);

/// Opens the link that ComPort names, unless it is open already. Returns true if it is open. A ComPort that should name
/// a serial port and is not a number is a run-time failure.
bool OpenLink();

/// Returns why opening the stored ComPort would be a run-time failure, with what to do about it; empty if it would not
/// be one.
Text PortFailure();

/// Opens the link that LinkPortName names: the mailbox of a running server, or a named connection. Returns true if it
/// is open. A failure is shown unless the failure shown last had the same name.
bool OpenNamedLink();

} // namespace modBluetooth
