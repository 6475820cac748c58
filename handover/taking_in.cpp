// SPDX-License-Identifier: MIT
#include "handover/taking_in.h"

#include "backends/files/host_files.h"
#include "backends/files/left_files.h"
#include "handover/archive_in.h"
#include "handover/archive_names.h"
#include "handover/file_taker.h"
#include "handover/keyed_rows.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <map>
#include <set>

namespace handover {

namespace {

RegisterRow RowOf(const KeyedRow& row) {
    return {FieldOf(row, "DRIVER"), FieldOf(row, "FILE"), FieldOf(row, "DATE"), FieldOf(row, "ALIAS")};
}

std::string TextOf(const RegisterRow& row) {
    return row.Driver + "|" + row.File + "|" + row.Date + "|" + row.Alias;
}

std::string_view HeaderOf(std::string_view bytes) {
    const std::vector<std::string_view> lines = RawLines(bytes.substr(0, bytes.find('\n')));
    return lines.empty() ? std::string_view() : lines.front();
}

/// True if two texts are states of one download: one of them continues the other one, and they have a record in common
/// if the second one has any.
bool IsSameDownload(std::string_view here, std::string_view inZip) {
    const std::size_t common = std::min(RawLines(here).size(), RawLines(inZip).size());
    return HeaderOf(here) == HeaderOf(inZip) && (Continues(here, inZip) || Continues(inZip, here)) &&
           (common > 1 || RawLines(inZip).size() <= 1);
}

/// A keyed table on both sides.
struct TwoTables {
    bool IsHere = false;
    bool IsInZip = false;
    std::string Here;
    std::string InZip;
};

/// A row of the zip file's register that is to be here.
struct Wanted {
    RegisterRow Row;
    std::size_t Number = 0; ///< from 1
};

/// One import.
class Taking {
public:
    Taking(ArchiveIn& zip, const Taker& here, const TakeListener& listener)
        : Zip_(zip), Here_(here), Files_(here, listener) {}

    TakeResult Run() {
        TakeResult done;
        done.WhyNot = Begin();
        if (!done.WhyNot.empty())
            return done;
        PlanDownloads();
        for (const ArchiveEntry& entry : Zip_.Entries())
            if (Downloads_.count(entry.Name) == 0 && entry.Name != RegisterName && entry.Name != DriversName)
                if (std::string bytes; Read(entry, bytes))
                    Files_.Take(entry.Name, bytes);
        for (const Wanted& each : Own_)
            TakeOwn(each);
        TakeDrivers();
        TakeRegister(); // last: no row names a download that is not here
        for (const Wanted& each : Others_)
            TakeOther(each);
        return Files_.Done();
    }

private:
    std::string Begin() {
        for (const std::string& folder : {Here_.Data, Here_.Databases, Here_.Journal})
            if (!folder.empty()) // what a killed import has left
                backends::RemoveLeftFiles(folder, 0, backends::AnyAge);
        if (Here_.Data.empty())
            for (const ArchiveEntry& each : Zip_.Entries())
                if (AreaOf(each.Name) == Area::Data)
                    return "This device keeps its tables in line databases, and the zip file has them as text files.";
        for (const auto& [name, table] : {std::pair(RegisterName, &Register_), std::pair(DriversName, &Drivers_)})
            if (std::string why = ReadBoth(name, *table); !why.empty())
                return why + ".";
        return {};
    }

    std::string ReadBoth(const std::string& name, TwoTables& table) {
        if (const ArchiveEntry* const entry = Zip_.Find(name)) {
            table.IsInZip = true;
            if (std::string why = Zip_.Read(*entry, table.InZip); !why.empty())
                return why;
        }
        HereFile here = Here_.Data.empty() ? HereFile() : Files_.ReadHere(name);
        table.IsHere = here.Exists;
        table.Here = std::move(here.Bytes);
        return here.Why;
    }

    bool Read(const ArchiveEntry& entry, std::string& bytes) {
        const std::string why = Zip_.Read(entry, bytes);
        if (!why.empty())
            Files_.Tell(TakenFile{.File = entry.Name, .As = entry.Name, .Is = Fate::Failed, .Why = why});
        return why.empty();
    }

