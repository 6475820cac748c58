// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/columns.h"
#include "apps/quorin-journal/commands.h"
#include "journal/causes.h"
#include "journal/reading_words.h"
#include "journal/table_history.h"
#include "journal/taken_readings.h"

#include <algorithm>
#include <map>

namespace reader {

namespace {

using journal::Causes;
using journal::Line;
using journal::TableHistory;
using journal::TimeText;

constexpr const char* Indent = "                         "; // below what has happened

/// The records of one table in one root folder.
class Histories {
public:
    explicit Histories(std::string file) : File_(std::move(file)) {}

    void Take(const Line& line);
    void Write(Report& told) const;
    bool IsEmpty() const { return Lines_.empty() && Unsaved_.empty(); }

private:
    void TakeRow(const Line& line);
    void TakeRegister(const Line& line);
    void RunIsOver(const std::string& time, const std::string& why);
    void Add(TableHistory::Record record, const Line& line, const std::string& what);
    void WriteRecord(TableHistory::Record record, const std::string& title, Report& told) const;

    const std::string File_;
    TableHistory Rows_;
    Causes Causes_;
    journal::TakenReadings Readings_;
    std::string LastTime_;
    std::string Unsaved_; ///< lines about readings that no row has
    std::map<TableHistory::Record, std::string> Lines_;
    std::map<TableHistory::Record, std::size_t> LastRow_; ///< of records that are gone
};

std::string Changed(const Line& line) {
    const std::string old = TextIn(line, "old");
    const std::string now = TextIn(line, "new");
    const std::string what = TextIn(line, "what");
    if (what == "saved")
        return old == now ? now : old + "  →  " + now;
    return what == "added" ? now : old;
}

bool IsOfHistory(const std::string& event) {
    return event == "start" || event == "end" || event == "act" || event == "reading" || event == "row";
}

void Histories::Take(const Line& line) {
    const std::string event = TextIn(line, "event");
    const std::string time = TextIn(line, "time");
    if (event == "start")
        RunIsOver(LastTime_, "the journal breaks off");
    else if (event == "end")
        RunIsOver(time, "the program ended");
    LastTime_ = time;
    Causes_.Take(line);
    Readings_.Take(line);
    if (event != "row")
        return;
    if (journal::IsSameTable(TextIn(line, "file"), File_))
        TakeRow(line);
    if (journal::IsRegister(TextIn(line, "file")))
        TakeRegister(line);
}

void Histories::RunIsOver(const std::string& time, const std::string& why) {
    if (const std::string results = Readings_.Unsaved(File_); !results.empty())
        Unsaved_ += "  " + TimeText(time) + "  not saved: " + results + ", " + why + "\n";
}

void Histories::TakeRow(const Line& line) {
    const std::string what = TextIn(line, "what");
    const auto row = static_cast<std::size_t>(NumberIn(line, "row"));
    if (const std::string why = TextIn(line, "why"); !why.empty()) {
        Add(row == 0 ? TableHistory::None : Rows_.Named(row), line, "not " + what + ": " + why);
    } else if (what == "added") {
        Add(Rows_.Added(row), line, what);
    } else if (what == "deleted") {
        const auto record = Rows_.Deleted(row);
        LastRow_[record] = row;
        Add(record, line, what);
    } else if (what == "saved") {
        Add(Rows_.Named(row), line, what);
    }
}

/// A download is deleted with its row in the register, and its number may be used again.
void Histories::TakeRegister(const Line& line) {
    const bool isGone = TextIn(line, "what") == "deleted" && TextIn(line, "why").empty();
    if (!isGone || !journal::IsSameTable(journal::FileOfRegisterLine(TextIn(line, "old")), File_))
        return;
    for (std::size_t i = 0; i < Rows_.Rows().size(); ++i) {
        const auto record = Rows_.Rows()[i];
        if (record == TableHistory::None)
            continue;
        LastRow_[record] = i + 1;
        Add(record, line, "deleted with the download");
    }
    Rows_.Dropped();
}

void Histories::Add(TableHistory::Record record, const Line& line, const std::string& what) {
    std::string& text = Lines_[record];
    text += "  " + TimeText(TextIn(line, "time")) + "  " + what + "  " + journal::OneLine(Changed(line)) + "\n";
    if (const std::string causes = Causes_.Text(); !causes.empty())
        text += Indent + causes + "\n";
}

void Histories::Write(Report& told) const {
    const auto& rows = Rows_.Rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i] != TableHistory::None)
            WriteRecord(rows[i], "record " + std::to_string(i + 1), told);
    }
    for (const auto& [record, row] : LastRow_)
        WriteRecord(record, "a record that was deleted, record " + std::to_string(row) + " then", told);
    WriteRecord(TableHistory::None, "a record that no row was found for", told);
    if (!Unsaved_.empty())
        told.Write("readings that are in no record\n" + Unsaved_);
}

void Histories::WriteRecord(TableHistory::Record record, const std::string& title, Report& told) const {
    const auto found = Lines_.find(record);
    if (found != Lines_.end())
        told.Write(title + "\n" + found->second);
}

} // namespace

void ShowHistory(Job& job) {
    std::map<std::string, Histories> roots;
    std::map<std::string, std::string> paths;
    for (const JournalFile& file : job.Files) {
        Histories& histories = roots.try_emplace(file.Name.Root, job.Asked.Argument).first->second;
        ForEachEntry(file, job.Told, [&](const Entry& entry) {
            const std::string& event = entry.Seen.Event;
            if (event == "start" || event == "day")
                paths[file.Name.Root] = TextIn(entry.Object(), "root");
            if (IsOfHistory(event))
                histories.Take(entry.Object());
        });
    }
    if (std::all_of(roots.begin(), roots.end(), [](const auto& root) { return root.second.IsEmpty(); }))
        return job.Told.Refused("the journal has nothing of " + job.Asked.Argument);
    for (const auto& [root, histories] : roots) {
        if (roots.size() > 1 && !histories.IsEmpty())
            job.Told.WriteLine((paths[root].empty() ? root : paths[root]) + ":");
        histories.Write(job.Told);
    }
}

} // namespace reader
