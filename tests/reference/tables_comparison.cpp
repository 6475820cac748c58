// SPDX-License-Identifier: MIT
#include "src/storage/keyed_tables.h"
#include "tests/reference/course.h"
#include "tests/reference/storage_comparison.h"
#include "tests/reference/storage_device.h"
#include "tests/reference/tables_reference.h"

namespace reference {

namespace {

using Kind = StorageDevice::Kind;
using modFileSystem::Table;

// The last ones have bars around the places at which the search for bars starts its next block.
const char* const Lines[] = {"A|B",
                             "a|b|NAME",
                             "x|y",
                             "|",
                             "",
                             "x|y|z|",
                             "X|\r",
                             "p|q\r",
                             "\xFF",
                             "x|\xC3",
                             "1|2|3|4|5|6",
                             "one long field that is no number|x",
                             "0123456789012345678901234567890123456789012345678901234567|9|12||5|more",
                             "|||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||||"};
const Text Columns[] = {u"A", u"b", u"NAME", u"none", u"1"};
const Text Values[] = {u"x", u"", u"X", u"p|q", u"\r", u"a\nb", u"a field of some length"};
const Text Selections[] = {u"A=x", u"B=\"y\"", u"b=", u"NAME=\"z", u"A=\"", u"none", u"=", u"1=2"};
const Text Headers[] = {u"A|B|NAME", u"NAME", u""};
const Text Names[] = {u".\\Quorin\\t.txt", u".\\Quorin\\t.pdb", u".\\Quorin\\other.txt"};

std::string Number(std::int64_t number) {
    return std::string(1, ' ') + std::to_string(number);
}

template <typename State>
std::string Shown(const State& state) {
    const FileHandle& file = state.TableFile;
    std::string shown = Number(file.valid) + Number(file.slot) + Number(file.nextLine) + Number(file.recordNumber) +
                        Number(state.TableRowIndex) + Number(state.TableRowTotal) + Number(state.RecordDirty);
    for (const auto* list : {&state.TableColumns, &state.TableValues}) {
        shown += " [";
        for (const Text& each : *list)
            shown += "(" + modStringTools::ToBytes(each) + ")";
        shown += "]";
    }
    return shown;
}

class Case {
public:
    Case(Choices& choices, Kind kind)
        : Chosen_(choices), Device_(StorageDevice::Fresh(kind)), OnDisk_(kind == Kind::OnDisk),
          Files_(Disk_, Numbers_, 0, u".\\Quorin\\"), Literal_(Files_) {}

    std::string Run() {
        std::string bytes;
        for (std::uint32_t left = Chosen_.Below(7); left > 0; --left)
            bytes += std::string(Chosen_.Of(Lines)) + (left > 1 || Chosen_.Below(3) < 2 ? "\n" : "");
        if (!Chosen_.OneIn(8)) {
            SoFar_.Note("t.txt = [" + bytes + "]");
            Device_.Put(Names[0], bytes);
            Disk_.Put(Names[0], bytes);
        }
        Do(0);
        for (std::uint32_t left = 1 + Chosen_.Below(8); left > 0 && SoFar_.Agrees() && !Over_; --left)
            Do(Chosen_.Below(16));
        modFileSystem::CloseTable();
        Literal_.CloseTable();
        SoFar_.Expect(Device_.Shown(), Disk_.Shown());
        return SoFar_.Difference();
    }

private:
    void Do(std::uint32_t what) {
        const Text modes[] = {u"a", u"r", u"w"};
        Name_ = Names[Chosen_.OneIn(OnDisk_ ? 12 : 4) ? 1 + Chosen_.Below(2) : 0];
        Mode_ = Chosen_.Of(modes);
        Row_ = static_cast<std::int32_t>(Chosen_.Below(8)) - 1;
        Column_ = Chosen_.Of(Columns);
        Value_ = Chosen_.Of(Values);
        Selection_ = Chosen_.Of(Selections);
        Header_ = Chosen_.Of(Headers);
        SoFar_.Note(
            "step " + std::to_string(what) + " row" + Number(Row_) + " of " +
            modStringTools::ToBytes(Name_ + u" " + Mode_ + u", " + Column_ + u" = [" + Value_ + u"], " + Selection_));
        const std::string product = Product(what);
        const std::string literal = ByTheLetter(what);
        Over_ = product == "stopped";
        SoFar_.Expect(product + (Over_ ? "" : Shown(Table)), literal + (Over_ ? "" : Shown(Literal_)));
    }

