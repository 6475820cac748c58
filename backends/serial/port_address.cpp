// SPDX-License-Identifier: MIT
#include "backends/serial/port_address.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace backends {

namespace {

constexpr int HighestChannel = 30;
constexpr std::size_t BluetoothLength = 17; // of "00:11:22:33:44:55"

constexpr std::string_view BluetoothScheme = "bt:";
constexpr std::string_view TcpScheme = "tcp:";
constexpr std::string_view ExecScheme = "exec:";

AddressReading Wrong(std::string why) {
    return {std::nullopt, std::move(why)};
}

bool BeginsWith(std::string_view text, std::string_view head) {
    return text.substr(0, head.size()) == head;
}

int HexValue(char digit) {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

std::optional<std::uint8_t> ChannelFrom(const std::string& afterAddress) {
    if (afterAddress.empty())
        return std::uint8_t{1};
    int channel = 0;
    for (std::size_t at = 1; at < afterAddress.size(); ++at) {
        if (at > 2 || afterAddress[at] < '0' || afterAddress[at] > '9')
            return std::nullopt;
        channel = channel * 10 + (afterAddress[at] - '0');
    }
    if (afterAddress[0] != '#' || channel < 1 || channel > HighestChannel)
        return std::nullopt;
    return static_cast<std::uint8_t>(channel);
}

AddressReading BluetoothFrom(const std::string& name) {
    const auto found = BluetoothAddressFrom(name);
    if (!found)
        return Wrong("is not of the form bt:MAC or bt:MAC#CHANNEL, such as bt:00:11:22:33:44:55#1");
    PortAddress address;
    address.Kind = AddressKind::Bluetooth;
    address.Bluetooth = *found;
    return {address, {}};
}

/// An IPv6 address contains colons, so it is written in brackets.
std::optional<std::string> HostFrom(const std::string& text) {
    const bool bracketed = text.size() > 2 && text.front() == '[' && text.back() == ']';
    const std::string host = bracketed ? text.substr(1, text.size() - 2) : text;
    const char* const refused = bracketed ? "[]@/ \t" : "[]@/: \t";
    if (host.empty() || host.find_first_of(refused) != std::string::npos)
        return std::nullopt;
    return host;
}

AddressReading TcpFrom(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    const auto host = HostFrom(text.substr(0, colon));
    const char* const end = text.data() + text.size();
    const char* const digits = colon == std::string::npos ? end : text.data() + colon + 1;
    PortAddress address;
    address.Kind = AddressKind::Tcp;
    const auto read = std::from_chars(digits, end, address.TcpPort);
    if (!host || read.ec != std::errc() || read.ptr != end || address.TcpPort == 0)
        return Wrong("is not of the form tcp:HOST:PORT, such as tcp:192.168.1.5:5025 or tcp:[::1]:5025");
    address.Target = *host;
    return {address, {}};
}

AddressReading ExecFrom(const std::string& command) {
    if (command.find_first_not_of(" \t") == std::string::npos)
        return Wrong("names no command, such as exec:ssh shed cat /dev/ttyUSB0");
    PortAddress address;
    address.Kind = AddressKind::Exec;
    address.Target = command;
    return {address, {}};
}

AddressReading ReadPlain(const std::string& text) {
    if (text.empty())
        return Wrong("names no address");
    if (text.front() == '/' || text.front() == '.')
        return {PathAddress(text), {}};
    if (BeginsWith(text, BluetoothScheme))
        return BluetoothFrom(text.substr(BluetoothScheme.size()));
    if (BeginsWith(text, TcpScheme))
        return TcpFrom(text.substr(TcpScheme.size()));
    if (BeginsWith(text, ExecScheme))
        return ExecFrom(text.substr(ExecScheme.size()));
    if (text.find_first_of(":@") != std::string::npos)
        return Wrong(
            "is not one of /PATH, bt:MAC, tcp:HOST:PORT and exec:COMMAND; a path that begins otherwise is written "
            "with ./ in front");
    return {PathAddress(text), {}};
}

/// Returns the length of the profile's name before the first `@`; 0 if there is none. A path or a command may contain
/// an `@` too.
std::size_t ProfileLength(const std::string& text) {
    const std::size_t at = text.find('@');
    if (at == std::string::npos || at == 0)
        return 0;
    const bool isName = std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
    return isName ? at : 0;
}

} // namespace

PortAddress PathAddress(std::string path) {
    PortAddress address;
    address.Target = std::move(path);
    return address;
}

std::string AddressText(const PortAddress& address) {
    const std::string profile = address.Profile.empty() ? "" : address.Profile + "@";
    switch (address.Kind) {
    case AddressKind::Path:
        break;
    case AddressKind::Tcp: {
        const bool hasColons = address.Target.find(':') != std::string::npos;
        return profile + std::string(TcpScheme) + (hasColons ? "[" + address.Target + "]" : address.Target) + ":" +
               std::to_string(address.TcpPort);
    }
    case AddressKind::Exec:
        return profile + std::string(ExecScheme) + address.Target;
    case AddressKind::Bluetooth: {
        constexpr std::string_view digits = "0123456789ABCDEF";
        std::string text;
        for (const std::uint8_t byte : address.Bluetooth.Bytes)
            text += std::string(text.empty() ? "" : ":") + digits[byte >> 4U] + digits[byte & 15U];
        return profile + std::string(BluetoothScheme) + text + "#" + std::to_string(address.Bluetooth.Channel);
    }
    }
    return profile + address.Target;
}

AddressReading ReadAddress(const std::string& text) {
    const std::size_t length = ProfileLength(text);
    AddressReading reading = ReadPlain(length == 0 ? text : text.substr(length + 1));
    if (reading.Address)
        reading.Address->Profile = text.substr(0, length);
    return reading;
}

std::optional<BluetoothAddress> BluetoothAddressFrom(const std::string& name) {
    if (name.size() < BluetoothLength)
        return std::nullopt;
    BluetoothAddress address;
    for (std::size_t byte = 0; byte < address.Bytes.size(); ++byte) {
        const int high = HexValue(name[byte * 3]);
        const int low = HexValue(name[byte * 3 + 1]);
        const bool ends = byte + 1 == address.Bytes.size();
        if (high < 0 || low < 0 || (!ends && name[byte * 3 + 2] != ':'))
            return std::nullopt;
        address.Bytes[byte] = static_cast<std::uint8_t>(high * 16 + low);
    }
    const auto channel = ChannelFrom(name.substr(BluetoothLength));
    if (!channel)
        return std::nullopt;
    address.Channel = *channel;
    return address;
}

} // namespace backends
