// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/options.h"

#include "apps/options/command_line.h"
#include "apps/options/folders.h"
#include "backends/loop/clock.h"
#include "journal/reading_words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <string_view>

namespace reader {

namespace {

constexpr std::string_view WholeMoment = "0000-01-01T00:00:00";

void CheckMoment(const char* option, const std::string& text) {
    const std::size_t length = text.size();
    const bool sized = length == std::string_view("2026-11-22").size() ||
                       length == std::string_view("2026-11-22T20:30").size() || length == WholeMoment.size();
    if (!text.empty() && (!sized || !backends::MomentFromText(text + std::string(WholeMoment.substr(length)))))
        apps::Refuse(option, text, "is neither a date, YYYY-MM-DD, nor a moment, YYYY-MM-DDTHH:MM or with :SS");
}

/// Returns what is wrong, or an empty text.
std::string CheckDay(const std::string& text) {
    return backends::DateFromText(text) ? std::string() : text + " is no date of the form YYYY-MM-DD";
}

std::string Today() {
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    ::localtime_r(&now, &today);
    std::ostringstream day;
    day << std::put_time(&today, "%Y-%m-%d");
    return day.str();
}

/// The file of today may be in use. Returns what is wrong, or an empty text.
std::string CheckNotAfterToday(const std::string& text) {
    const std::string why = CheckDay(text);
    return why.empty() && text > Today() ? text + " is after today" : why;
}

std::string CheckPast(const std::string& text) {
    const std::string why = CheckDay(text);
    return why.empty() && text >= Today() ? text + " is not before today" : why;
}

/// A moment may be shorter than the other one: a day has all of its moments.
void CheckOrder(const journal::Period& period) {
    const std::size_t common = std::min(period.From.size(), period.To.size());
    if (period.From.substr(0, common) > period.To.substr(0, common))
        apps::Refuse("--from", period.From, "is after --to " + period.To);
}

} // namespace

void AddPeriod(CLI::App& command, Options& options) {
    command
        .add_option("--from", options.Period.From, "Begin with this day or moment: YYYY-MM-DD or YYYY-MM-DDTHH:MM[:SS]")
        ->type_name("T")
        ->default_str("the first");
    command.add_option("--to", options.Period.To, "End with this day or moment, the whole of it")
        ->type_name("T")
        ->default_str("the last");
}

void AddReadingOptions(CLI::App& command, Options& options) {
    command
        .add_flag("--refused", options.OnlyRefused,
                  "Only readings that are not in their field: all verdicts but " + journal::StoredVerdicts())
        ->default_str("off");
    command.add_flag("--json", options.Json, "Write the lines of the journal as they are")->default_str("off");
}

void AddSourceOptions(CLI::App& command, Options& options) {
    CLI::Option* const port = command.add_flag("--port", options.Port, "Only the bytes of the port");
    CLI::Option* const mailbox = command.add_flag("--mailbox", options.Mailbox, "Only the text of the mailbox");
    port->default_str("both")->excludes(mailbox);
    mailbox->default_str("both");
}

void AddStoryOptions(CLI::App& command, Options& options) {
    command.add_option("DAY", options.Argument, "The day on which it began: YYYY-MM-DD")
        ->type_name("")
        ->required()
        ->check(CheckDay);
    command.add_option("--session", options.Session, "Which session of that day, from 1")
        ->type_name("N")
        ->check([](const std::string& text) {
            const bool isZero = text.find_first_not_of('0') == std::string::npos;
            return isZero ? "counts from 1" : std::string();
        })
        ->default_str("the last");
}

void AddForgetOptions(CLI::App& command, Options& options) {
    CLI::Option_group* const days = command.add_option_group("days", "");
    days->add_option("--before", options.Argument, "Days before this one: YYYY-MM-DD, not after today")
        ->type_name("DATE")
        ->check(CheckNotAfterToday);
    days->add_option("--day", options.Day, "This day alone: YYYY-MM-DD, before today")
        ->type_name("DATE")
        ->check(CheckPast);
    days->require_option(1);
}

void AddArgument(CLI::App& command, Options& options, const char* name, const char* help) {
    command.add_option(name, options.Argument, help)->type_name("")->required();
}

void AddPlaces(CLI::App& app, Options& options) {
    app.add_option("--journal", options.Journal, "The folder of the journal")
        ->type_name("DIR")
        ->default_str("$XDG_STATE_HOME/quorin/journal");
    app.add_option("--root", options.Root, "Only what was done in this root folder")
        ->type_name("DIR")
        ->default_str("all root folders");
}

void CheckOptions(Options& options) {
    CheckMoment("--from", options.Period.From);
    CheckMoment("--to", options.Period.To);
    CheckOrder(options.Period);
    if (!options.Journal.empty())
        return;
    const auto state = apps::StateFolder();
    if (!state)
        throw CLI::ValidationError("--journal", "is needed: neither XDG_STATE_HOME nor HOME is set");
    options.Journal = *state + "/journal";
}

} // namespace reader
