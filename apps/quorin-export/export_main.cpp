// SPDX-License-Identifier: MIT
#include "apps/quorin-export/export_main.h"

#include "apps/quorin-export/export_command.h"
#include "apps/quorin-export/formats.h"
#include "apps/quorin-export/output.h"
#include "apps/quorin-export/overwriting.h"
#include "apps/quorin-export/plot_main.h"
#include "apps/quorin-export/progress.h"
#include "apps/quorin-export/scratch_folder.h"
#include "backends/files/folder_names.h"
#include "exporting/data_package.h"

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <set>
#include <unistd.h>

namespace exporter {

using exporting::TableView;
using start::ExitStatus;

namespace {

constexpr int RecordsWidth = 7; // of the number of records in the list

void Tell(const std::string& what) {
    std::cerr << "quorin-export: " << what << "\n";
}

std::string Called(const std::string& path) {
    return path.empty() ? "to standard output" : path;
}

/// Returns a path without the ending of its file; the name of a folder may have a full stop, too.
std::string StemOf(const std::string& path) {
    const std::size_t name = path.rfind('/') + 1; // npos + 1 is 0
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos || dot <= name ? path : path.substr(0, dot);
}

/// One run of the program.
class Export {
public:
    explicit Export(const Options& options) : Options_(options), Tables_(options) {}

    ExitStatus Run() {
        if (Options_.Sources.empty())
            return List();
        const bool isOne = Options_.Sources.size() == 1 || Options_.Format->IsOneForAll;
        if (!isOne && !backends::IsFolder(Options_.Output)) {
            Tell("several tables in the format " + std::string(Options_.Format->Name) +
                 " are several files: -o has to name a folder that is there");
            return ExitStatus::NotStarted;
        }
        if (isOne)
            ToOneOutput();
        else
            ToFolder();
        if (Done_ == 0 && Status_ == ExitStatus::Failure && !HasBegun_)
            return ExitStatus::NotStarted;
        return Status_;
    }

private:
    ExitStatus List() {
        std::vector<Tables::Listed> downloads;
        std::string why = Tables_.List(downloads);
        if (why.empty() && (!Options_.Output.empty() || Options_.Raw))
            why = "which download? Without a name they are listed, and nothing is written.";
        if (!why.empty()) {
            Tell(why);
            return ExitStatus::NotStarted;
        }
        if (downloads.empty())
            Tell("there is no download in " + Options_.Device.Root);
        std::size_t widest = 0;
        for (const Tables::Listed& each : downloads)
            widest = std::max(widest, each.File.size());
        for (const Tables::Listed& each : downloads) {
            if (!each.WhyNot.empty())
                Fail(each.WhyNot);
            const std::string records = each.Records ? std::to_string(*each.Records) : "-";
            std::cout << each.File << std::string(widest - each.File.size() + 2, ' ') << std::setw(RecordsWidth)
                      << records << "  " << each.Driver << (each.Alias.empty() ? "" : "  \"" + each.Alias + "\"")
                      << "\n";
        }
        return Status_;
    }

    void ToOneOutput() {
        Output output;
        for (const std::string& name : Options_.Sources) {
            Table table;
            if (!Read(name, table))
                continue;
            if (!HasBegun_ && !Begin(output, Options_.Output, table))
                return;
            if (!Write(table, output))
                break;
        }
        if (HasBegun_)
            Finish(output, Options_.Output);
    }

    void ToFolder() {
        std::set<std::string> written;
        for (const std::string& name : Options_.Sources) {
            Table table;
            if (!Read(name, table))
                continue;
            const std::string path = Options_.Output + "/" + StemOf(table.Source.File) + Options_.Format->Ending;
            if (!written.insert(path).second) {
                Fail(path + " would be written twice: it is left out for " + name);
                continue;
            }
            Output output;
            if (Begin(output, path, table) && Write(table, output))
                Finish(output, path);
        }
    }

    bool Read(const std::string& name, Table& table) {
        if (const std::string why = Tables_.Read(name, table); !why.empty()) {
            Fail(why);
            return false;
        }
        if (!table.Note.empty())
            Tell(table.Source.File + ": " + table.Note);
        if (table.Bytes.empty()) {
            Fail(table.Source.File + " is empty: it has no columns.");
            return false;
        }
        return true;
    }

    static std::string DescriptionOf(const std::string& path) { return StemOf(path) + ".datapackage.json"; }

    bool Begin(Output& output, const std::string& path, const Table& table) {
        std::string why = WhyNotOver(path, table.Path, Options_);
        if (why.empty() && !path.empty())
            why = WhyNotOver(DescriptionOf(path), table.Path, Options_);
        if (why.empty())
            why = output.Open(path);
        if (!why.empty())
            Fail("can't write " + Called(path) + ": " + why);
        HasBegun_ = why.empty();
        return why.empty() && (Options_.Format->Collect == nullptr || BeginCollection(path));
    }

    bool BeginCollection(const std::string& path) {
        std::string why = Scratch_.Make(path);
        if (why.empty() && path.empty() && ::isatty(STDOUT_FILENO) == 1)
            why = "it is no text for a terminal: -o FILE writes a file";
        if (why.empty())
            Collection_ = Options_.Format->Collect(Scratch_.Path() + "/export");
        else
            Fail("can't write the format " + std::string(Options_.Format->Name) + ": " + why);
        HasBegun_ = why.empty();
        return why.empty();
    }

