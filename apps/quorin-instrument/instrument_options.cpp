// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/instrument_options.h"

#include "apps/start/help.h"

#include <CLI/CLI.hpp>

namespace instrument {

namespace {

constexpr const char* Description =
    "A simulated instrument: sends a recording or made-up results over a serial line or into a mailbox.";

constexpr const char* Footer =
    R"(Without --device, --mailbox and --print the line is a pseudo terminal. Its path is the first line of standard output. It
waits for a reader, pauses while the reader is away, and goes on from there: nothing is sent twice, and what the reader
had not read when it went is lost. Of --device, --mailbox, --print and --link only one can be given.

With --ask each line of standard input asks for something: the name of a result, or its number in the list that is shown
first; "all" for one of each; "stranger" for a result of an instrument that has not connected; "unplug" and "plug" for
the pseudo terminal's cable; "every N" for a result each N seconds, 0 for no more; "quit". While no reader is there
nothing is sent. The end of the input ends the program.

A fault is made in each record, or with a number N in each N-th one, but never in the record that connects. STREAM must
not follow a fault without a number.

)";

std::string CheckIdentity(const std::string& text) {
    return FitsInATag(text) ? std::string() : "quotes, brackets, bars and line ends can't be sent";
}

std::string CheckKinds(const std::string& text) {
    std::vector<ResultKind> kinds;
    return ReadKinds(text, kinds) ? std::string() : "expected NAME or NAME=UNIT, parted by commas";
}

std::string CheckNotNegative(const std::string& text) {
    return text.find('-') == std::string::npos ? std::string() : "expected 0 or more";
}

std::string CheckSpeed(const std::string& text) {
    double speed = 0;
    const bool sound = CLI::detail::lexical_cast(text, speed) && (speed == 0 || (speed >= 0.001 && speed <= 1e6));
    return sound ? std::string() : "expected 0, or a number from 0.001 to 1000000";
}

/// Checks the number of a fault option; the text is empty if the option has no number.
std::string CheckEvery(const std::string& text) {
    int every = 1;
    const bool sound = text.empty() || (CLI::detail::lexical_cast(text, every) && every > 0);
    return sound ? std::string() : "expected a number from 1 on, not " + text;
}

void AddStreamOptions(CLI::App& app, CommandLine& line, std::string& types) {
    auto* stream = app.add_option("STREAM", line.StreamFile, "Recording to send, unchanged");
    app.add_option("--times", line.Times, "STREAM has times: play it N times as fast, 0 for at once")
        ->type_name("N")
        ->default_str("STREAM has none")
        ->check(CheckSpeed)
        ->needs(stream);
    app.add_option("--count", line.MadeUp.Count, "Number of results to make up, 0 for no end; not with STREAM")
        ->type_name("N")
        ->check(CheckNotNegative)
        ->capture_default_str()
        ->excludes(stream);
    app.add_option("--seed", line.MadeUp.Seed, "Seed of the made-up values and faults")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--identity", line.MadeUp.Identity, "Name of the instrument; not with STREAM")
        ->type_name("TEXT")
        ->check(CheckIdentity)
        ->capture_default_str()
        ->excludes(stream);
    app.add_option("--types", types, "Results in turn, each NAME or NAME=UNIT; not with STREAM")
        ->type_name("LIST")
        ->check(CheckKinds)
        ->default_str("Moisture,Temperature,Humidity")
        ->excludes(stream);
}

void AddOutletOptions(CLI::App& app, CommandLine& line) {
    auto* device = app.add_option("--device", line.Device, "Send over this serial device, at 9600 baud 8N1")
                       ->default_str("a pseudo terminal");
    auto* mailbox =
        app.add_option("--mailbox", line.Mailbox, "Send into this mailbox folder, a delivery for each record")
            ->default_str("none");
    auto* print =
        app.add_flag("--print", line.Print, "Write to standard output as fast as possible")->default_str("off");
    auto* link =
        app.add_option("--link", line.Link, "Make a symbolic link to the pseudo terminal")->default_str("none");
    device->type_name("PATH")->excludes(mailbox)->excludes(print)->excludes(link);
    mailbox->type_name("DIR")->excludes(print)->excludes(link);
    link->type_name("PATH")->excludes(print);
}

void AddAskOption(CLI::App& app, CommandLine& line) {
    auto* ask = app.add_flag("--ask", line.Ask, "Send what a line of standard input asks for")->default_str("off");
    for (const char* const other : {"STREAM", "--times", "--count", "--print", "--interval"}) {
        ask->excludes(app.get_option(other));
    }
}

void AddPaceOptions(CLI::App& app, CommandLine& line, std::optional<std::int32_t>& interval,
                    std::optional<std::int32_t>& linger) {
    CLI::Option* const times = app.get_option("--times");
    app.add_flag("--fast", line.Play.Fast, "Send as fast as it is read, not at 9600 baud")
        ->default_str("off")
        ->excludes(times);
    app.add_option("--interval", interval, "Pause after each result in milliseconds")
        ->type_name("MS")
        ->default_str("2000; 0 with STREAM, --print or --fast")
        ->excludes(times)
        ->check(CheckNotNegative);
    app.add_option("--linger", linger, "Time to stay after the last result in milliseconds")
        ->type_name("MS")
        ->default_str("until all is read")
        ->check(CheckNotNegative);
}

struct FaultOption {
    const char* Name;
    int FaultPlan::*Every;
    const char* Help;
};

constexpr FaultOption FaultOptions[] = {
    {"--noise", &FaultPlan::Noise, "Send meaningless lines before a record"},
    {"--split-lines", &FaultPlan::SplitLines,
     "Send lines in pieces with pauses; in a mailbox, a record in two deliveries"},
    {"--wrong-origin", &FaultPlan::WrongOrigin, "Send a record as an instrument that has not connected"},
    {"--lose-end-tag", &FaultPlan::LoseEndTag, "Leave out the last line of a record"},
    {"--drop-line", &FaultPlan::DropLine, "Leave out a line between the first and the last"},
};

void AddFaultOptions(CLI::App& app, FaultPlan& plan) {
    for (const FaultOption& fault : FaultOptions) {
        app.add_option_function<std::string>(
               fault.Name,
               [&plan, &fault](const std::string& number) {
                   plan.*fault.Every = number.empty() ? 1 : std::stoi(number);
               },
               fault.Help + std::string(" [off]"))
            ->type_name("[N]")
            ->expected(0, 1)
            ->check(CheckEvery)
            ->excludes(app.get_option("--times"))
            ->group("Faults");
    }
}

} // namespace

