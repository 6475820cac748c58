// SPDX-License-Identifier: MIT
#include "journal/taken_readings.h"

#include "journal/glance.h"
#include "journal/reading_words.h"
#include "journal/table_history.h"

#include <algorithm>

namespace journal {

namespace {

/// Returns a text as a row has it: without control characters, which the line of a row can't have.
std::string InARow(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char character) { return character == '\n' || character == '\0'; }, ' ');
    return text;
}

/// True if a field of a line, or several if the text has bars, is this text.
bool HasField(const std::string& line, const std::string& text) {
    return ("|" + InARow(line) + "|").find("|" + InARow(text) + "|") != std::string::npos;
}

} // namespace

void TakenReadings::Take(const Line& line) {
    const std::string event = TextIn(line, "event");
    if (event == "start") {
        for (auto& [file, waiting] : Waiting_) {
            for (Waiting& reading : waiting)
                reading.IsOfThisRun = false;
        }
    } else if (event == "reading") {
        TakeReading(line);
    } else if (event == "row" && TextIn(line, "why").empty()) {
        TakeRow(line);
    } else if (event == "act" && TextIn(line, "act") == "set") {
        for (auto& [file, waiting] : Waiting_) {
            for (Waiting& reading : waiting)
                reading.MayBeChanged = true;
        }
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
    waiting.push_back({TextIn(line, "value") + " " + TextIn(line, "unit"),
                       ResultOf(line) + ", " + verdict + " " + TextIn(line, "time") + " for " + TextIn(line, "file")});
}

/// A record is saved before another one is shown: the next row of its download is the one that the readings are in.
void TakenReadings::TakeRow(const Line& line) {
    const std::string what = TextIn(line, "what");
    const std::string file = TextIn(line, "file");
    const std::string now = TextIn(line, "new");
    if (what == "deleted" && IsRegister(file))
        std::erase_if(Waiting_, [deleted = FileOfRegisterLine(TextIn(line, "old"))](const auto& waiting) {
            return IsSameTable(waiting.first, deleted);
        });
    const auto found = Waiting_.find(file);
    if (found == Waiting_.end() || what == "added")
        return;
    std::erase_if(found->second, [&](const Waiting& reading) {
        if (what == "saved" && HasField(now, reading.Text))
            return true;
        if (!reading.IsOfThisRun)
            return false; // a record of an earlier run that was put back comes later
        if (what == "saved" && !reading.MayBeChanged)
            Lost_.push_back(reading.Words + ", is not in the record that was saved " + TextIn(line, "time"));
        return true;
    });
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