    std::string Product(std::uint32_t what) {
        using namespace modFileSystem;
        Text mode = Mode_;
        try {
            switch (what) {
            case 0:
            case 1:
                OpenTable(Name_, mode, u"TEXT", u"QVRN");
                return modStringTools::ToBytes(mode);
            case 2:
                if (OnDisk_) // a file on a disk gets its text when it is closed, and CreateTable does not close it
                    CloseTable();
                CreateTable(Name_, Header_, Mode_.c_str(), u"TEXT", u"QVRN");
                return {};
            case 12:
                return Number(FindRow(Selection_));
            case 13:
                return modStringTools::ToBytes(GetField(Column_));
            case 14:
                return Number(AddRow(Row_));
            default:
                Move(what, Row_, Column_, Value_);
                return Number(TableRowCount());
            }
        } catch (const Stopped&) {
            return "stopped";
        }
    }

    static void Move(std::uint32_t what, std::int32_t row, const Text& column, const Text& value) {
        using namespace modFileSystem;
        switch (what) {
        case 3:
            return FirstRow();
        case 4:
            return LastRow();
        case 5:
        case 6:
            return NextRow();
        case 7:
            return PreviousRow();
        case 8:
            return GotoRow(row);
        case 9:
        case 10:
            return SetField(column, value);
        case 11:
            return SaveRow();
        default:
            return row == 0 ? CloseTable() : DeleteRow();
        }
    }

    std::string ByTheLetter(std::uint32_t what) {
        Text mode = Mode_;
        try {
            switch (what) {
            case 0:
            case 1:
                Literal_.OpenTable(Name_, mode, u"TEXT", u"QVRN");
                return modStringTools::ToBytes(mode);
            case 2:
                if (OnDisk_)
                    Literal_.CloseTable();
                Literal_.CreateTable(Name_, Header_, mode, u"TEXT", u"QVRN");
                return {};
            case 12:
                return Number(Literal_.FindRow(Selection_));
            case 13:
                return modStringTools::ToBytes(Literal_.GetField(Column_));
            case 14:
                return Number(Literal_.AddRow(Row_));
            default:
                MoveByTheLetter(what);
                return Number(Literal_.TableRowCount());
            }
        } catch (const Stopped&) {
            return "stopped";
        }
    }

    void MoveByTheLetter(std::uint32_t what) {
        switch (what) {
        case 3:
            return Literal_.FirstRow();
        case 4:
            return Literal_.LastRow();
        case 5:
        case 6:
            return Literal_.NextRow();
        case 7:
            return Literal_.PreviousRow();
        case 8:
            return Literal_.GotoRow(Row_);
        case 9:
        case 10:
            return Literal_.SetField(Column_, Value_);
        case 11:
            return Literal_.SaveRow();
        default:
            return Row_ == 0 ? Literal_.CloseTable() : Literal_.DeleteRow();
        }
    }

    Choices& Chosen_;
    StorageDevice& Device_;
    bool OnDisk_;
    MemoryDisk Disk_;
    QuickNumbers Numbers_;
    LineFiles Files_;
    Tables Literal_;
    Text Name_, Mode_, Column_, Value_, Selection_, Header_;
    std::int32_t Row_ = 0;
    bool Over_ = false;
    Course SoFar_;
};

} // namespace

std::string CompareTables(Choices& choices) {
    return Case(choices, Kind::InMemory).Run();
}

std::string CompareTablesOnDisk(Choices& choices) {
    return Case(choices, Kind::OnDisk).Run();
}

} // namespace reference
