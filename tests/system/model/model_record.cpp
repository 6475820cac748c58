// SPDX-License-Identifier: MIT
// The record on screen and its file.
#include "tests/system/model/model.h"

#include <algorithm>

namespace shift {

void Model::PutCell(std::size_t row, const std::string& text, Fate ofTheOld) {
    std::string& cell = Cells[row];
    if (cell == text)
        return;
    Results_->Note(IdOf(cell), ofTheOld);
    Results_->Note(IdOf(text), Fate::OnScreen);
    cell = text;
}

void Model::OpenDownload() {
    const std::size_t row = Files.DownloadsOf(Driver)[SelectedRow_];
    OpenFile = Files.Read(RegisterName).At(row, "FILE");
    Infs_ = Files.FieldsOf(Driver);
    if (!Files.Has(OpenFile)) {
        DataFile& made = Files.Write(OpenFile);
        for (const Field& field : Infs_)
            made.Columns.push_back(field.Name);
        made.Rows.emplace_back(made.Columns.size());
    }
    LinkWanted = true; // each driver of a shift has an instrument
    LinkState_ = 2;
    At = Place::Record;
    Title = "Download";
    LoadRecord(1);
    ShowRecord();
}

void Model::LoadRecord(std::size_t number) {
    RecordNumber = number;
    Saved_ = OpenTable().Rows[number - 1];
    Dirty = false;
}

void Model::ShowRecord() {
    Cells = Saved_;
    Repaint();
}

void Model::SaveRecord() {
    Saved_ = Cells;
    for (std::string& text : Saved_)
        std::replace(text.begin(), text.end(), '\n', ' '); // a line can't contain one
    Files.Write(OpenFile).Rows[RecordNumber - 1] = Saved_;
    Dirty = false;
}

void Model::AddRecord(std::size_t number) {
    DataFile& table = Files.Write(OpenFile);
    table.Rows.emplace(table.Rows.begin() + static_cast<std::ptrdiff_t>(number) - 1, table.Columns.size());
    LoadRecord(number);
}

void Model::Command(const std::string& caption) {
    if (Dirty || Cells != Saved_)
        SaveRecord(); // each command saves first
    const std::size_t count = OpenTable().Rows.size();
    if (caption == "Delete Record") {
        Ask({Question::Kind::DeleteRecord, false, {}, 0, ""}, "Delete Record?");
        return;
    }
    FieldOpen = false; // before another record comes
    if (caption == "Next Record" && RecordNumber < count) {
        LoadRecord(RecordNumber + 1);
    } else if (caption == "Previous Record" && RecordNumber > 1) {
        LoadRecord(RecordNumber - 1);
    } else if (caption == "First Record") {
        LoadRecord(1);
    } else if (caption == "Last Record") {
        LoadRecord(count);
    } else if (caption == "Insert Record") {
        AddRecord(RecordNumber);
    } else if (caption == "New Record") {
        const Row last = OpenTable().Rows.back();
        AddRecord(count + 1);
        for (std::size_t i = 0; i < Infs_.size(); ++i) {
            Dirty = Dirty || Infs_[i].Copy; // a copied value is saved by the next command
            Saved_[i] = Infs_[i].Copy ? last[i] : Saved_[i];
        }
    }
    ShowRecord();
}

void Model::RemoveRecord() {
    for (const Row& row : {Cells, Saved_}) {
        for (const std::string& cell : row)
            Results_->Note(IdOf(cell), Fate::DeletedRecord);
    }
    std::vector<Row>& rows = Files.Write(OpenFile).Rows;
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(RecordNumber) - 1);
    FieldOpen = false;
    if (rows.empty())
        AddRecord(1); // there is always at least one record
    else
        LoadRecord(std::min(RecordNumber, rows.size()));
    ShowRecord();
}

void Model::LeaveRecord() {
    if (FieldOpen || Dirty)
        SaveRecord();
    FieldOpen = false;
    Cells.clear();
    Saved_.clear();
    ShowDownloads();
}

void Model::TapCell(std::size_t row, bool onValue) {
    FieldOpen = false;
    if (!onValue)
        return;
    if (!Infs_[row].IsDate) {
        FieldOpen = true;
        CaretBehind = true;
        EditRow_ = row;
        FieldText = Cells[row];
        return;
    }
    EditRow_ = row;
    Dirty = true; // even if the prompt is cancelled
    TitleBelow_ = Title;
    At = Place::DatePrompt;
    Picked_ = DateOf(Now);
    if (!Cells[row].empty()) {
        Picked_ = std::chrono::year(std::stoi(Cells[row].substr(6))) /
                  std::chrono::month(static_cast<unsigned>(std::stoi(Cells[row].substr(3, 2)))) /
                  std::chrono::day(static_cast<unsigned>(std::stoi(Cells[row].substr(0, 2))));
    }
}

void Model::Type(const std::string& text) {
    if (OnRecord() && FieldText != text) {
        PutCell(EditRow_, text, Fate::TypedOver);
        Dirty = true;
    }
    FieldText = text;
    CaretBehind = true;
}

void Model::PickDate(std::chrono::year_month_day date) {
    PutCell(EditRow_, DateText(date), Fate::TypedOver);
    LeavePrompt();
}

void Model::AcceptDate() {
    PickDate(Picked_);
}

} // namespace shift
