// SPDX-License-Identifier: MIT
#include "apps/quorin-import/import_main.h"

#include "apps/quorin-import/import_command.h"
#include "apps/quorin-import/matching.h"
#include "apps/quorin-import/rows.h"
#include "apps/quorin-import/target.h"
#include "backends/files/plain_file.h"
#include "backends/files/root_lock.h"
#include "companion/values/table_text.h"
#include "exporting/csv.h"
#include "exporting/csv_reader.h"

#include <iostream>
#include <limits>

namespace importer {

using start::ExitStatus;

namespace {

void Tell(const std::string& what) {
    std::cerr << "quorin-import: " << what << "\n";
}

std::string Records(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " record" : " records");
}

/// One run of the program.
class Import {
public:
    explicit Import(const Options& options) : Options_(options), Target_(options) {}

    ExitStatus Run() {
        std::string why = Look();
        if (why.empty())
            why = Options_.Raw ? MakeRaw() : MakeRows();
        if (!why.empty()) {
            Tell(why);
            return ExitStatus::NotStarted;
        }
        for (const std::string& line : Odd_)
            Tell(line);
        const std::string what = Target_.File() + ": " + Records(Count_) + " of the driver " + Target_.Driver();
        if (Options_.DryRun) {
            std::cout << what << " would be made; nothing was changed\n";
        } else {
            why = Options_.Raw ? Target_.StoreBytes(Table_) : Target_.StoreLines(Lines_);
            if (!why.empty()) {
                Tell(why);
                return ExitStatus::Failure;
            }
            std::cout << what << "\n";
        }
        return Odd_.empty() ? ExitStatus::Ended : ExitStatus::Odd;
    }

private:
    /// Returns why nothing can be imported, as a sentence, or an empty text.
    std::string Look() {
        backends::PlainFile file = backends::ReadPlainFile(Options_.File, std::numeric_limits<std::size_t>::max(),
                                                           backends::Links::Follow, backends::Mark::Keep);
        if (!file.Why.empty())
            return Options_.File + " can't be read: " + file.Why + ".";
        Csv_ = std::move(file.Bytes);
        const std::string& root = Options_.Device.Root;
        if (root.empty())
            return "--root is needed: neither XDG_DATA_HOME nor HOME is set.";
        if (!backends::IsFolder(root))
            return "There is no root folder " + root + ".";
        if (std::string why = Options_.DryRun ? std::string() : TakeLock(); !why.empty())
            return why;
        return Target_.Prepare();
    }

    std::string TakeLock() {
        switch (Lock_.Take(Options_.Device.Root, "quorin-import")) {
        case backends::LockResult::Held:
            return {};
        case backends::LockResult::Unguarded:
            Tell(Lock_.Warning());
            return {};
        default:
            return Lock_.Refusal();
        }
    }

    std::string MakeRaw() {
        auto table = exporting::TableOfRawCsv(Csv_, {.Delimiter = Options_.Delimiter, .LineEnd = Options_.LineEnd});
        if (!table)
            return Options_.File + " is not what quorin-export --raw writes: --delimiter and --line-end have to be the "
                                   "same.";
        Table_ = std::move(*table);
        values::LineWalk walk(Table_);
        if (!walk.Next() || walk.Line().empty())
            return Options_.File + " has no header.";
        if (walk.Line() != Target_.Header())
            Odd_.push_back("the header is not that of the driver " + Target_.Driver() +
                           " as it is now: the form shows the fields under the names that the driver has");
        while (walk.Next())
            ++Count_;
        return {};
    }

    std::string MakeRows() {
        exporting::CsvReader reader(Csv_, Options_.Delimiter);
        std::vector<std::string> columns;
        if (!reader.Next(columns))
            return reader.HasFailed() ? WhyNoCsv(reader) : Options_.File + " has no header.";
        std::vector<std::string_view> header;
        values::Split(Target_.Header(), header);
        const Matching matching = Match(columns, values::ColumnsOf(header, Target_.Fields()), Options_.Maps);
        if (!matching.WhyNot.empty())
            return matching.WhyNot;
        Lines_ = {Target_.Header()};
        RowMaker maker(matching, columns);
        for (std::vector<std::string> cells; reader.Next(cells); ++Count_)
            Lines_.push_back(maker.Row(cells, reader.Line()));
        if (reader.HasFailed())
            return WhyNoCsv(reader);
        if (Count_ == 0)
            return Options_.File + " has no rows.";
        TellMatching(matching);
        for (const std::string& line : maker.Odd())
            Odd_.push_back(line);
        return {};
    }

    std::string WhyNoCsv(const exporting::CsvReader& reader) const {
        const std::string place = Options_.File + ", line " + std::to_string(reader.Line()) + ": ";
        if (reader.FailedAtLoneReturn())
            return place + "a carriage return stands alone. Lines end in a line feed, with a carriage return before it "
                           "or without.";
        return place + "a quote is within a value, or has no end. A value with a quote has to be in quotes, with two "
                       "for each one in it.";
    }

    void TellMatching(const Matching& matching) {
        if (Options_.DryRun)
            for (const std::string& line : matching.Filled)
                std::cout << "field " << line << "\n";
        for (const std::string& field : matching.Unfilled)
            Tell("nothing fills the field " + field);
        for (const std::string& column : matching.LeftOut)
            Odd_.push_back("the column " + column + " fills no field: it is left out");
    }

    const Options& Options_;
    backends::RootLock Lock_;
    Target Target_;
    std::string Csv_;
    std::string Table_;              ///< of raw CSV
    std::vector<std::string> Lines_; ///< of the table otherwise
    std::size_t Count_ = 0;          ///< records
    std::vector<std::string> Odd_;
};

} // namespace

ExitStatus ImportMain(int count, const char* const* words) {
    Options options;
    switch (ReadOptions(count, words, options)) {
    case apps::Reading::Shown:
        return ExitStatus::Ended;
    case apps::Reading::Wrong:
        return ExitStatus::NotStarted;
    case apps::Reading::Run:
        break;
    }
    return Import(options).Run();
}

} // namespace importer
