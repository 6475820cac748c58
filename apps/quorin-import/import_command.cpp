// SPDX-License-Identifier: MIT
#include "apps/quorin-import/import_command.h"

#include "apps/options/csv_options.h"
#include "apps/options/device_options.h"
#include "apps/start/help.h"

#include <CLI/CLI.hpp>

namespace importer {

namespace {

/// The texts that the command line gives, not yet checked.
struct Words {
    apps::DeviceWords Device{{"desktop", "$XDG_DATA_HOME/quorin", "$XDG_CONFIG_HOME/quorin/settings.ini"}};
    std::vector<std::string> Maps;
    apps::CsvWords Csv;
};

Mapping MappingFrom(const std::string& text) {
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos || sign == 0 || sign + 1 == text.size())
        apps::Refuse("--map", text, "is not COLUMN=FIELD");
    return {text.substr(0, sign), text.substr(sign + 1)};
}

void Understand(const Words& words, Options& options) {
    options.Device = apps::UnderstoodDevice(words.Device);
    options.Device.RealClock = true; // the register has the day
    apps::UseThoseOfTheWindow(options.Device);
    options.Delimiter = apps::DelimiterOf(words.Csv);
    options.LineEnd = apps::LineEndOf(words.Csv);
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
    apps::AddCsvOptions(app, words.Csv, "End of the lines, for --raw");
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
