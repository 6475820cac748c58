// SPDX-License-Identifier: MIT
// Drivers, downloads, columns, and the way from one screen to the next.
#include "tests/system/model/model.h"

namespace shift {

const char* NameOf(Place place) {
    static const char* const names[] = {"ScrMain",          "ScrDrivers", "ScrDownloads",        "ScrInfRecord",
                                        "ScrInput",         "ScrInput",   "ScrInstalledDrivers", "ScrColumns",
                                        "ScrBluetoothDebug"};
    return names[static_cast<std::size_t>(place)];
}

void Model::OpenDrivers() {
    At = Place::Drivers;
    SelectDriver(0);
    Repaint();
}

void Model::OpenDriver(std::size_t row) {
    SelectDriver(row);
    ShowDownloads();
}

void Model::OpenInstalledDrivers() {
    At = Place::InstalledDrivers;
    SelectDriver(0);
    Repaint();
}

void Model::OpenTrace() {
    At = Place::Trace;
    TraceLines = {""};
    Repaint();
    LinkWanted = true;
    LinkState_ = 2;
}

void Model::SelectDriver(std::size_t row) {
    Driver = Files.Read(DriversName).At(row, "NAME");
}

void Model::ShowDownloads() {
    At = Place::Downloads;
    SelectedRow_ = 0;
    Repaint();
}

std::vector<std::string> Model::Downloads() const {
    std::vector<std::string> names;
    const DataFile& control = Files.Read(RegisterName);
    for (const std::size_t row : Files.DownloadsOf(Driver)) {
        const std::string& alias = control.At(row, "ALIAS");
        names.push_back(alias.empty() ? control.At(row, "FILE") : alias);
    }
    return names;
}

void Model::NewDownload() {
    const std::string name = Files.NextDownload();
    Files.Write(RegisterName).Rows.push_back({Driver, name, DateDigits(DateOf(Now)), ""});
    ShowDownloads();
}

void Model::DeleteDownload() {
    Ask({Question::Kind::DeleteDownload, false, {}, 0, ""}, "Delete Download File?");
}

void Model::RemoveDownload() {
    const std::size_t row = Files.DownloadsOf(Driver)[SelectedRow_];
    Files.Delete(Files.Read(RegisterName).At(row, "FILE"));
    std::vector<Row>& rows = Files.Write(RegisterName).Rows;
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    ShowDownloads();
}

void Model::Rename() {
    At = Place::RenamePrompt;
    FieldOpen = true;
    CaretBehind = true;
    FieldText = Downloads()[SelectedRow_];
}

void Model::AcceptName() {
    Accepted_ = FieldText;
    LeavePrompt();
}

/// A cancelled prompt returns the name that was last accepted in one, so a download may get the name that was meant for
/// the one before it. If no name was accepted since the start, nothing changes.
void Model::LeavePrompt() {
    FieldOpen = false;
    if (At == Place::DatePrompt) {
        At = Place::Record;
        Title = TitleBelow_;
        Repaint();
        return;
    }
    const std::string old = Downloads()[SelectedRow_];
    const std::size_t row = Files.DownloadsOf(Driver)[SelectedRow_];
    if (!Accepted_.empty() && Accepted_ != old)
        Files.Write(RegisterName).Rows[row][3] = Accepted_;
    ShowDownloads();
}

void Model::ShowColumns() {
    At = Place::Columns;
    ColumnChoices.clear();
    for (const Field& field : Files.FieldsOf(Driver))
        ColumnChoices.push_back(field.Visible);
    Repaint();
}

void Model::LeaveColumns() {
    const std::string inf = Files.InfOf(Driver);
    for (std::size_t row = 0; row < ColumnChoices.size(); ++row) {
        const std::string flag = ColumnChoices[row] ? "1" : "0";
        if (Files.Read(inf).At(row, "VISIBLE") != flag)
            Files.Write(inf).Rows[row][1] = flag;
    }
    OpenInstalledDrivers();
}

void Model::Back() {
    LinkWanted = false;
    switch (At) {
    case Place::Record:
        LeaveRecord();
        break;
    case Place::DatePrompt:
    case Place::RenamePrompt:
        LeavePrompt();
        break;
    case Place::Downloads:
        OpenDrivers();
        break;
    case Place::Columns:
        LeaveColumns();
        break;
    case Place::Drivers:
    case Place::InstalledDrivers:
    case Place::Trace:
        At = Place::Main;
        break;
    case Place::Main:
        break;
    }
}

} // namespace shift
