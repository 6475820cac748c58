// SPDX-License-Identifier: MIT
#include "apps/quorin/window_options.h"

#include "apps/options/device_options.h"
#include "backends/simulated/device_profiles.h"

#include <CLI/CLI.hpp>

#include <locale>
#include <optional>
#include <sstream>

namespace quorin {

namespace {

constexpr double SmallestScale = 0.5;
constexpr double LargestScale = 4;
constexpr std::int32_t SmallScreen = 160; ///< pixels across; such a screen is too small to read at its own size

/// The texts that the command line gives, not yet checked.
struct Words {
    apps::DeviceWords Device{{"desktop", "$XDG_DATA_HOME/quorin", "$XDG_CONFIG_HOME/quorin/settings.ini"}};
    bool ListPorts = false;
    bool Demo = false;
    std::optional<std::string> Scale;
};

/// The decimal sign is a full stop, whatever the locale.
double ScaleFrom(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double scale = 0;
    if (!(in >> std::noskipws >> scale) || in.peek() != std::istringstream::traits_type::eof() ||
        scale < SmallestScale || scale > LargestScale)
        apps::Refuse("--scale", text, "is no number from 0.5 to 4, such as 1.5");
    return scale;
}

double DefaultScale(const backends::DeviceOptions& device) {
    const auto screen = device.Screen.value_or(backends::ProfileOfType(device.DeviceType).Screen);
    return screen.Width <= SmallScreen ? 2 : 1;
}

Options Understood(const Words& words) {
    Options options;
    options.Device = apps::UnderstoodDevice(words.Device);
    options.Device.RealClock = true;
    options.ListPorts = words.ListPorts;
    options.Demo = words.Demo;
    options.Scale = words.Scale ? ScaleFrom(*words.Scale) : DefaultScale(options.Device);
    return options;
}

std::string Footer(const std::string& keyHelp) {
    return "Devices, each of whose figures an option of its own overrides; a type without a row is as \"other\":\n" +
           apps::DeviceTable() + "\n" + apps::AddressHelp() + R"(
Ports: "ComN" means the first of these that is there, each time that the port is opened:
  1. the ADDRESS of --port N=ADDRESS, in any case
  2. /dev/rfcomm(N-1), a Bluetooth serial device
  3. the N-th of the adapters, /dev/ttyUSB* before /dev/ttyACM*
  4. /dev/ttyS(N-1), a port of the machine's own
--ports tells what is there and what each name means. --port N=/dev/serial/by-id/... stays with one adapter wherever it
is plugged in.

Files: data is in the root folder, $XDG_DATA_HOME/quorin or ~/.local/share/quorin unless --root is given; that of --demo
is in quorin-demo beside it. The settings are in $XDG_CONFIG_HOME/quorin/settings.ini or ~/.config/quorin/settings.ini;
with --root or --demo they are settings.ini in the root folder; --settings goes before both. One program at a time works
on a root folder.
)" + (keyHelp.empty() ? "" : "\nKeys:\n" + keyHelp) +
           "\nExit status: 0 the program ended, 1 a run-time failure, 2 wrong usage, no display, or a root folder "
           "that is in use.";
}

void Describe(CLI::App& app, Words& words) {
    apps::AddDeviceOptions(app, words.Device);
    apps::AddPortOption(app, words.Device, "any other is found by the rule below");
    app.add_flag("--ports", words.ListPorts, "List the serial ports and what they are called, and end");
    app.add_flag("--demo", words.Demo, "Run with a sample driver, and a simulated instrument at port 1");
    app.add_option("--scale", words.Scale,
                   "How many pixels of the screen a pixel of the device takes, 0.5 to 4 [2 on a screen of 160 pixels, "
                   "else 1]");
    app.set_version_flag("--version", apps::VersionText("quorin"));
}

} // namespace

Reading ReadOptions(int count, const char* const* words, const std::string& keyHelp, Options& options) {
    CLI::App app("Quorin: collects the results of a test instrument.", "quorin");
    Words said;
    Describe(app, said);
    app.footer(Footer(keyHelp));
    return apps::ReadCommandLine(app, count, words, [&] { options = Understood(said); });
}

} // namespace quorin
