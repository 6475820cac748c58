// SPDX-License-Identifier: MIT
#include "backends/linux/connections.h"

#include "backends/serial/host_serial_port.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>

namespace backends {

namespace {

constexpr const char16_t* LineSettings = u"9600,N,8,1";

constexpr int RfcommProtocol = 3;

// The kernel's layouts. Debian has their header in a separate package, with a library that is not needed here.
struct DeviceAddress {
    std::uint8_t Bytes[6]; // in reverse of the written order
};

struct RfcommSocketAddress {
    sa_family_t Family;
    DeviceAddress Device;
    std::uint8_t Channel;
};
static_assert(sizeof(RfcommSocketAddress) == 10 && offsetof(RfcommSocketAddress, Channel) == 8);

class SerialConnection final : public Connection {
public:
    SerialDevice Device;
};

class BluetoothConnection final : public Connection {
public:
    explicit BluetoothConnection(Descriptor socket) : Socket_(std::move(socket)) {}

private:
    Descriptor Socket_;
};

ErrorNumber OpenDevice(const std::string& path, std::unique_ptr<Connection>& connection) {
    // Anything but a device is not opened: opening a pipe would let its other end continue.
    struct stat found {};
    if (::stat(path.c_str(), &found) == 0 && !S_ISCHR(found.st_mode))
        return NotAvailable;
    auto opened = std::make_unique<SerialConnection>();
    const ErrorNumber error = opened->Device.Open(path, LineSettings);
    if (error == NoError)
        connection = std::move(opened);
    return error;
}

ErrorNumber OpenBluetooth(const BluetoothConnect& connect, const BluetoothAddress& address,
                          std::unique_ptr<Connection>& connection) {
    Descriptor socket;
    const int error = connect(address, socket);
    if (error == EAFNOSUPPORT || error == EPROTONOSUPPORT)
        return NotAvailable;
    if (error != 0 && error != EINPROGRESS)
        return FromErrno(error);
    connection = std::make_unique<BluetoothConnection>(std::move(socket));
    return NoError;
}

} // namespace

std::array<std::uint8_t, 10> SocketAddress(const BluetoothAddress& address) {
    RfcommSocketAddress socketAddress{};
    socketAddress.Family = AF_BLUETOOTH;
    std::copy(address.Bytes.rbegin(), address.Bytes.rend(), socketAddress.Device.Bytes);
    socketAddress.Channel = address.Channel;
    std::array<std::uint8_t, sizeof socketAddress> bytes;
    std::memcpy(bytes.data(), &socketAddress, sizeof socketAddress);
    return bytes;
}

int ConnectRfcomm(const BluetoothAddress& address, Descriptor& socket) {
    Descriptor made(::socket(AF_BLUETOOTH, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, RfcommProtocol));
    if (!made.Valid())
        return errno;
    const auto bytes = SocketAddress(address);
    sockaddr_storage target{};
    std::memcpy(&target, bytes.data(), bytes.size());
    const int outcome = ::connect(made.Number(), reinterpret_cast<const sockaddr*>(&target), bytes.size());
    const int error = outcome == 0 ? 0 : errno;
    socket = std::move(made);
    return error;
}

ErrorNumber HostConnections::Open(const Text& name, std::unique_ptr<Connection>& connection) {
    connection.reset();
    const std::string bytes = modStringTools::ToBytes(name);
    if (bytes.find('\0') != std::string::npos)
        return FileNotFound;
    if (!bytes.empty() && bytes[0] == '/')
        return OpenDevice(bytes, connection);
    if (const auto address = BluetoothAddressFrom(bytes))
        return OpenBluetooth(Connect_, *address, connection);
    return FileNotFound;
}

} // namespace backends
