// SPDX-License-Identifier: MIT
#include "options.h"

#include "commands.h"
#include "platform/common/device_profiles.h"
#include "platform/device/clock.h"
#include "view/painting.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>

namespace console {

namespace {

using modStringTools::FromBytes;
using platform::common::ScreenSize;

constexpr const char* DefaultMoment = "2007-03-05T09:30:00";

/// What the command line says, before it is looked at.
struct Words {
    std::string Device = "0";
    std::optional<std::string> OsVersion;
    std::string User = "user";
    std::string Screen;
    std::string Root;
    std::vector<std::string> Volumes;
    std::string Settings;
    std::string Clock = "virtual";
    std::string Now = DefaultMoment;
    std::vector<std::string> Ports;
    std::string Script;
    bool Strict = false;
};

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

[[noreturn]] void Refuse(const char* option, const std::string& text, const std::string& why) {
    throw CLI::ValidationError(std::string(option) + " " + text, why);
}

/// Both sides of the last sign, both empty without one.
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

/// A device type, or the name of a profile, whose screen then counts as well.
void TakeDevice(const std::string& text, platform::device::DeviceOptions& device) {
    constexpr std::int32_t LargestType = 32767;
    if (const auto* profile = platform::common::ProfileNamed(text)) {
        device.DeviceType = profile->DeviceType;
        device.Screen = profile->Screen;
        return;
    }
    const auto type = NumberFrom<std::int32_t>(text);
    if (!type || *type < 0 || *type > LargestType)
        Refuse("--device", text, "is neither a device type, from 0 on, nor the name of a device");
    device.DeviceType = *type;
}

platform::common::HostVolume VolumeFrom(const std::string& text) {
    const Pair sides = Split(text, '=');
    const auto kilobytes = NumberFrom<std::int64_t>(sides.Right);
    const bool fails = sides.Right == "fail";
    if (sides.Left.empty() || sides.Left.back() != '\\' || (!fails && (!kilobytes || *kilobytes < 0)))
        Refuse("--volume", text, "is not of the form ROOT=KB or ROOT=fail, such as Card:\\=65536");
    return {FromBytes(sides.Left), fails ? std::nullopt : kilobytes};
}

void AddPort(const std::string& text, std::map<std::int32_t, std::string>& ports) {
    const std::size_t equals = text.find('=');
    const auto number = NumberFrom<std::int32_t>(text.substr(0, equals));
    if (equals == std::string::npos || !number || *number < 0 || equals + 1 == text.size())
        Refuse("--port", text, "is not of the form ID=PATH, such as 1=/dev/rfcomm0");
    ports[*number] = text.substr(equals + 1);
}

std::string DefaultRoot() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data != '\0')
        return std::string(data) + "/quorin";
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return std::string(home) + "/.local/share/quorin";
    throw CLI::ValidationError("--root", "is needed: neither XDG_DATA_HOME nor HOME is set");
}

std::int64_t MomentFrom(const std::string& text) {
    const auto moment = platform::device::MomentFromText(text);
    if (!moment)
        Refuse("--now", text, "is no moment of the form YYYY-MM-DDTHH:MM:SS");
    return *moment;
}

Options Understood(const Words& words) {
    Options options;
    auto& device = options.Device;
    TakeDevice(words.Device, device);
    if (words.OsVersion)
        device.OsVersion = FromBytes(*words.OsVersion);
    device.User = FromBytes(words.User);
    if (!words.Screen.empty())
        device.Screen = ScreenFrom(words.Screen);
    device.Root = words.Root.empty() ? DefaultRoot() : words.Root;
    for (const std::string& volume : words.Volumes)
        device.Volumes.push_back(VolumeFrom(volume));
    device.Settings = words.Settings;
    device.RealClock = words.Clock == "real";
    device.StartMoment = MomentFrom(words.Now);
    for (const std::string& port : words.Ports)
        AddPort(port, device.Ports.Pinned);
    options.Script = words.Script;
    options.Strict = words.Strict;
    return options;
}

