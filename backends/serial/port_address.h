// SPDX-License-Identifier: MIT
// What stands behind a port, as people write it: docs/addresses.md has the grammar.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace backends {

enum class AddressKind {
    Path,      ///< a serial device or pseudo terminal: "/dev/ttyUSB0"
    Bluetooth, ///< "bt:00:11:22:33:44:55#3"
    Tcp,       ///< "tcp:meter.local:5025"
    Exec,      ///< "exec:ssh shed cat /dev/ttyUSB0"
};

/// A serial channel of a Bluetooth device.
struct BluetoothAddress {
    std::array<std::uint8_t, 6> Bytes{}; ///< in the order in which people write them
    std::uint8_t Channel = 1;            ///< 1 to 30
    bool operator==(const BluetoothAddress&) const = default;
};

struct PortAddress {
    AddressKind Kind = AddressKind::Path;
    std::string Target;         ///< the path, the host or the command
    std::uint16_t TcpPort = 0;  ///< Tcp alone
    BluetoothAddress Bluetooth; ///< Bluetooth alone
    std::string Profile;        ///< of the instrument; empty for none
    bool operator==(const PortAddress&) const = default;
};

/// The address of a serial device or pseudo terminal.
PortAddress PathAddress(std::string path);

/// The address as people write it.
std::string AddressText(const PortAddress& address);

/// What came of the reading of an address: it, or one line that says what is wrong with the text.
struct AddressReading {
    std::optional<PortAddress> Address;
    std::string Error;
};

/// Reads [PROFILE@]ADDRESS.
AddressReading ReadAddress(const std::string& text);

/// Reads "00:11:22:33:44:55" and "00:11:22:33:44:55#3". Returns nothing for any other text.
std::optional<BluetoothAddress> BluetoothAddressFrom(const std::string& name);

} // namespace backends
