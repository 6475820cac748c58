// SPDX-License-Identifier: MIT
// Connections that are opened by name: a serial device of the machine, or a Bluetooth device by its address.
#pragma once

#include "backends/files/host_files.h"
#include "backends/serial/port_address.h"
#include "src/view/platform/device.h"

#include <array>
#include <cstdint>
#include <functional>

namespace backends {

using namespace platform;

/// Returns the address in the form of connect(2).
std::array<std::uint8_t, 10> SocketAddress(const BluetoothAddress& address);

/// Starts to connect and returns the value of errno: 0 when connected, EINPROGRESS while connecting. Does not wait.
using BluetoothConnect = std::function<int(const BluetoothAddress& address, Descriptor& socket)>;

int ConnectRfcomm(const BluetoothAddress& address, Descriptor& socket);

class HostConnections final : public ConnectionService {
public:
    explicit HostConnections(BluetoothConnect connect = ConnectRfcomm) : Connect_(std::move(connect)) {}

    /// Opens a connection, which lasts as long as its object. A name that begins with `/` is a serial device, opened at
    /// "9600,N,8,1"; returns NotAvailable if it is not a terminal or is in use. A Bluetooth address is connected to
    /// over RFCOMM, on channel 1 or the one after `#`; returns NotAvailable on a machine without Bluetooth. Does not
    /// wait until it is connected, since a device out of reach answers only after many seconds: a connection on its way
    /// counts as open. Returns FileNotFound for any other name.
    ErrorNumber Open(const Text& name, std::unique_ptr<Connection>& connection) override;

private:
    BluetoothConnect Connect_;
};

} // namespace backends