    void PlanDownloads() {
        for (const KeyedRow& row : KeyedRowsOf(Register_.Here))
            Known_.emplace(FieldOf(row, "FILE"), RowOf(row));
        std::size_t number = 0;
        for (const KeyedRow& row : KeyedRowsOf(Register_.InZip)) {
            const Wanted wanted{RowOf(row), ++number};
            const bool isRow = !wanted.Row.Driver.empty() && !wanted.Row.Date.empty() && !wanted.Row.File.empty() &&
                               wanted.Row.File.find_first_of("/\\") == std::string::npos &&
                               wanted.Row.File != RegisterName && wanted.Row.File != DriversName;
            if (!isRow || !Downloads_.insert(wanted.Row.File).second)
                Odd_.push_back(wanted);
            else
                (IsOwn(wanted.Row) ? Own_ : Others_).push_back(wanted);
        }
    }

    /// True if the download here under this name is the same one, or if there is none.
    bool IsOwn(const RegisterRow& row) {
        const HereFile here = Files_.ReadHere(row.File);
        const ArchiveEntry* const entry = Zip_.Find(row.File);
        std::string bytes;
        if (entry != nullptr)
            Zip_.Read(*entry, bytes);
        const auto known = Known_.find(row.File);
        if (known == Known_.end()) // a file without a row: a killed import has left it, or it is somebody else's
            return !here.Exists || (entry != nullptr && Continues(here.Bytes, bytes));
        const bool areBoth = !here.Bytes.empty() && entry != nullptr;
        return known->second.Driver == row.Driver && known->second.Date == row.Date &&
               (!areBoth || HeaderOf(here.Bytes) == HeaderOf(bytes));
    }

    void TakeOwn(const Wanted& wanted) {
        const std::string& file = wanted.Row.File;
        std::string bytes;
        const ArchiveEntry* const entry = Zip_.Find(file);
        if (entry != nullptr && Read(*entry, bytes)) // one that was never opened has no file
            Files_.TakeLines(file, file, bytes, Growth::Allowed);
    }

    /// Takes a download whose name another one has here.
    void TakeOther(const Wanted& wanted) {
        const ArchiveEntry* const entry = Zip_.Find(wanted.Row.File);
        std::string bytes;
        if (entry == nullptr || !Read(*entry, bytes))
            return;
        const std::string twin = TwinOf(wanted.Row, bytes);
        if (!twin.empty()) // an earlier import has given it another name
            return Files_.TakeLines(wanted.Row.File, twin, bytes, Growth::Allowed);
        TakenFile file{.File = wanted.Row.File, .As = Here_.NextDownload(), .Is = Fate::Failed};
        const HereFile here = file.As.empty() ? HereFile() : Files_.ReadHere(file.As);
        if (file.As.empty())
            file.Why = "the last download of the register has the name of another program: no number follows it";
        else if (here.Exists && here.Bytes != bytes)
            file.Why = "there is a file " + file.As + ", which the register does not name: move it away first";
        if (!file.Why.empty())
            return Files_.Tell(file);
        file.Is = Fate::New;
        file.Records = std::max<std::size_t>(RawLines(bytes).size(), 1) - 1;
        Files_.Write(file, bytes);
        RegisterRow row = wanted.Row;
        row.File = file.As;
        if (!Files_.IsLeft(wanted.Row.File) && !Here_.AddDownload(row))
            TellRowFailed(row.File);
    }

    /// Returns the download here that is the same as one of the zip file under another name; empty if there is none.
    std::string TwinOf(const RegisterRow& row, const std::string& bytes) const {
        for (const auto& [file, known] : Known_)
            if (Downloads_.count(file) == 0 && known.Driver == row.Driver && known.Date == row.Date)
                if (const HereFile here = Files_.ReadHere(file); here.Exists && IsSameDownload(here.Bytes, bytes))
                    return file;
        return {};
    }

    void TakeDrivers() {
        std::map<std::string, std::string> known; // name to inf file
        for (const KeyedRow& row : KeyedRowsOf(Drivers_.Here))
            known.emplace(FieldOf(row, "NAME"), FieldOf(row, "INFFILE"));
        std::vector<std::pair<std::string, std::string>> wanted;
        std::vector<Difference> differences;
        std::size_t number = 0;
        for (const KeyedRow& row : KeyedRowsOf(Drivers_.InZip)) {
            const std::string name = FieldOf(row, "NAME");
            const std::string inf = FieldOf(row, "INFFILE");
            const auto found = known.find(name);
            ++number;
            if (found != known.end() && found->second != inf)
                differences.push_back({DriversName, number, name + "|" + found->second, name + "|" + inf});
            else if (found == known.end() && Files_.IsLeft(inf)) // its fields here are those of another driver
                differences.push_back({DriversName, number, std::nullopt, name + "|" + inf});
            else if (found == known.end())
                wanted.emplace_back(name, inf);
        }
        TakeRows(DriversName, Drivers_, differences, wanted.size(),
                 [&](std::size_t i) { return Here_.AddDriver(wanted[i].first, wanted[i].second); });
    }

