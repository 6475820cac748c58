// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"

#include "apps/options/command_line.h"
#include "apps/start/help.h"

#include <CLI/CLI.hpp>

namespace reader {

using start::ExitStatus;

namespace {

struct CommandRow {
    const char* Name;
    const char* Help;
    void (*Describe)(CLI::App& command, Options& options); ///< adds its arguments and options
    void (*Run)(Job& job);
    bool NeedsRoot; ///< a root folder that was asked for must have a journal
};

void NoOptions(CLI::App&, Options&) {
}

constexpr CommandRow Commands[] = {
    {"list", "Show the files: day, root folder, size, programs that ran, what became of readings", NoOptions, ListFiles,
     true},
    {"readings", "Show the readings and what became of them, one a line",
     [](CLI::App& command, Options& options) {
         AddReadingOptions(command, options);
         AddPeriod(command, options);
     },
     ShowReadings, true},
    {"follow", "Show readings as they come, until a signal ends the program", AddReadingOptions, FollowReadings, false},
    {"history", "Show what happened to each record of a table, and what led to it",
     [](CLI::App& command, Options& options) {
         AddArgument(command, options, "FILE", "The table, such as qrn0001.txt");
     },
     ShowHistory, true},
    {"verify", "Compare the downloads with what was saved, and find readings that are nowhere", NoOptions, VerifyTables,
     true},
    {"raw", "Write the bytes of the port and the text of the mailbox as they came",
     [](CLI::App& command, Options& options) {
         AddSourceOptions(command, options);
         AddPeriod(command, options);
     },
     WriteRaw, true},
    {"export", "Write them as a recording with times, for quorin-instrument --times",
     [](CLI::App& command, Options& options) {
         AddSourceOptions(command, options);
         AddPeriod(command, options);
     },
     ExportRecording, true},
    {"story", "Write what was done in a session as a script of quorin-console", AddStoryOptions, WriteStory, false},
    {"forget", "Remove the files of a day, or of all days before one", AddForgetOptions, ForgetDays, false},
};

ExitStatus Run(const CommandRow& command, const Options& options) {
    Job job{.Asked = options, .Files = {}, .Told = {}};
    if (const std::string why = FindFiles(options.Journal, options.Root, job.Files); !why.empty()) {
        job.Told.Failed("can't read the folder " + options.Journal + ": " + why);
        return ExitStatus::NotStarted;
    }
    if (command.NeedsRoot && !options.Root.empty() && job.Files.empty())
        job.Told.Refused("no journal of that root folder");
    else
        command.Run(job);
    job.Told.Flush();
    return job.Told.Status();
}

} // namespace

ExitStatus JournalMain(int count, const char* const* words) {
    CLI::App app("Reads the journal: what the programs received, what became of it, and what a person did.",
                 "quorin-journal");
    Options options;
    const CommandRow* chosen = nullptr;
    AddPlaces(app, options);
    app.set_version_flag("--version", apps::VersionText("quorin-journal"));
    for (const CommandRow& row : Commands) {
        CLI::App* const command = app.add_subcommand(row.Name, row.Help);
        row.Describe(*command, options);
        command->fallthrough(); // the options of all commands may follow
        command->callback([&chosen, &row] { chosen = &row; });
    }
    app.require_subcommand(1);
    app.footer("`quorin-journal COMMAND --help` shows the options of a command.\n\n" + start::ExitStatusHelp());
    start::ShowOneLineEach(app);
    switch (apps::ReadCommandLine(app, count, words, [&] { CheckOptions(options); })) {
    case apps::Reading::Shown:
        return ExitStatus::Ended;
    case apps::Reading::Wrong:
        return ExitStatus::NotStarted;
    case apps::Reading::Run:
        break;
    }
    return Run(*chosen, options);
}

} // namespace reader
