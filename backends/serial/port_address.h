// SPDX-License-Identifier: MIT
// The address of a port's source, as users write it; docs/addresses.md has the grammar.
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
    std::array<std::uint8_t, 6> Bytes{}; ///< in written order
    std::uint8_t Channel = 1;            ///< 1 to 30
    bool operator==(const BluetoothAddress&) const = default;
};

struct PortAddress {
    AddressKind Kind = AddressKind::Path;
    std::string Target;         ///< the path, the host or the command
    std::uint16_t TcpPort = 0;  ///< Tcp alone
    BluetoothAddress Bluetooth; ///< Bluetooth alone
    std::string Profile;        ///< profile of the instrument; empty for none
    bool operator==(const PortAddress&) const = default;
};

/// Returns the address of a serial device or pseudo terminal.
PortAddress PathAddress(std::string path);

/// Returns the address as users write it.
std::string AddressText(const PortAddress& address);

/// The result of reading an address: the address, or one line on what is wrong with the text.
struct AddressReading {
    std::optional<PortAddress> Address;
    std::string Error;
};

/// Reads [PROFILE@]ADDRESS.
AddressReading ReadAddress(const std::string& text);

/// Reads "00:11:22:33:44:55" and "00:11:22:33:44:55#3". Returns nothing for any other text.
std::optional<BluetoothAddress> BluetoothAddressFrom(const std::string& name);

} // namespace backends
