// SPDX-License-Identifier: MIT
#include "journal/taken_readings.h"

#include "journal/glance.h"
#include "journal/reading_words.h"
#include "journal/table_history.h"

#include <utility>

namespace journal {

namespace {

/// True if a field of a line, or several if the text has bars, is this text.
bool HasField(const std::string& line, const std::string& text) {
    return ("|" + InARow(line) + "|").find("|" + InARow(text) + "|") != std::string::npos;
}

} // namespace

void TakenReadings::Take(const Line& line) {
    const std::string event = TextIn(line, "event");
    if (event == "start" || event == "end") {
        RunIsOver();
    } else if (event == "reading") {
        TakeReading(line);
    } else if (event == "row" && TextIn(line, "why").empty()) {
        TakeRow(line);
    } else if (event == "act" && TextIn(line, "act") == "recover") {
        TakeRecovery(line);
    } else if (event == "act" && TextIn(line, "act") == "set") {
        for (auto& [file, waiting] : Waiting_) {
            for (Waiting& reading : waiting)
                reading.MayBeChanged = true;
        }
    }
}

void TakenReadings::RunIsOver() {
    for (auto& [file, waiting] : Waiting_) {
        for (Waiting& reading : waiting)
            reading.IsOfThisRun = false;
    }
}

/// A draft is of a record of an earlier run. The act names its download.
void TakenReadings::TakeRecovery(const Line& act) {
    const std::string about = TextIn(act, "about");
    const std::string answer = TextIn(act, "args");
    for (auto& [file, waiting] : Waiting_) {
        const std::string named = ": " + file;
        if (about.find(named + ",") == std::string::npos && about.find(named + ".") == std::string::npos)
            continue;
        for (Waiting& reading : waiting) {
            reading.IsPutBack = answer == "put" && !reading.IsOfThisRun;
            if (answer == "forget" && !reading.IsOfThisRun)
                Forgotten_.push_back(reading.Words + ", was forgotten by a person " + TimeText(TextIn(act, "time")));
        }
        if (answer == "forget")
            std::erase_if(waiting, [](const Waiting& reading) { return !reading.IsOfThisRun; });
    }
}

void TakenReadings::TakeReading(const Line& line) {
    const std::string verdict = TextIn(line, "verdict");
    auto& waiting = Waiting_[TextIn(line, "file")];
    const std::string old = TextIn(line, "old");
    const bool replaces = verdict == "replaced" || verdict == "openfield";
    if (replaces)
        std::erase_if(waiting, [&old](const Waiting& reading) { return reading.IsOfThisRun && reading.Text == old; });
    if (!IsStored(verdict))
        return;
    ++Count_;
    waiting.push_back({.Text = FieldTextOf(line),
                       .Result = ResultOf(line),
                       .Words = ResultOf(line) + ", " + verdict + " " + TimeText(TextIn(line, "time")) + " for " +
                                TextIn(line, "file")});
}

/// A record is saved before another one is shown: the next row of its download is the one that the readings are in.
void TakenReadings::TakeRow(const Line& line) {
    const std::string what = TextIn(line, "what");
    const std::string file = TextIn(line, "file");
    const std::string now = TextIn(line, "new");
    if (what == "deleted" && IsRegister(file))
        DownloadDeleted(FileOfRegisterLine(TextIn(line, "old")));
    const auto found = Waiting_.find(file);
    if (found == Waiting_.end() || what == "added")
        return;
    std::erase_if(found->second, [&](Waiting& reading) {
        const bool isPutBack = std::exchange(reading.IsPutBack, false);
        if (!reading.IsOfThisRun)
            return isPutBack && what == "saved" && HasField(now, reading.Text);
        if (what == "saved" && !HasField(now, reading.Text) && !reading.MayBeChanged)
            Lost_.push_back(reading.Words + ", is not in the record that was saved " + TimeText(TextIn(line, "time")));
        return true;
    });
}

void TakenReadings::DownloadDeleted(const std::string& deleted) {
    for (auto& [file, waiting] : Waiting_) {
        if (IsSameTable(file, deleted))
            std::erase_if(waiting, [](const Waiting& reading) { return reading.IsOfThisRun; });
    }
}

std::string TakenReadings::Unsaved(const std::string& file) const {
    std::string results;
    for (const auto& [table, waiting] : Waiting_) {
        for (const Waiting& reading : waiting) {
            if (reading.IsOfThisRun && IsSameTable(table, file))
                results += (results.empty() ? "" : ", ") + reading.Result;
        }
    }
    return results;
}

std::vector<std::string> TakenReadings::Findings() const {
    std::vector<std::string> findings = Lost_;
    for (const auto& [file, waiting] : Waiting_) {
        for (const Waiting& reading : waiting)
            findings.push_back(reading.Words + ", is in no record that was saved");
    }
    return findings;
}

} // namespace journal
