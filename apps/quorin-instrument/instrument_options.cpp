// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/instrument_options.h"

#include <CLI/CLI.hpp>

namespace instrument {

namespace {

constexpr const char* Description =
    "A simulated instrument: plays a recording or made-up results onto a serial line or into a mailbox.";

constexpr const char* Footer =
    "Without --device, --mailbox and --print the line is a pseudo terminal, whose path is the first line of standard\n"
    "output. It waits for a reader, pauses while the reader is away, and goes on where it was: nothing is sent twice,\n"
    "and what the reader had not read when it went is lost.\n"
    "A fault falls on each record, or with a number N on each N-th one; connect records are left alone. Write STREAM\n"
    "in front of a fault that has no number.\n"
    "Exit status: 0 done or told to stop, 1 failure, 2 wrong usage.";

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

/// Checks the number of a fault option; the text is empty if the option has no number.
std::string CheckEvery(const std::string& text) {
    int every = 1;
    const bool sound = text.empty() || (CLI::detail::lexical_cast(text, every) && every > 0);
    return sound ? std::string() : "expected a number from 1 on, not " + text;
}

void AddStreamOptions(CLI::App& app, CommandLine& line, std::string& types) {
    auto* stream = app.add_option("STREAM", line.StreamFile, "Plays this recording, to the byte.");
    app.add_option("--count", line.MadeUp.Count, "Makes up so many results; 0 goes on without end.")
        ->type_name("N")
        ->check(CheckNotNegative)
        ->capture_default_str()
        ->excludes(stream);
    app.add_option("--seed", line.MadeUp.Seed, "Chooses the values and the faults; the same seed gives the same bytes.")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--identity", line.MadeUp.Identity, "Introduces itself under this name.")
        ->type_name("TEXT")
        ->check(CheckIdentity)
        ->capture_default_str()
        ->excludes(stream);
    app.add_option("--types", types, "Makes up these results in turn, each NAME or NAME=UNIT.")
        ->type_name("LIST")
        ->check(CheckKinds)
        ->default_str("Moisture,Temperature,Humidity")
        ->excludes(stream);
}

void AddOutletOptions(CLI::App& app, CommandLine& line) {
    auto* device = app.add_option("--device", line.Device, "Plays onto this serial device, set to 9600 baud 8N1.");
    auto* mailbox = app.add_option("--mailbox", line.Mailbox, "Serves this mailbox folder, one delivery a record.");
    auto* print = app.add_flag("--print", line.Print, "Writes the stream to standard output, at once and unpaced.");
    auto* link =
        app.add_option("--link", line.Link, "Makes a symbolic link to the pseudo terminal, a name that stays.");
    device->type_name("PATH")->excludes(mailbox)->excludes(print)->excludes(link);
    mailbox->type_name("DIR")->excludes(print)->excludes(link);
    link->type_name("PATH")->excludes(print);
}

void AddPaceOptions(CLI::App& app, CommandLine& line, std::optional<std::int32_t>& interval,
                    std::optional<std::int32_t>& linger) {
    app.add_flag("--fast", line.Play.Fast, "Plays as fast as it is read, not as 9600 baud (960 bytes a second) would.");
    app.add_option("--interval", interval,
                   "Pauses so many milliseconds after each result; 2000 unless told, 0 for a recording and for --fast.")
        ->type_name("MS")
        ->check(CheckNotNegative);
    app.add_option("--linger", linger,
                   "Stays so many milliseconds at the end of the stream, not until the reader goes or has taken all.")
        ->type_name("MS")
        ->check(CheckNotNegative);
}

struct FaultOption {
    const char* Name;
    int FaultPlan::*Every;
    const char* Help;
};

constexpr FaultOption FaultOptions[] = {
    {"--noise", &FaultPlan::Noise, "Sends lines of rubbish in front of a record."},
    {"--split-lines", &FaultPlan::SplitLines,
     "Sends the lines in pieces with pauses between them; in a mailbox the record in two deliveries."},
    {"--wrong-origin", &FaultPlan::WrongOrigin, "Sends it as an instrument that never introduced itself."},
    {"--lose-end-tag", &FaultPlan::LoseEndTag, "Loses the closing line."},
    {"--drop-line", &FaultPlan::DropLine, "Loses a line between the first and the last."},
};

void AddFaultOptions(CLI::App& app, FaultPlan& plan) {
    for (const FaultOption& fault : FaultOptions) {
        app.add_option_function<std::string>(
               fault.Name,
               [&plan, &fault](const std::string& number) {
                   plan.*fault.Every = number.empty() ? 1 : std::stoi(number);
               },
               fault.Help)
            ->type_name("[N]")
            ->expected(0, 1)
            ->check(CheckEvery)
            ->group("Faults");
    }
}

} // namespace

bool ReadCommandLine(int argc, char** argv, CommandLine& line, int& exitStatus) {
    CLI::App app(Description, "quorin-instrument");
    app.footer(Footer);
    app.set_version_flag("--version", QUORIN_VERSION);
    std::string types;
    std::optional<std::int32_t> interval;
    std::optional<std::int32_t> linger;
    AddStreamOptions(app, line, types);
    AddOutletOptions(app, line);
    AddPaceOptions(app, line, interval, linger);
    AddFaultOptions(app, line.Play.Faults);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitStatus = app.exit(error) == 0 ? 0 : 2;
        return false;
    }
    line.MadeUp.Kinds = ClimateKinds();
    if (!types.empty()) {
        ReadKinds(types, line.MadeUp.Kinds);
    }
    line.Play.Seed = line.MadeUp.Seed;
    line.Play.InDeliveries = !line.Mailbox.empty();
    line.Play.Fast = line.Play.Fast || line.Print;
    const bool atOnce = line.Play.Fast || !line.StreamFile.empty();
    line.Play.Interval = std::chrono::milliseconds(line.Print ? 0 : interval.value_or(atOnce ? 0 : 2000));
    if (linger) {
        line.Stay = std::chrono::milliseconds(*linger);
    }
    return true;
}

} // namespace instrument
