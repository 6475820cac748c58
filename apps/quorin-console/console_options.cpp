// SPDX-License-Identifier: MIT
#include "apps/quorin-console/console_options.h"

#include "apps/options/device_options.h"
#include "apps/quorin-console/script_commands.h"
#include "backends/loop/clock.h"
#include "backends/simulated/device_profiles.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <map>

namespace console {

namespace {

using apps::Refuse;

constexpr const char* DefaultMoment = "2007-03-05T09:30:00";

/// The texts that the command line gives, not yet checked.
struct Words {
    apps::DeviceWords Device{{"0", "$XDG_DATA_HOME/quorin", "settings.ini in the root folder"}};
    std::string Clock = "virtual";
    std::string Now = DefaultMoment;
    std::string Script;
    bool Strict = false;
};

std::string DefaultRoot() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data != '\0')
        return std::string(data) + "/quorin";
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return std::string(home) + "/.local/share/quorin";
    throw CLI::ValidationError("--root", "is needed: neither XDG_DATA_HOME nor HOME is set");
}

std::int64_t MomentFrom(const std::string& text) {
    const auto moment = backends::MomentFromText(text);
    if (!moment)
        Refuse("--now", text, "is no moment of the form YYYY-MM-DDTHH:MM:SS");
    return *moment;
}

Options Understood(const Words& words) {
    Options options;
    options.Device = apps::UnderstoodDevice(words.Device);
    if (options.Device.Root.empty())
        options.Device.Root = DefaultRoot();
    options.Device.RealClock = words.Clock == "real";
    options.Device.StartMoment = MomentFrom(words.Now);
    options.Script = words.Script;
    options.Strict = words.Strict;
    return options;
}

std::string KeyHelp() {
    std::map<std::int32_t, std::string> names;
    for (const auto& profile : backends::DeviceProfiles()) {
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
           apps::DeviceTable() + "\n" + apps::AddressHelp() + "\nKeys: " + KeyHelp() +
           ".\n\nCommands, one a line, from SCRIPT or standard input:\n" + CommandHelp() + R"(
TEXT is the rest of the line as it stands or, where it begins with a double quote, a JSON string. Empty lines and lines
that begin with # are skipped.

Answers and events are written to standard output, one JSON object a line. {"ready":N} comes before each command that
is read; N above 0 tells that N message boxes or prompts wait. {"done":WORD} closes a command, with "error" when it
could not be carried out.

Files: the volume Card:\ is the folder Card in the root folder, c:\ipc\ is c/ipc, .\ is the root folder itself. Line
databases are SQLite files, Databases/NAME.sqlite in the root folder. Settings are kept in settings.ini.

Text is measured with fixed metrics: at font size s a character is (3s+2)/4 pixels wide, a line (15s+4)/8 high. A scroll
bar is 13 pixels wide. After "jump" each timer that fell due meanwhile fires once.

Exit status: 0 the program or the input ended, 1 a run-time failure, 2 wrong usage, 3 a command failed under --strict, 4
standard output could not be written.)";
}

void Describe(CLI::App& app, Words& words) {
    app.add_option("SCRIPT", words.Script, "File with the commands; standard input without one");
    apps::AddDeviceOptions(app, words.Device);
    app.add_option("--clock", words.Clock, "virtual: time stands still but for \"tick\"; real: the machine's clock")
        ->check(CLI::IsMember({"virtual", "real"}))
        ->capture_default_str();
    app.add_option("--now", words.Now, "Where the virtual clock starts")->capture_default_str();
    apps::AddPortOption(app, words.Device, "any other is simulated");
    app.add_flag("--strict", words.Strict, "Stop at the first command that fails");
    app.set_version_flag("--version", apps::VersionText("quorin-console"));
}

} // namespace

Reading ReadOptions(int count, const char* const* words, Options& options) {
    CLI::App app("Quorin without a window: collects the results of a test instrument, driven by commands.",
                 "quorin-console");
    Words said;
    Describe(app, said);
    app.footer(Footer());
    return apps::ReadCommandLine(app, count, words, [&] { options = Understood(said); });
}

} // namespace console
