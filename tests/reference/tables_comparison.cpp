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

// The last ones have bars around the places where a line is looked through anew.
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
        : Chosen(choices), Device(StorageDevice::Fresh(kind)), OnDisk(kind == Kind::OnDisk),
          Files(Disk, Numbers, 0, u".\\Quorin\\"), Literal(Files) {}

    std::string Run() {
        std::string bytes;
        for (std::uint32_t left = Chosen.Below(7); left > 0; --left)
            bytes += std::string(Chosen.Of(Lines)) + (left > 1 || Chosen.Below(3) < 2 ? "\n" : "");
        if (!Chosen.OneIn(8)) {
            SoFar.Note("t.txt = [" + bytes + "]");
            Device.Put(Names[0], bytes);
            Disk.Put(Names[0], bytes);
        }
        Do(0);
        for (std::uint32_t left = 1 + Chosen.Below(8); left > 0 && SoFar.Agrees() && !Over; --left)
            Do(Chosen.Below(16));
        modFileSystem::CloseTable();
        Literal.CloseTable();
        SoFar.Expect(Device.Shown(), Disk.Shown());
        return SoFar.Difference();
    }

private:
    void Do(std::uint32_t what) {
        const Text modes[] = {u"a", u"r", u"w"};
        Name = Names[Chosen.OneIn(OnDisk ? 12 : 4) ? 1 + Chosen.Below(2) : 0];
        Mode = Chosen.Of(modes);
        Row = static_cast<std::int32_t>(Chosen.Below(8)) - 1;
        Column = Chosen.Of(Columns);
        Value = Chosen.Of(Values);
        Selection = Chosen.Of(Selections);
        Header = Chosen.Of(Headers);
        SoFar.Note("step " + std::to_string(what) + " row" + Number(Row) + " of " +
                   modStringTools::ToBytes(Name + u" " + Mode + u", " + Column + u" = [" + Value + u"], " + Selection));
        const std::string product = Product(what);
        const std::string literal = ByTheLetter(what);
        Over = product == "stopped";
        SoFar.Expect(product + (Over ? "" : Shown(Table)), literal + (Over ? "" : Shown(Literal)));
    }

    std::string Product(std::uint32_t what) {
        using namespace modFileSystem;
        Text mode = Mode;
        try {
            switch (what) {
            case 0:
            case 1:
                OpenTable(Name, mode, u"TEXT", u"QVRN");
                return modStringTools::ToBytes(mode);
            case 2:
                if (OnDisk) // a file has its text once it is closed, and this leaves the open one as it is
                    CloseTable();
                CreateTable(Name, Header, Mode.c_str(), u"TEXT", u"QVRN");
                return {};
            case 12:
                return Number(FindRow(Selection));
            case 13:
                return modStringTools::ToBytes(GetField(Column));
            case 14:
                return Number(AddRow(Row));
            default:
                Move(what, Row, Column, Value);
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
        Text mode = Mode;
        try {
            switch (what) {
            case 0:
            case 1:
                Literal.OpenTable(Name, mode, u"TEXT", u"QVRN");
                return modStringTools::ToBytes(mode);
            case 2:
                if (OnDisk)
                    Literal.CloseTable();
                Literal.CreateTable(Name, Header, mode, u"TEXT", u"QVRN");
                return {};
            case 12:
                return Number(Literal.FindRow(Selection));
            case 13:
                return modStringTools::ToBytes(Literal.GetField(Column));
            case 14:
                return Number(Literal.AddRow(Row));
            default:
                MoveByTheLetter(what);
                return Number(Literal.TableRowCount());
            }
        } catch (const Stopped&) {
            return "stopped";
        }
    }

    void MoveByTheLetter(std::uint32_t what) {
        switch (what) {
        case 3:
            return Literal.FirstRow();
        case 4:
            return Literal.LastRow();
        case 5:
        case 6:
            return Literal.NextRow();
        case 7:
            return Literal.PreviousRow();
        case 8:
            return Literal.GotoRow(Row);
        case 9:
        case 10:
            return Literal.SetField(Column, Value);
        case 11:
            return Literal.SaveRow();
        default:
            return Row == 0 ? Literal.CloseTable() : Literal.DeleteRow();
        }
    }

    Choices& Chosen;
    StorageDevice& Device;
    bool OnDisk;
    MemoryDisk Disk;
    QuickNumbers Numbers;
    LineFiles Files;
    Tables Literal;
    Text Name, Mode, Column, Value, Selection, Header;
    std::int32_t Row = 0;
    bool Over = false;
    Course SoFar;
};

} // namespace

std::string CompareTables(Choices& choices) {
    return Case(choices, Kind::InMemory).Run();
}

std::string CompareTablesOnDisk(Choices& choices) {
    return Case(choices, Kind::OnDisk).Run();
}

} // namespace reference