bool ReadCommandLine(int argc, char** argv, CommandLine& line, start::ExitStatus& exitStatus) {
    CLI::App app(Description, "quorin-instrument");
    app.footer(Footer + start::ExitStatusHelp());
    app.set_version_flag("--version", QUORIN_VERSION);
    std::string types;
    std::optional<std::int32_t> interval;
    std::optional<std::int32_t> linger;
    AddStreamOptions(app, line, types);
    AddOutletOptions(app, line);
    AddPaceOptions(app, line, interval, linger);
    AddAskOption(app, line);
    AddFaultOptions(app, line.Play.Faults);
    start::ShowOneLineEach(app);
    start::NameTheProgram(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitStatus = app.exit(error) == 0 ? start::ExitStatus::Ended : start::ExitStatus::NotStarted;
        return false;
    }
    line.MadeUp.Kinds = ClimateKinds();
    if (!types.empty()) {
        ReadKinds(types, line.MadeUp.Kinds);
    }
    line.Play.Seed = line.MadeUp.Seed;
    line.Play.InDeliveries = !line.Mailbox.empty();
    line.Play.Fast = line.Play.Fast || line.Print;
    const bool atOnce = line.Ask || line.Play.Fast || !line.StreamFile.empty();
    line.Play.Interval = std::chrono::milliseconds(interval.value_or(atOnce ? 0 : 2000));
    if (linger) {
        line.Stay = std::chrono::milliseconds(*linger);
    }
    return true;
}

} // namespace instrument
