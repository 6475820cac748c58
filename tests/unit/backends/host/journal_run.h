// SPDX-License-Identifier: MIT
// A program that keeps a journal, and the lines of it.
#pragma once

#include "backends/host/journal.h"
#include "tests/support/program.h"

#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace backends {

using journal::Line;

/// Returns the lines of a file.
inline std::vector<Line> LinesIn(const std::filesystem::path& file) {
    std::vector<Line> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
        lines.push_back(Line::parse(line));
    return lines;
}

class JournalRun : public support::Program {
protected:
    JournalRun() {
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        InstallMeter();
    }

    std::string Folder() const { return (Place.Path() / "journal").string(); }
    void Keep(SyncWorker::Sync sync) {
        Kept.emplace(JournalPlan{Folder(), Device.Folder.Path().string(), {}}, ProgramName{"test", "V 1", {"--word"}},
                     Device.Platform, std::move(sync));
    }
    void Keep() {
        Keep([this](int) {
            ++Syncs;
            return 0;
        });
    }

    /// Returns the files of the journal, the oldest first.
    std::vector<std::filesystem::path> Files() const {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(Folder()))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        return files;
    }
    /// Returns the events of one name, of all files, without their times.
    std::vector<std::string> Events(const std::string& name) const {
        std::vector<std::string> events;
        for (const auto& file : Files()) {
            for (Line line : LinesIn(file)) {
                if (line["event"] != name)
                    continue;
                for (const char* each : {"time", "ms", "event"})
                    line.erase(each);
                events.push_back(journal::TextOf(line));
            }
        }
        return events;
    }
    std::vector<std::string> Acts() const { return Events("act"); }

    support::TemporaryFolder Place;
    int Syncs = 0;
    std::optional<Journal> Kept;
};

} // namespace backends
