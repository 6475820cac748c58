// SPDX-License-Identifier: MIT
#include "apps/quorin-console/console_options.h"

#include "apps/options/device_name.h"
#include "apps/options/device_options.h"
#include "apps/options/folders.h"
#include "apps/options/journal_options.h"
#include "apps/quorin-console/script_commands.h"
#include "apps/start/help.h"
#include "backends/loop/clock.h"
#include "backends/simulated/device_profiles.h"

#include <CLI/CLI.hpp>

#include <map>

namespace console {

namespace {

using apps::Refuse;

/// An empty text is a variable of a script that was not set, and no wish.
const CLI::Validator NotEmpty([](std::string& text) { return std::string(text.empty() ? "it is empty" : ""); }, "");

constexpr const char* DefaultMoment = "2007-03-05T09:30:00";

/// The texts that the command line gives, not yet checked.
struct Words {
    apps::DeviceWords Device{{"0", "$XDG_DATA_HOME/quorin", "settings.ini in the root folder"}};
    std::string Clock; ///< empty if none is given
    std::string Now = DefaultMoment;
    std::string Script;
    bool ListPorts = false;
    bool Strict = false;
    bool PlainText = false;
    bool Verdicts = false;
    std::string Recover;
    std::string Station;
    std::string HandOver;
    std::string Export;
    std::string Import;
    std::string Name;
    bool Daily = false;
    apps::JournalWords Journal;
};

std::string DefaultRoot() {
    if (const auto data = apps::DataFolder())
        return *data;
    throw CLI::ValidationError("--root", "is needed: neither XDG_DATA_HOME nor HOME is set");
}

std::int64_t MomentFrom(const std::string& text) {
    const auto moment = backends::MomentFromText(text);
    if (!moment)
        Refuse("--now", text, "is no moment of the form YYYY-MM-DDTHH:MM:SS");
    return *moment;
}

Recovery RecoveryOf(const std::string& word) {
    if (word == "put")
        return Recovery::Put;
    return word == "forget" ? Recovery::Forget : Recovery::List;
}

/// With several ports of the command line, the settings say which of them it is.
std::optional<StationPlan> StationOf(const Words& words, const backends::DeviceOptions& device) {
    if (words.Station.empty()) {
        if (words.Daily)
            throw CLI::ValidationError("--daily", "is for a station: --station DRIVER");
        return std::nullopt;
    }
    StationPlan plan{.Root = device.Root, .Driver = modStringTools::FromBytes(words.Station), .Daily = words.Daily};
    if (device.Ports.Pinned.size() == 1)
        plan.Port = device.Ports.Pinned.begin()->first;
    return plan;
}

Options Understood(const Words& words) {
    Options options;
    options.Device = apps::UnderstoodDevice(words.Device);
    if (options.Device.Root.empty())
        options.Device.Root = DefaultRoot();
    options.Station = StationOf(words, options.Device);
    const bool isStation = options.Station.has_value();
    options.Device.RealClock = words.Clock == "real" || (isStation && words.Clock.empty());
    options.Device.StartMoment = MomentFrom(words.Now);
    options.Script = words.Script;
    options.ListPorts = words.ListPorts;
    options.Strict = words.Strict;
    options.PlainText = words.PlainText;
    options.Verdicts = words.Verdicts || isStation;
    if (!words.Recover.empty())
        options.Recover = RecoveryOf(words.Recover);
    const auto state = apps::StateFolder();
    if (options.Recover != Recovery::None && !state)
        throw CLI::ValidationError("--recover", "needs a place: neither XDG_STATE_HOME nor HOME is set");
    if (state && (options.Recover != Recovery::None || options.Device.RealClock))
        options.Drafts = *state + "/drafts";
    options.Journal = apps::UnderstoodJournal(words.Journal, isStation ? apps::UsualJournal() : std::nullopt);
    options.HandOver = words.HandOver;
    options.Export = words.Export;
    options.Import = words.Import;
    options.DeviceName = words.Name.empty() ? apps::NameOfDevice() : words.Name;
    if (const auto kept = apps::UnderstoodJournal(words.Journal, apps::UsualJournal()))
        options.HandOverJournal = kept->Folder;
    if (options.Journal)
        options.Journal->Root = options.Device.Root;
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
    return "Devices; the other options replace their values, and a type that is not listed is like \"other\":\n" +
           apps::DeviceTable() + "\n" + apps::AddressHelp() + "\nKeys: " + KeyHelp() +
           ".\n\nCommands, one a line, from SCRIPT or standard input:\n" + CommandHelp() + R"(
TEXT is the rest of the line, or a JSON string if it begins with a double quote. Rows and columns count from 0. Empty
lines and lines that begin with # are skipped.

Answers and events are written to standard output, one JSON object a line. {"ready":N} comes before each command that
is read; N is the number of open message boxes and prompts. {"done":WORD} ends a command, with "error" if it failed.
With --text, only what a person reads is written: headlines, screens, message boxes, warnings, failed commands.

Files: the volume Card:\ is the folder Card in the root folder, c:\ipc\ is c/ipc, .\ is the root folder itself. Line
databases are SQLite files, Databases/NAME.sqlite in the root folder. Settings are kept in settings.ini, and the
limits of the values of a driver in NAME.limits beside it.

With --clock real a draft of the record on the screen is kept in $XDG_STATE_HOME/quorin/drafts or
~/.local/state/quorin/drafts until the record is saved. --recover writes an object for each draft of the root folder:
list shows them, put writes each to its record if that is unchanged, forget removes them.

Text is measured with fixed metrics: at font size s a character is (3s+2)/4 pixels wide, a line (15s+4)/8 high. A scroll
bar is 13 pixels wide. After "jump" each timer that fell due meanwhile fires once.

)" + start::ExitStatusHelp();
}

void Describe(CLI::App& app, Words& words) {
    app.add_option("SCRIPT", words.Script, "File with the commands")->type_name("FILE")->default_str("standard input");
    apps::AddDeviceOptions(app, words.Device);
    app.add_option("--clock", words.Clock, "virtual: only tick and jump pass time; real: the machine's clock")
        ->check(CLI::IsMember({"virtual", "real"}).description(""))
        ->type_name("virtual|real")
        ->default_str("virtual; station: real");
    app.add_option("--now", words.Now, "Start of the virtual clock")->type_name("MOMENT")->capture_default_str();
    apps::AddPortOption(app, words.Device, "simulated");
    app.add_flag("--ports", words.ListPorts, "List the serial ports of the machine, an object a line, and end");
    app.add_flag("--strict", words.Strict, "Stop at the first command that fails")->default_str("off");
    app.add_flag("--verdicts", words.Verdicts, "Report what becomes of each reading, and each record that is saved")
        ->default_str("off");
    app.add_option("--recover", words.Recover,
                   "Treat the records that were on the screen and not saved when a program ended, and end")
        ->check(CLI::IsMember({"list", "put", "forget"}).description(""))
        ->type_name("list|put|forget");
    app.add_option("--station", words.Station,
                   "Collect the readings of this driver without a person; commands are read too")
        ->type_name("DRIVER")
        ->check(NotEmpty)
        ->default_str("off")
        ->excludes("--recover")
        ->excludes("--ports");
    app.add_flag("--daily", words.Daily, "Station: begin a new download each day")->default_str("off");
    app.add_option("--hand-over", words.HandOver,
                   "Copy what is new, and the journal, to this folder, and end; another program may be running")
        ->type_name("DIR")
        ->excludes("--recover")
        ->excludes("--ports")
        ->excludes("--station")
        ->check(NotEmpty);
    app.add_option("--export", words.Export,
                   "Write all data, and the journal, as one zip file, and end; another program may be running")
        ->type_name("ZIP")
        ->excludes("--recover")
        ->excludes("--ports")
        ->excludes("--station")
        ->excludes("--hand-over")
        ->check(NotEmpty);
    app.add_option("--import", words.Import, "Take in what is new in such a zip file, and end")
        ->type_name("ZIP")
        ->excludes("--recover")
        ->excludes("--ports")
        ->excludes("--station")
        ->excludes("--hand-over")
        ->excludes("--export")
        ->check(NotEmpty);
    app.add_option("--name", words.Name, "Hand-over: name of this device")
        ->type_name("NAME")
        ->default_str("that of the machine");
    apps::AddJournalOptions(app, words.Journal, "none; station: the usual one");
    app.add_flag("--text", words.PlainText, "Write for a person: screens as text, not JSON")->default_str("off");
    app.set_version_flag("--version", apps::VersionText("quorin-console"));
    start::ShowOneLineEach(app);
}

} // namespace

Reading ReadOptions(int count, const char* const* words, Options& options) {
    CLI::App app("Quorin without a window: collects the results of a test instrument, driven by commands.",
                 "quorin-console");
    Words said;
    Describe(app, said);
    app.footer(Footer());
    return apps::ReadCommandLine(app, count, words, [&] {
        options = Understood(said);
        options.Program = apps::ProgramOf("quorin-console", count, words);
    });
}

} // namespace console
