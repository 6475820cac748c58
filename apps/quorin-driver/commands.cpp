// SPDX-License-Identifier: MIT
#include "apps/quorin-driver/commands.h"

#include "apps/options/command_line.h"
#include "apps/start/help.h"

#include <CLI/CLI.hpp>

namespace driver {

using start::ExitStatus;

namespace {

struct CommandRow {
    const char* Name;
    const char* Help;
    void (*Describe)(CLI::App& command, Options& options); ///< adds its arguments and options
    ExitStatus (*Run)(const Options& options);
};

void DescribeCheck(CLI::App& command, Options& options) {
    command.add_option("PACKAGE", options.Package, "The driver package, such as climate.qvd")
        ->type_name("")
        ->required();
    command.add_option("--stream", options.Recording, "Say where each result of this recording goes")
        ->type_name("FILE")
        ->default_str("none");
    command
        .add_option("--drivers", options.Drivers, "Compare with the installed drivers: drivers.txt of a data folder")
        ->type_name("FILE")
        ->default_str("none");
    command.add_flag("--json", options.Json, "Write a JSON object a line")->default_str("off");
}

void DescribeNew(CLI::App& command, Options& options) {
    command.add_option("--from", options.Recording, "What the instrument has sent")
        ->type_name("FILE")
        ->required()
        ->default_str("needed");
    command.add_option("-o,--output", options.Output, "Write the package to this new file")
        ->type_name("FILE")
        ->default_str("standard output");
}

constexpr CommandRow Commands[] = {
    {"check", "Say what is wrong in a driver package, by line and column", DescribeCheck, CheckDriver},
    {"new", "Make a first driver package of what an instrument has sent", DescribeNew, NewDriver},
};

} // namespace

ExitStatus DriverMain(int count, const char* const* words) {
    CLI::App app("Checks driver packages, and makes a first one.", "quorin-driver");
    Options options;
    const CommandRow* chosen = nullptr;
    app.set_version_flag("--version", apps::VersionText("quorin-driver"));
    for (const CommandRow& row : Commands) {
        CLI::App* const command = app.add_subcommand(row.Name, row.Help);
        row.Describe(*command, options);
        command->callback([&chosen, &row] { chosen = &row; });
    }
    app.require_subcommand(1);
    app.footer("`quorin-driver COMMAND --help` shows the options of a command.\n\n" + start::ExitStatusHelp());
    start::ShowOneLineEach(app);
    switch (apps::ReadCommandLine(app, count, words, [] {})) {
    case apps::Reading::Shown:
        return ExitStatus::Ended;
    case apps::Reading::Wrong:
        return ExitStatus::NotStarted;
    case apps::Reading::Run:
        break;
    }
    return chosen->Run(options);
}

} // namespace driver