    bool Write(const Table& table, Output& output) {
        ++Done_;
        if (Options_.Raw)
            return output.Write(RawCsv(table.Bytes, Options_.Csv));
        TableView view(table.Source, Options_.Plan);
        if (view.Columns().empty()) { // an empty table has none either, and is refused before
            HasBegun_ = false;
            Fail(table.Source.File + " has none of the columns that --column names.");
            return false;
        }
        for (const std::string& line : view.Untold())
            Tell(table.Source.File + ", " + line);
        std::vector<std::string> odd = view.Odd();
        const bool isWritten = Collection_ ? Collect(table, view, odd) : WriteOut(table, view, output, odd);
        TellOdd(table, odd);
        Last_ = {.Name = {},
                 .Sha256 = {},
                 .Bytes = 0,
                 .Rows = view.Rows(),
                 .Source = table.Source.File,
                 .Alias = table.Source.Alias,
                 .Driver = table.Driver};
        LastColumns_ = view.Columns();
        return isWritten;
    }

    bool Collect(const Table& table, TableView& view, std::vector<std::string>& odd) {
        Progress progress(table.Source.File, view.Rows() * Collection_->Passes());
        view.Watch([&progress](std::size_t rows) { progress.Advance(rows); });
        Collection_->Add(table, view, Options_, odd);
        view.Watch({});
        return true;
    }

    bool WriteOut(const Table& table, const TableView& view, Output& output, std::vector<std::string>& odd) {
        Progress progress(table.Source.File, table.Bytes.size()); // what is made of them comes near to it
        bool isWritten = true;
        Options_.Format->Write(
            table, view, Options_, Done_ == 1,
            [&](std::string_view bytes) {
                progress.Advance(bytes.size());
                return isWritten = isWritten && output.Write(bytes);
            },
            odd);
        return isWritten;
    }

    void TellOdd(const Table& table, const std::vector<std::string>& odd) {
        for (const std::string& line : odd)
            Tell(table.Source.File + ", " + line);
        if (!odd.empty() && Status_ == ExitStatus::Ended)
            Status_ = ExitStatus::Odd;
    }

    void Finish(Output& output, const std::string& path) {
        if (const std::string why = Collection_ ? CopyCollection(output) : std::string(); !why.empty())
            return Fail("can't write " + Called(path) + ": " + why);
        if (const std::string why = output.Finish(); !why.empty())
            return Fail("can't write " + Called(path) + ": " + why);
        const bool isCsv = std::string(Options_.Format->Name) == "csv";
        if (!path.empty() && isCsv && !Options_.Raw)
            Describe(output, path);
    }

    /// Returns why the collection is not in the output as a whole, or an empty text.
    std::string CopyCollection(Output& output) {
        Progress progress(Called(Options_.Output), 1, Begun_);
        progress.Advance(1); // nothing can be counted while it is closed, which takes about as long as the rows
        if (std::string why = Collection_->Finish(); !why.empty())
            return why;
        std::ifstream file(Scratch_.Path() + "/export", std::ios::binary);
        std::vector<char> part(1 << 18);
        while (file.read(part.data(), static_cast<std::streamsize>(part.size())) || file.gcount() > 0)
            if (!output.Write({part.data(), static_cast<std::size_t>(file.gcount())}))
                return {}; // the output says why when it is finished
        return file.eof() ? std::string() : "what was made for it can't be read again";
    }

    void Describe(Output& output, const std::string& path) {
        Last_.Name = backends::NameOf(path);
        Last_.Bytes = output.Bytes();
        Last_.Sha256 = output.Sha256();
        const std::string place = DescriptionOf(path);
        Output package;
        std::string why = package.Open(place);
        if (why.empty()) {
            package.Write(DataPackage(Last_, Options_.Csv, LastColumns_));
            why = package.Finish();
        }
        if (!why.empty())
            Fail("can't write " + place + ": " + why);
    }

    void Fail(const std::string& what) {
        Tell(what);
        Status_ = ExitStatus::Failure;
    }

    const Options& Options_;
    Tables Tables_;
    ExitStatus Status_ = ExitStatus::Ended;
    std::size_t Done_ = 0;                   ///< tables
    ScratchFolder Scratch_;                  ///< of the collection
    std::unique_ptr<Collection> Collection_; ///< none for a format that is written from front to back
    bool HasBegun_ = false;
    const ProgressClock::time_point Begun_ = ProgressClock::now();
    exporting::CsvFile Last_; ///< the table that was written last
    std::vector<exporting::OutColumn> LastColumns_;
};

} // namespace

ExitStatus ExportMain(int count, const char* const* words) {
    Options options;
    switch (ReadOptions(count, words, options)) {
    case apps::Reading::Shown:
        return ExitStatus::Ended;
    case apps::Reading::Wrong:
        return ExitStatus::NotStarted;
    case apps::Reading::Run:
        break;
    }
    return options.Format->Picture ? PlotMain(options) : Export(options).Run();
}

} // namespace exporter
