// SPDX-License-Identifier: MIT
#include "apps/page_exchange/page_download.h"

#include "apps/download_files/csv_file.h"
#include "apps/download_files/device_table.h"
#include "apps/download_files/plot_file.h"
#include "handover/content.h"
#include "src/storage/settings.h"
#include "src/view/platform/device_traits.h"

namespace apps {

using exporter::Table;
using modStringTools::ToBytes;

namespace {

std::string Lines(const std::vector<std::string>& odd) {
    std::string lines;
    for (const std::string& line : odd)
        lines += (lines.empty() || line.empty() ? "" : "\n") + line;
    return lines;
}

void MakeCsv(const Table& table, GivenFile& file) {
    const exporting::Plan plan;
    const exporting::CsvForm form;
    const exporting::TableView view(table.Source, plan);
    exporter::WriteCsvFile(view, form, [&](std::string_view bytes) {
        file.Bytes += bytes;
        return true;
    });
    file.Words = Lines(view.Odd());
}

void MakePlot(const Table& table, const backends::LimitsFile& limitsFile, GivenFile& file) {
    companion::ValueLimits limits;
    file.Words = Lines(exporter::ReadLimits(table, limitsFile, limits));
    file.Why = exporter::DrawPlotFile(table, limits, file.Bytes);
}

} // namespace

void PageDownload::Look() {
    if (auto now = companion::DownloadOfNow())
        Last_ = std::move(now);
}

std::string PageDownload::Title() const {
    if (!Last_)
        return {};
    return Stem() + (Last_->Alias.empty() ? "" : " (" + ToBytes(Last_->Alias) + ")");
}

std::vector<DownloadFormat> PageDownload::Formats() const {
    std::vector<DownloadFormat> formats = {
        {"csv", "CSV, for spreadsheets"}, {"table", "The table as it is"}, {"svg", "A plot"}};
    if (Last_ && IsLineDatabase())
        formats.push_back({"sqlite", "The line database as it is"});
    return formats;
}

GivenFile PageDownload::Make(const std::string& format) const {
    if (!Last_)
        return {.Why = "No download was opened yet."};
    if (format == "sqlite")
        return MakeDatabase();
    Table table;
    if (const std::string why = Read(table); !why.empty())
        return {.Why = why};
    GivenFile file;
    if (format == "csv") {
        file = {.Name = Stem() + ".csv", .Type = "text/csv"};
        MakeCsv(table, file);
    } else if (format == "svg") {
        file = {.Name = Stem() + ".svg", .Type = "image/svg+xml"};
        MakePlot(table, Host_.limits, file);
    } else {
        return {.Name = Stem() + ".txt", .Type = "text/plain", .Bytes = table.Bytes};
    }
    if (!table.Note.empty())
        file.Words = Lines({table.Note, file.Words});
    return file;
}

GivenFile PageDownload::MakeDatabase() const {
    GivenFile file{.Name = Stem() + ".sqlite", .Type = "application/vnd.sqlite3"};
    handover::Content content;
    const std::string path = Root_ + "/Databases/" + file.Name;
    const std::string why = ReadContent({file.Name, path, handover::Kind::DownloadDatabase}, content);
    file.Bytes = std::move(content.Bytes);
    file.Why = why.empty() ? why : file.Name + " can't be read: " + why + ".";
    return file;
}

/// Returns why the table can't be read, as a sentence; empty on success.
std::string PageDownload::Read(exporter::Table& table) const {
    table.Source.File = ToBytes(Last_->File);
    table.Source.Alias = ToBytes(Last_->Alias);
    if (const std::string missing = exporter::TakeDriver(ToBytes(Last_->Driver), table); !missing.empty())
        table.Note = exporter::NoteOfTexts(missing);
    std::string why = exporter::ReadDeviceTable(FullName(), Root_, table);
    table.Source.Bytes = table.Bytes;
    return why.empty() && table.Bytes.empty() ? table.Source.File + " is empty: it has no columns." : why;
}

/// The register lies beside the downloads.
Text PageDownload::FullName() const {
    const Text& beside = modQuorin::Paths.ControlFile;
    return beside.substr(0, beside.rfind(u'\\') + 1) + Last_->File;
}

std::string PageDownload::Stem() const {
    return ToBytes(Last_->File.substr(0, Last_->File.rfind(u'.')));
}

bool PageDownload::IsLineDatabase() const {
    const Text name = FullName();
    return platform::Traits().IsMemory(name.substr(0, name.rfind(u'\\') + 1));
}

} // namespace apps
