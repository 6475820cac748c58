// SPDX-License-Identifier: MIT
#include "apps/quorin/problem_report.h"

#include "apps/options/command_line.h"
#include "apps/quorin-journal/sessions.h"
#include "backends/files/host_files.h"
#include "journal/masking.h"
#include "src/text/text.h"

#include <QtGlobal>

#include <fcntl.h>
#include <fstream>
#include <functional>
#include <set>
#include <sys/utsname.h>

namespace quorin {

namespace {

using backends::qt::ReportSource;
using reader::JournalFile;
using reader::Session;

constexpr std::size_t LongestSettings = 100'000; // bytes of a settings file that go into a report
constexpr std::size_t LongestStory = 2'000'000;  // of the commands of a session: its end is what counts

std::string Head(const std::string& title) {
    return "\n== " + title + " ==\n";
}

std::string WordsOf(platform::ErrorNumber error) {
    return modStringTools::ToBytes(platform::ErrorText(error));
}

std::string SettingsPart(const std::string& title, const std::string& path, bool isWhole) {
    std::string part = Head(title);
    std::ifstream file(path);
    if (!file)
        return part + "# there is no such file, or it can't be read\n";
    std::string line;
    while (std::getline(file, line) && part.size() < LongestSettings)
        part += (isWhole ? line : MaskedSetting(line)) + "\n";
    return part;
}

/// What could not be read is a line of the report.
reader::ReadingTold ToldIn(std::string& troubles) {
    return {.NoObject =
                [&troubles](const reader::Entry& entry) {
                    troubles += "# line " + std::to_string(entry.Number) + " of the journal is left out\n";
                },
            .Failed =
                [&troubles](const std::string&) {
                    troubles += "# part of the journal can't be read, or was written by a newer program\n";
                },
            .Ends = [] { return false; }};
}

std::string StoryOf(const Session& session, const std::string& place, const std::vector<JournalFile>& files,
                    bool isWhole) {
    std::string troubles;
    journal::Story story;
    journal::Masking masking;
    journal::Line first = session.First;
    ReadSession(session, files, ToldIn(troubles),
                [&](const journal::Line& line) { story.Take(isWhole ? line : masking.Masked(line)); });
    if (!isWhole)
        first = journal::Masking().Masked(first);
    std::string commands = story.Commands();
    if (commands.size() > LongestStory)
        commands =
            "# the beginning is left out\n" + commands.substr(commands.find('\n', commands.size() - LongestStory) + 1);
    return reader::StoryHead(story, place, first) + troubles + commands;
}

std::vector<JournalFile> FilesOf(const KeptPlaces& places) {
    std::vector<JournalFile> files;
    if (!places.Journal.empty())
        static_cast<void>(reader::FindFiles(places.Journal, places.Root, files));
    return files;
}

std::string StoryPart(const KeptPlaces& places, const std::string& day, bool isWhole) {
    std::string part = Head("what was done on " + day);
    const std::vector<JournalFile> files = FilesOf(places);
    std::string troubles;
    const std::vector<Session> sessions = SessionsOf(day, files, ToldIn(troubles));
    for (std::size_t at = 0; at < sessions.size(); ++at)
        part += StoryOf(sessions[at], "session " + std::to_string(at + 1) + " of " + std::to_string(sessions.size()),
                        files, isWhole) +
                "\n";
    return part + troubles + (sessions.empty() ? "# no session began on this day\n" : "");
}

bool IsPlain(const std::string& value) {
    const bool isPort = value.rfind("Com", 0) == 0;
    return value.find_first_not_of("0123456789+-., ", isPort ? 3 : 0) == std::string::npos;
}

platform::ErrorNumber WriteNew(const backends::FileEntry& entry, const std::string& text) {
    backends::Descriptor file;
    auto error = backends::CreateRegular(entry.Folder, entry.Name, O_WRONLY, file);
    if (error != platform::NoError)
        return error;
    error = backends::WriteAll(file.Number(), text, 0);
    if (error == platform::NoError)
        error = backends::SyncFile(file);
    if (error != platform::NoError)
        static_cast<void>(backends::RemoveFrom(entry.Folder, entry.Name)); // half a report is none
    return error;
}

platform::ErrorNumber WriteOver(backends::FileEntry entry, const std::string& text) {
    backends::Replacement file(std::move(entry));
    auto error = file.Begin();
    if (error == platform::NoError)
        error = backends::WriteAll(file.File(), text, 0);
    return error == platform::NoError ? file.Commit() : error;
}

std::string ReleaseOfSystem() {
    std::ifstream file("/etc/os-release");
    std::string line;
    const std::string name = "PRETTY_NAME=";
    while (std::getline(file, line))
        if (line.rfind(name, 0) == 0)
            return line.substr(name.size());
    return "unknown";
}

} // namespace

std::vector<std::string> DaysOfReport(const KeptPlaces& places) {
    std::set<std::string, std::greater<>> days;
    for (const JournalFile& file : FilesOf(places))
        days.insert(file.Name.Day);
    return {days.begin(), days.end()};
}

std::string ProblemReport(const ReportFacts& facts, const std::string& day, bool isWhole) {
    std::string report = "Quorin: report of a problem\n";
    report += isWhole ? "Nothing is masked: typed texts, values, names and paths are as they were.\n"
                      : "Typed texts, values, names and paths are masked: x is a letter, 0 a digit.\n";
    report += "\nWhat happened (write it here before you send the file):\n\n" + Head("versions");
    for (const auto& [what, which] : facts.Versions)
        report += what + ": " + which + "\n";
    report += SettingsPart("settings.ini", facts.Places.Settings, isWhole);
    report += SettingsPart("window.ini", facts.Places.WindowSettings, isWhole);
    if (day.empty())
        return report + Head("what was done") + "# no journal of this root folder\n";
    return report + StoryPart(facts.Places, day, isWhole);
}

std::string MaskedSetting(const std::string& line) {
    const std::size_t mark = line.find('=');
    const bool isSection = line.substr(0, 1) == "[";
    const bool isComment = line.find_first_of(";#") == 0;
    if (isSection)
        return line;
    if (isComment || mark == std::string::npos)
        return journal::Masked(line);
    const std::string value = line.substr(mark + 1);
    const bool isTyped = line.rfind("ComPort", 0) == 0 && value.rfind("Com", 0) != 0;
    return line.substr(0, mark + 1) + (IsPlain(value) && !isTyped ? value : journal::Masked(value));
}

ReportSource::Outcome SaveReport(const std::string& path, const std::string& text, bool replaces) {
    backends::FileEntry entry;
    auto error = backends::EntryAt(path, entry);
    if (error == platform::NoError)
        error = replaces ? WriteOver(std::move(entry), text) : WriteNew(entry, text);
    if (error == platform::NoError)
        return {};
    if (error == platform::FileExists && !replaces)
        return {.Result = ReportSource::Step::Exists};
    return {.Result = ReportSource::Step::Failed, .Why = WordsOf(error)};
}

std::vector<std::pair<std::string, std::string>> VersionsOfRun(std::int32_t deviceType) {
    struct utsname kernel {};
    const bool isKnown = ::uname(&kernel) == 0;
    return {{"program", apps::VersionText("quorin")},
            {"Qt", qVersion()},
            {"system", ReleaseOfSystem()},
            {"kernel", isKnown ? std::string(kernel.sysname) + " " + kernel.release + " " + kernel.machine : "unknown"},
            {"device type", std::to_string(deviceType)}};
}

} // namespace quorin
