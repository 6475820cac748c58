// SPDX-License-Identifier: MIT
#include "apps/options/device_options.h"

#include "apps/options/folders.h"
#include "backends/serial/byte_sources.h"
#include "backends/simulated/device_profiles.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <iomanip>
#include <sstream>

namespace apps {

namespace {

using backends::PortAddress;
using backends::ScreenSize;
using modStringTools::FromBytes;

template <class Number>
std::optional<Number> NumberFrom(const std::string& text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional<Number>(number) : std::nullopt;
}

struct Pair {
    std::string Left;
    std::string Right;
};

/// Returns both sides of the last `sign`; both are empty if there is none.
Pair Split(const std::string& text, char sign) {
    const std::size_t place = text.rfind(sign);
    return place == std::string::npos ? Pair{} : Pair{text.substr(0, place), text.substr(place + 1)};
}

ScreenSize ScreenFrom(const std::string& text) {
    const Pair sides = Split(text, 'x');
    const auto width = NumberFrom<std::int32_t>(sides.Left);
    const auto height = NumberFrom<std::int32_t>(sides.Right);
    constexpr std::int32_t Largest = 10000;
    if (!width || !height || *width < 1 || *height < 1 || *width > Largest || *height > Largest)
        Refuse("--screen", text, "is not of the form WxH, such as 240x320");
    return {*width, *height};
}

/// Sets the device type, given as a number or by the name of a profile, which sets the screen too.
void TakeDevice(const std::string& text, backends::DeviceOptions& device) {
    constexpr std::int32_t LargestType = 32767;
    if (const auto* profile = backends::ProfileNamed(text)) {
        device.DeviceType = platform::NumberOf(profile->Kind);
        device.Screen = profile->Screen;
        return;
    }
    const auto type = NumberFrom<std::int32_t>(text);
    if (!type || *type < 0 || *type > LargestType)
        Refuse("--device", text, "is neither a device type, from 0 on, nor the name of a device");
    device.DeviceType = *type;
}

backends::HostVolume VolumeFrom(const std::string& text) {
    const Pair sides = Split(text, '=');
    const auto kilobytes = NumberFrom<std::int64_t>(sides.Right);
    const bool fails = sides.Right == "fail";
    if (sides.Left.empty() || sides.Left.back() != '\\' || (!fails && (!kilobytes || *kilobytes < 0)))
        Refuse("--volume", text, "is not of the form ROOT=KB or ROOT=fail, such as Card:\\=65536");
    return {FromBytes(sides.Left), fails ? std::nullopt : kilobytes};
}

std::string WithoutCom(const std::string& name) {
    const std::string com = "com";
    return modStringTools::SameIgnoringCase(FromBytes(name.substr(0, com.size())), FromBytes(com))
               ? name.substr(com.size())
               : name;
}

void AddPort(const std::string& text, std::map<std::int32_t, PortAddress>& ports) {
    const std::size_t equals = text.find('=');
    const auto number = NumberFrom<std::int32_t>(WithoutCom(text.substr(0, equals)));
    if (equals == std::string::npos || !number || *number < 0 || equals + 1 == text.size())
        Refuse("--port", text, "is not of the form N=ADDRESS, such as 1=/dev/rfcomm0");
    const auto reading = backends::ReadAddress(text.substr(equals + 1));
    if (!reading.Address)
        Refuse("--port", text, reading.Error);
    if (const std::string missing = backends::WhyNotBuilt(*reading.Address); !missing.empty())
        Refuse("--port", text, missing);
    ports[*number] = *reading.Address;
}

} // namespace

void AddDeviceOptions(CLI::App& app, DeviceWords& words) {
    const char* const ofDevice = "that of the device";
    app.add_option("--device", words.Device, "Type of device: a name or number of the table below")
        ->type_name("DEVICE")
        ->default_str(words.Defaults.Device);
    app.add_option("--os-version", words.OsVersion, "Version text of its operating system")->default_str(ofDevice);
    app.add_option("--user", words.User, "Name of its user")->type_name("NAME")->capture_default_str();
    app.add_option("--screen", words.Screen, "Size of its screen in pixels")->type_name("WxH")->default_str(ofDevice);
    app.add_option("--root", words.Root, "Folder with all of its storage")
        ->type_name("DIR")
        ->default_str(words.Defaults.Root);
    app.add_option("--volume", words.Volumes, "Volume of its storage and kilobytes free, or ROOT=fail; repeatable")
        ->type_name("ROOT=KB")
        ->default_str(ofDevice)
        ->expected(1)
        ->allow_extra_args(false) // what follows the value may be the script
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--settings", words.Settings, "Settings file")
        ->type_name("FILE")
        ->default_str(words.Defaults.Settings);
}

void AddPortOption(CLI::App& app, DeviceWords& words, const std::string& without) {
    app.add_option("--port", words.Ports, "Where port N (or ComN) is, an address as below; repeatable")
        ->type_name("N=ADDRESS")
        ->default_str(without)
        ->expected(1)
        ->allow_extra_args(false) // what follows the value may be the script
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

backends::DeviceOptions UnderstoodDevice(const DeviceWords& words) {
    backends::DeviceOptions device;
    TakeDevice(words.Device, device);
    if (words.OsVersion)
        device.OsVersion = FromBytes(*words.OsVersion);
    device.User = FromBytes(words.User);
    if (!words.Screen.empty())
        device.Screen = ScreenFrom(words.Screen);
    device.Root = words.Root;
    for (const std::string& volume : words.Volumes)
        device.Volumes.push_back(VolumeFrom(volume));
    device.Settings = words.Settings;
    for (const std::string& port : words.Ports)
        AddPort(port, device.Ports.Pinned);
    return device;
}

void UseThoseOfTheWindow(backends::DeviceOptions& device) {
    if (!device.Root.empty())
        return;
    device.Root = DataFolder().value_or("");
    if (device.Settings.empty())
        device.Settings = SettingsPlace().value_or("");
}

std::string AddressHelp() {
    return R"(Addresses of ports:
  /PATH             a serial device or pseudo terminal; a relative path begins with ./
  tcp:HOST:PORT     a TCP server, such as a device server; a HOST with colons is written [HOST]
  exec:COMMAND      the standard output of a command, which /bin/sh runs with the rights of this program
  bt:MAC[#CHANNEL]  a Bluetooth device; not built yet, nor is PROFILE@ in front of an address
)";
}

std::string DeviceTable() {
    std::ostringstream table;
    for (const auto& profile : backends::DeviceProfiles()) {
        const auto& volume = profile.Volume;
        table << "  " << std::left << std::setw(12) << profile.Name << "type " << platform::NumberOf(profile.Kind)
              << ", " << profile.Device << ": " << profile.Screen.Width << "x" << profile.Screen.Height << ", version "
              << profile.OsVersion << ", volume " << modStringTools::ToBytes(volume.Root) << "=" << volume.Kilobytes
              << "\n";
    }
    return table.str();
}

} // namespace apps