    void TakeRegister() {
        std::vector<Difference> differences;
        std::vector<RegisterRow> rows;
        for (const Wanted& each : Odd_)
            differences.push_back({RegisterName, each.Number, std::nullopt, TextOf(each.Row)});
        for (const Wanted& each : Own_) {
            const auto known = Known_.find(each.Row.File);
            if (known == Known_.end() && !Files_.IsLeft(each.Row.File))
                rows.push_back(each.Row);
            else if (known == Known_.end())
                HasAllFiles_ = false;
            else if (known->second.Alias != each.Row.Alias)
                differences.push_back({RegisterName, each.Number, TextOf(known->second), TextOf(each.Row)});
        }
        for (const Wanted& each : Others_)
            if (Zip_.Find(each.Row.File) == nullptr) // it was never opened: there is nothing of it but this row
                differences.push_back({RegisterName, each.Number, TextHere(each.Row.File), TextOf(each.Row)});
        HasAllFiles_ = HasAllFiles_ && Others_.empty();
        TakeRows(RegisterName, Register_, differences, rows.size(),
                 [&](std::size_t i) { return Here_.AddDownload(rows[i]); });
    }

    std::optional<std::string> TextHere(const std::string& file) const {
        const auto known = Known_.find(file);
        return known == Known_.end() ? std::nullopt : std::optional(TextOf(known->second));
    }

    /// Takes a keyed table as it is if it continues the one here, so that the same data is the same bytes; else row by
    /// row.
    template <class Add>
    void TakeRows(const std::string& name, const TwoTables& table, const std::vector<Difference>& differences,
                  std::size_t count, Add add) {
        if (!table.IsInZip)
            return;
        TakenFile file{.File = name, .As = name};
        const bool isNew = !table.IsHere || RawLines(table.InZip).size() > RawLines(table.Here).size();
        if (HasAllFiles_ && (name == RegisterName || differences.empty()) && Continues(table.Here, table.InZip)) {
            file.Is = !isNew ? Fate::There : table.IsHere ? Fate::Grown : Fate::New;
            return isNew ? Files_.Write(file, table.InZip) : Files_.Tell(file);
        }
        for (const Difference& each : differences)
            Files_.Tell(each);
        std::size_t added = 0;
        while (added < count && add(added))
            ++added;
        if (added < count)
            return TellRowFailed(name);
        file.Is = count > 0 ? Fate::Grown : differences.empty() ? Fate::There : Fate::Left;
        Files_.Tell(file);
    }

    void TellRowFailed(const std::string& file) {
        Files_.Tell(TakenFile{.File = file, .As = file, .Is = Fate::Failed, .Why = "its row can't be written"});
    }

    ArchiveIn& Zip_;
    const Taker& Here_;
    FileTaker Files_;
    TwoTables Register_;
    TwoTables Drivers_;
    std::map<std::string, RegisterRow> Known_; ///< rows of the register here, by file
    std::set<std::string> Downloads_;          ///< files that the zip file's register names
    std::vector<Wanted> Own_;                  ///< that keep their names
    std::vector<Wanted> Others_;               ///< whose names other downloads have here
    std::vector<Wanted> Odd_;                  ///< that name no download of their own
    bool HasAllFiles_ = true;                  ///< all downloads of the zip file are here under their names
};

} // namespace

TakeResult TakeIn(const std::string& path, const std::function<Taker()>& here, const TakeListener& listener) {
    TakeResult refused;
    const backends::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    ArchiveIn zip;
    if (!file.Valid())
        refused.WhyNot = path + " can't be read: " + backends::ReasonOf(errno) + ".";
    else if (const std::string why = zip.Open(file.Number()); !why.empty())
        refused.WhyNot = path + " can't be taken in: " + why + ".";
    if (!refused.WhyNot.empty())
        return refused;
    const Taker taker = here();
    return Taking(zip, taker, listener).Run();
}

} // namespace handover
