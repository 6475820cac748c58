// SPDX-License-Identifier: MIT
#include "apps/quorin/window_options.h"

#include "apps/options/device_options.h"
#include "apps/options/journal_options.h"
#include "apps/start/help.h"
#include "backends/simulated/device_profiles.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <locale>
#include <optional>
#include <sstream>
#include <system_error>

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
    std::vector<std::string> Files;
    std::optional<std::string> Scale;
    apps::JournalWords Journal;
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
    options.Files = words.Files;
    options.Journal = apps::UnderstoodJournal(words.Journal, apps::UsualJournal());
    if (!options.Journal && !words.Journal.None)
        options.WhyNoJournal = "neither XDG_STATE_HOME nor HOME is set";
    options.UsualScale = DefaultScale(options.Device);
    if (words.Scale)
        options.Scale = ScaleFrom(*words.Scale);
    return options;
}

std::string Footer(const std::string& keyHelp) {
    return "Devices; the other options replace their values, and a type that is not listed is like \"other\":\n" +
           apps::DeviceTable() + "\n" + apps::AddressHelp() + R"(
Ports: each time that port ComN is opened, it is the first of these that exists:
  1. the ADDRESS of --port N=ADDRESS, whether it exists or not
  2. /dev/rfcomm(N-1), a Bluetooth serial device
  3. the N-th of the adapters, /dev/ttyUSB* before /dev/ttyACM*
A port chosen in the window ("Ports…") is remembered like --port. A port of the machine's board, /dev/ttyS*, is used
only if it is chosen. --ports lists what exists and which port each is. --port N=/dev/serial/by-id/... follows one
adapter wherever it is plugged in.

Files: the data is in the root folder, by default $XDG_DATA_HOME/quorin or ~/.local/share/quorin, with --demo in
quorin-demo beside it. The settings are in $XDG_CONFIG_HOME/quorin/settings.ini or ~/.config/quorin/settings.ini, with
--root or --demo in settings.ini of the root folder, with --settings in that file; the limits of the values of a driver
are in NAME.limits beside them, and what the window remembers in window.ini. One program at a time uses a root folder. A draft of a record that is not saved yet is in
$XDG_STATE_HOME/quorin/drafts or ~/.local/state/quorin/drafts. The journal, which quorin-journal reads, is in the folder
journal beside it.
)" + (keyHelp.empty() ? "" : "\nKeys:\n" + keyHelp) +
           "\n" + start::ExitStatusHelp();
}

void Describe(CLI::App& app, Words& words) {
    app.add_option("FILE", words.Files, "Driver packages (.qvd) to install, or a download to open")->type_name("");
    apps::AddDeviceOptions(app, words.Device);
    apps::AddPortOption(app, words.Device, "found as below");
    app.add_flag("--ports", words.ListPorts, "List the serial ports and their numbers, and end");
    app.add_flag("--demo", words.Demo, "Run with a sample driver and a simulated instrument")->default_str("off");
    apps::AddJournalOptions(app, words.Journal, "$XDG_STATE_HOME/quorin/journal");
    app.add_option("--scale", words.Scale, "Magnification of the device's screen, 0.5 to 4")
        ->type_name("F")
        ->default_str("as in the last run");
    app.set_version_flag("--version", apps::VersionText("quorin"));
    start::ShowOneLineEach(app);
}

} // namespace

Reading ReadOptions(int count, const char* const* words, const std::string& keyHelp, Options& options) {
    CLI::App app("Quorin: collects the results of a test instrument.\n\n"
                 "  quorin climate.qvd    installs the driver of this package\n"
                 "  quorin qrn0001.txt    opens this download with its driver",
                 "quorin");
    Words said;
    Describe(app, said);
    app.footer(Footer(keyHelp));
    return apps::ReadCommandLine(app, count, words, [&] {
        options = Understood(said);
        options.Program = apps::ProgramOf("quorin", count, words);
    });
}

std::string FullPath(const std::string& path) {
    std::error_code failed;
    const std::filesystem::path full =
        std::filesystem::weakly_canonical(std::filesystem::absolute(path, failed), failed);
    return failed || !full.is_absolute() ? path : full.string();
}

} // namespace quorin