/// A row a profile: its name, type, screen, version and volume.
std::string DeviceHelp() {
    std::ostringstream help;
    for (const auto& profile : platform::common::DeviceProfiles()) {
        const auto& volume = profile.Volume;
        help << "  " << std::left << std::setw(12) << profile.Name << "type " << profile.DeviceType << ", "
             << profile.Device << ": " << profile.Screen.Width << "x" << profile.Screen.Height << ", version "
             << profile.OsVersion << ", volume " << modStringTools::ToBytes(volume.Root) << "="
             << volume.Kilobytes.value_or(0) << "\n";
    }
    return help.str();
}

std::string KeyHelp() {
    std::map<std::int32_t, std::string> names;
    for (const auto& profile : platform::common::DeviceProfiles()) {
        for (const auto& key : profile.Keys)
            names.emplace(key.Code, key.Name);
    }
    std::string help;
    for (const auto& [code, name] : names)
        help += (help.empty() ? "" : ", ") + std::to_string(code) + " " + name;
    return help;
}

std::string Footer() {
    return "Devices, each of whose figures an option of its own overrides; a type without a row is as \"other\":\n" +
           DeviceHelp() + "\nKeys: " + KeyHelp() + ".\n\nCommands, one a line, from SCRIPT or standard input:\n" +
           CommandHelp() + R"(
TEXT is the rest of the line as it stands or, where it begins with a double quote, a JSON string. Empty lines and lines
that begin with # are skipped.

Answers and events are written to standard output, one JSON object a line. {"ready":N} comes before each command that
is read; N above 0 tells that N message boxes or prompts wait. {"done":WORD} closes a command, with "error" when it
could not be carried out.

Files: the volume Card:\ is the folder Card in the root folder, c:\ipc\ is c/ipc, .\ is the root folder itself. Line
databases are SQLite files, Databases/NAME.sqlite in the root folder. Settings are kept in settings.ini.

Text is measured with fixed metrics: at font size s a character is (3s+2)/4 pixels wide, a line (15s+4)/8 high. A scroll
bar is 13 pixels wide. After "jump" each timer that fell due meanwhile fires once.

Exit status: 0 the program or the input ended, 1 a run-time failure, 2 wrong usage, 3 a command failed under --strict.)";
}

void Describe(CLI::App& app, Words& words) {
    app.add_option("SCRIPT", words.Script, "File with the commands; standard input without one");
    app.add_option("--device", words.Device, "Device type that the platform reports, or a name of the table below [0]");
    app.add_option("--os-version", words.OsVersion, "Version text of the operating system [that of the device]");
    app.add_option("--user", words.User, "User name")->capture_default_str();
    app.add_option("--screen", words.Screen, "Working area in pixels, WxH [that of the device]");
    app.add_option("--root", words.Root, "Host folder that holds all the device's storage [$XDG_DATA_HOME/quorin]");
    app.add_option("--volume", words.Volumes,
                   "A storage volume and its space in kilobytes, ROOT=KB, or ROOT=fail; repeatable, in order [that of "
                   "the device]")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--settings", words.Settings, "Settings file [settings.ini in the root folder]");
    app.add_option("--clock", words.Clock, "virtual: time stands still but for \"tick\"; real: the machine's clock")
        ->check(CLI::IsMember({"virtual", "real"}))
        ->capture_default_str();
    app.add_option("--now", words.Now, "Where the virtual clock starts")->capture_default_str();
    app.add_option("--port", words.Ports,
                   "A serial device behind a port number, ID=PATH, repeatable; a port without one is simulated")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("--strict", words.Strict, "Stop at the first command that fails");
    app.set_version_flag("--version", "quorin-console " + modStringTools::ToBytes(modPDAUI::VersionLine(
                                                              modPDAUI::VersionMajor, modPDAUI::VersionMinor)));
}

} // namespace

Reading ReadOptions(int count, const char* const* words, Options& options) {
    CLI::App app("Quorin without a window: collects the results of a test instrument, driven by commands.",
                 "quorin-console");
    Words said;
    Describe(app, said);
    app.footer(Footer());
    try {
        app.parse(count, words);
        options = Understood(said);
        return Reading::Run;
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? Reading::Shown : Reading::Wrong;
    }
}

} // namespace console
