// SPDX-License-Identifier: MIT
#include "apps/quorin/problem_report.h"

#include "apps/options/command_line.h"
#include "apps/quorin-journal/sessions.h"
#include "backends/files/host_files.h"
#include "journal/glance.h"
#include "journal/masking.h"
#include "src/text/text.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <set>
#include <sys/stat.h>
#include <sys/utsname.h>

namespace quorin {

namespace {

using backends::qt::ReportSource;
using reader::JournalFile;

constexpr std::size_t LongestSettings = 100'000; // bytes of a settings file that go into a report
constexpr std::size_t LongestStory = 2'000'000;  // bytes of what was done on a day

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
    while (std::getline(file, line)) {
        if (part.size() >= LongestSettings)
            return part + "# the rest is left out\n";
        part += (isWhole ? line : MaskedSetting(line)) + "\n";
    }
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

/// The parts of the sessions that are in the file of a day: one that began the day before goes on there with a line
/// that says all that its first line did.
class StoriesOfDay {
public:
    explicit StoriesOfDay(bool isWhole) : IsWhole_(isWhole) {}

    void Take(journal::Line line) {
        const std::string event = journal::TextIn(line, "event");
        if (event == "start" || event == "day") {
            line["event"] = "start"; // of what the day has of it
            Parts_.emplace_back();
        }
        if (Parts_.empty())
            return;
        Part& part = Parts_.back();
        const journal::Line shown = IsWhole_ ? line : part.Mask.Masked(line);
        if (part.First.is_null())
            part.First = shown;
        part.Story.Take(shown);
    }

    /// The problem is at the end: what is too much loses its beginning.
    std::string Text() const {
        std::string all;
        for (std::size_t at = 0; at < Parts_.size(); ++at)
            all += reader::StoryHead(Parts_[at].Story,
                                     "session " + std::to_string(at + 1) + " of " + std::to_string(Parts_.size()),
                                     Parts_[at].First) +
                   Parts_[at].Story.Commands() + "\n";
        if (all.size() > LongestStory)
            all = "# the beginning is left out\n" + all.substr(all.find('\n', all.size() - LongestStory) + 1);
        return Parts_.empty() ? "# nothing that the journal can show was done on this day\n" : all;
    }

private:
    struct Part {
        journal::Line First;
        journal::Story Story;
        journal::Masking Mask;
    };
    std::vector<Part> Parts_;
    bool IsWhole_;
};

std::vector<JournalFile> FilesOf(const KeptPlaces& places) {
    std::vector<JournalFile> files;
    if (!places.Journal.empty())
        static_cast<void>(reader::FindFiles(places.Journal, places.Root, files));
    return files;
}

std::string StoryPart(const KeptPlaces& places, const std::string& day, bool isWhole) {
    std::string troubles;
    StoriesOfDay stories(isWhole);
    for (const JournalFile& file : FilesOf(places))
        if (file.Name.Day == day)
            ReadEntries(file, ToldIn(troubles), [&](const reader::Entry& entry) { stories.Take(entry.Object()); });
    return Head("what was done on " + day) + troubles + stories.Text();
}

/// Keys that the program itself writes. Of those that are marked, a number stays: it is a size, a colour or a place.
struct KnownKey {
    std::string_view Name;
    bool IsNumber = false;
};
constexpr std::array<KnownKey, 10> Keys = {{{"ComPort"},
                                            {"RFCOMM_Path"},
                                            {"StorageVolume"},
                                            {"FONTSIZE", true},
                                            {"COLOUR", true},
                                            {"Font"},
                                            {"DummyTest", true},
                                            {"Place", true},
                                            {"Scale", true},
                                            {"HintsDone"}}};

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// "Pin1" and on are the ports that the window remembers.
const KnownKey* KeyOf(std::string_view name) {
    static constexpr KnownKey Pin{"Pin"};
    if (name.substr(0, Pin.Name.size()) == Pin.Name && IsNumber(name.substr(Pin.Name.size())))
        return &Pin;
    const auto key = std::find_if(Keys.begin(), Keys.end(), [name](const KnownKey& each) { return each.Name == name; });
    return key == Keys.end() ? nullptr : &*key;
}

bool Stays(const KnownKey& key, std::string_view value) {
    if (key.Name == "ComPort")
        return value.substr(0, 3) == "Com" && IsNumber(value.substr(3));
    return key.IsNumber && value.find_first_not_of("0123456789+-., ") == std::string_view::npos;
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
    if (error == platform::NoError && ::fchmod(file.File(), S_IRUSR | S_IWUSR) != 0) // not those of the older file
        error = backends::FromErrno(errno);
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
    if (line == "[Settings]" || line == "[Window]")
        return line;
    const KnownKey* const key = mark == std::string::npos ? nullptr : KeyOf(std::string_view(line).substr(0, mark));
    if (key == nullptr)
        return journal::Masked(line);
    const std::string value = line.substr(mark + 1);
    return line.substr(0, mark + 1) + (Stays(*key, value) ? value : journal::Masked(value));
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
