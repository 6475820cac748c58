// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/reading_lines.h"
#include "backends/host/end_signals.h"

#include <map>
#include <memory>
#include <poll.h>
#include <set>
#include <unistd.h>

namespace reader {

namespace {

constexpr int Pause = 200; // milliseconds between two looks

/// Follows the newest day of each root folder, and each file that is new after that.
class Followed {
public:
    explicit Followed(Job& job) : Job_(job), Lines_(job.Asked, job.Asked.Root.empty(), job.Told) {}

    /// Passes over what is there already.
    void Begin();
    /// Writes the readings that have come since the last look.
    void Look();

private:
    struct Growing {
        JournalFile File;
        OpenJournal Lines;
        std::int64_t Number = 0; ///< of lines that were read
    };

    Growing* Open(const JournalFile& file);
    void ReadRest(Growing& growing, bool isOld);

    Job& Job_;
    ReadingLines Lines_;
    std::map<std::string, std::unique_ptr<Growing>> Open_; ///< by path
    std::set<std::string> Known_;                          ///< paths of all files that were seen
};

Followed::Growing* Followed::Open(const JournalFile& file) {
    auto growing = std::make_unique<Growing>();
    growing->File = file;
    if (const std::string why = growing->Lines.Open(file.Path); !why.empty()) {
        Job_.Told.Failed("can't read " + file.Path + ": " + why);
        return nullptr;
    }
    return (Open_[file.Path] = std::move(growing)).get();
}

void Followed::ReadRest(Growing& growing, bool isOld) {
    journal::Glance seen;
    while (const auto line = growing.Lines.Next()) {
        const Entry entry{growing.File, ++growing.Number, *line, seen};
        if (isOld && growing.Number > 1)
            continue; // the first line names the root folder
        if (!LookAt(*line, seen))
            TellNoObject(entry, Job_.Told);
        else if (IsOfANewerProgram(entry, Job_.Told))
            return growing.Lines.SkipToEnd();
        else
            Lines_.Take(entry);
    }
}

void Followed::Begin() {
    std::map<std::string, const JournalFile*> newest;
    for (const JournalFile& file : Job_.Files) {
        Known_.insert(file.Path);
        newest[file.Name.Root] = &file;
    }
    for (const auto& [root, file] : newest) {
        if (Growing* const growing = Open(*file))
            ReadRest(*growing, true);
    }
}

void Followed::Look() {
    for (const auto& [path, growing] : Open_)
        ReadRest(*growing, false);
    std::vector<JournalFile> files;
    FindFiles(Job_.Asked.Journal, Job_.Asked.Root, files);
    for (const JournalFile& file : files) {
        if (!Known_.insert(file.Path).second)
            continue;
        if (Growing* const growing = Open(file))
            ReadRest(*growing, false);
    }
    Job_.Told.Flush();
}

} // namespace

void FollowReadings(Job& job) {
    backends::EndSignals signals;
    Followed followed(job);
    followed.Begin();
    while (!job.Told.Lost()) {
        followed.Look();
        pollfd wakes[] = {{signals.Descriptor(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}}; // the second: its reader has gone
        if (::poll(wakes, 2, Pause) > 0)
            return;
    }
}

} // namespace reader
