// SPDX-License-Identifier: MIT
#include "apps/quorin-import/import_command.h"

#include "apps/options/device_options.h"
#include "apps/options/folders.h"
#include "apps/start/help.h"

#include <CLI/CLI.hpp>

namespace importer {

namespace {

/// The texts that the command line gives, not yet checked.
struct Words {
    apps::DeviceWords Device{{"desktop", "$XDG_DATA_HOME/quorin", "$XDG_CONFIG_HOME/quorin/settings.ini"}};
    std::vector<std::string> Maps;
    std::string Delimiter = ",";
    std::string LineEnd = "crlf";
};

char DelimiterFrom(const std::string& text) {
    if (text == "tab")
        return '\t';
    constexpr std::string_view Never = "|\"\r\n";
    if (text.size() != 1 || Never.find(text.front()) != std::string_view::npos)
        apps::Refuse("--delimiter", text, "is not one character, such as \";\", or the word tab");
    return text.front();
}

Mapping MappingFrom(const std::string& text) {
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos || sign == 0 || sign + 1 == text.size())
        apps::Refuse("--map", text, "is not COLUMN=FIELD");
    return {text.substr(0, sign), text.substr(sign + 1)};
}

void Understand(const Words& words, Options& options) {
    options.Device = apps::UnderstoodDevice(words.Device);
    options.Device.RealClock = true;   // the register has the day
    if (options.Device.Root.empty()) { // what the window uses
        options.Device.Root = apps::DataFolder().value_or("");
        if (options.Device.Settings.empty())
            options.Device.Settings = apps::SettingsPlace().value_or("");
    }
    options.Delimiter = DelimiterFrom(words.Delimiter);
    if (words.LineEnd != "crlf" && words.LineEnd != "lf")
        apps::Refuse("--line-end", words.LineEnd, "is none of crlf, lf");
    options.LineEnd = words.LineEnd == "lf" ? "\n" : "\r\n";
    for (const std::string& map : words.Maps)
        options.Maps.push_back(MappingFrom(map));
    if (options.Alias.find_first_of(std::string_view("|\r\n\0", 4)) != std::string::npos)
        apps::Refuse("--alias", options.Alias, "has a bar or a line end, which no table can have in a value");
}

void Describe(CLI::App& app, Words& words, Options& options) {
    app.add_option("FILE", options.File, "The CSV file; its first line has the names of the columns")
        ->type_name("")
        ->required();
    app.add_option("--driver", options.Driver, "The driver of the new download")->type_name("NAME")->required();
    app.add_option("--alias", options.Alias, "Alias of the new download")->type_name("NAME")->default_str("none");
    CLI::Option* const map =
        app.add_option("--map", words.Maps, "This column fills the field of another name; repeatable")
            ->type_name("COLUMN=FIELD")
            ->take_last()
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    map->default_str("columns and fields of one name");
    app.add_flag("-n,--dry-run", options.DryRun, "Say what would go where, and change nothing")->default_str("off");
    app.add_flag("--raw", options.Raw, "FILE is what quorin-export --raw has written: make the same table again")
        ->default_str("off")
        ->excludes(map);
    app.add_option("--delimiter", words.Delimiter, "Between the fields: a character, or tab")
        ->type_name("CHAR")
        ->default_str(",");
    app.add_option("--line-end", words.LineEnd, "End of the lines, for --raw")
        ->type_name("crlf|lf")
        ->default_str("crlf");
    apps::AddDeviceOptions(app, words.Device);
}

} // namespace

apps::Reading ReadOptions(int count, const char* const* words, Options& options) {
    CLI::App app("Makes a new download of Quorin from a CSV file.\n\n"
                 "  quorin-import sites.csv --driver \"Climate Meter\" --dry-run    what would go where\n"
                 "  quorin-import sites.csv --driver \"Climate Meter\" --map Place=Site",
                 "quorin-import");
    Words said;
    app.set_version_flag("--version", apps::VersionText("quorin-import"));
    Describe(app, said, options);
    app.footer("A column fills the field whose CSVNAME or FIELDNAME it has. No other program may work on the root\n"
               "folder meanwhile.\n\n" +
               start::ExitStatusHelp());
    start::ShowOneLineEach(app);
    return apps::ReadCommandLine(app, count, words, [&] { Understand(said, options); });
}

} // namespace importer
