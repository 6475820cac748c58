// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/operations.h"

#include "src/app/commands.h"
#include "src/drivers/record_view.h"
#include "src/drivers/selection.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/view/menu_table.h"
#include "src/view/navigation.h"

#include <algorithm>

namespace disk {

using namespace modFileSystem;
using modQuorin::DataCreator;
using modQuorin::DataType;

namespace {

const std::string InfHeader = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA";
const std::string DriversHeader = "NAME|INFFILE";
const std::string ControlHeader = "DRIVER|FILE|DATE|ALIAS";
const std::vector<std::string> NewInf = {InfHeader, "Place|1||||||", "Moisture|1||Moisture||||", "Remark|1||||||"};

using Lines = std::vector<std::string>;

/// Large enough for several pages of a database.
Lines LongLines(const std::string& head, const std::string& kind) {
    Lines lines = {head};
    for (int i = 1; i <= 14; ++i)
        lines.push_back(kind + std::to_string(i) + "|" + std::string(450 + static_cast<std::size_t>(i), 'a') + "|");
    return lines;
}

const Lines List = LongLines("head", "line ");
const Lines Rows = LongLines("NAME|VALUE|NOTE", "row ");

State Holding(const std::string& name, const Lines& lines) {
    return {{name, Joined(lines)}};
}

/// Returns the state after an edit of its first file's lines; nothing if the file is missing.
std::optional<State> Edited(const State& state, const std::function<void(Lines&)>& edit) {
    State after = state;
    auto& content = after.begin()->second;
    if (!content)
        return std::nullopt;
    Lines lines = LinesOf(*content);
    edit(lines);
    content = Joined(lines);
    return after;
}

// Lines.

void OpenList(FileHandle& file) {
    OpenFile(file, FullName("list.txt"), u"a", DataType, DataCreator);
}

bool AppendLine(Machine&) {
    FileHandle file;
    OpenList(file);
    const std::int32_t written = WriteFileLine(file, u"appended");
    CloseFile(file);
    return written > 0;
}

bool ChangeLine(Machine&) {
    FileHandle file;
    OpenList(file);
    const bool done = ChangeFileLine(file, 12, u"changed");
    CloseFile(file);
    return done;
}

bool DeleteLine(Machine&) {
    FileHandle file;
    OpenList(file);
    const bool done = DeleteFileLine(file, 12);
    CloseFile(file);
    return done;
}

bool InsertLine(Machine&) {
    FileHandle file;
    OpenList(file);
    const bool done = InsertFileLine(file, 2, modFileSystem::InsertPosition::Before, u"inserted");
    CloseFile(file);
    return done;
}

// Rows of the open table.

void OpenRows() {
    OpenTable(FullName("table.txt"), u"r", DataType, DataCreator);
}

bool SaveARow(Machine&) {
    OpenRows();
    if (!Table.TableFile.valid)
        return false;
    GotoRow(7);
    SetField(u"VALUE", u"23.4 %");
    SaveRow();
    CloseTable();
    return true;
}

bool AddARow(Machine&) {
    OpenRows();
    const bool done = AddRow(-1);
    CloseTable();
    return done;
}

bool DeleteARow(Machine&) {
    OpenRows();
    if (!Table.TableFile.valid)
        return false;
    GotoRow(3);
    DeleteRow();
    CloseTable();
    return true;
}

void SaveRowIn(Lines& lines) {
    std::string& line = lines[7];
    const std::size_t value = line.find('|') + 1;
    line.replace(value, line.find('|', value) - value, "23.4 %");
}

// Whole files.

bool MakeTable(Machine&) {
    CreateTable(FullName("made.txt"), u"A|B", u"r", DataType, DataCreator);
    const bool made = Table.TableFile.valid;
    CloseTable();
    return made;
}

bool RemoveFile(Machine&) {
    return DeleteFile(FullName("list.txt"));
}

// Commands of the application.

bool InstallPackage(Machine& machine) {
    modQuorin::Selection.SelectedPackage = FullName("meterqvd");
    modQuorin::MenuEvent(u"Install...");
    const std::vector<Text> told = machine.Did.Messages();
    return !told.empty() && told.back() == u"Driver installed";
}

std::optional<State> AfterInstalling(const State& state) {
    State after = state;
    std::string& drivers = *after["drivers.txt"];
    const Lines lines = LinesOf(drivers);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (lines[i].substr(0, lines[i].find('|')) == "Hygro")
            return std::nullopt;
    }
    drivers = Joined(lines) + "Hygro|hygro.txt\n";
    after["hygro.txt"] = Joined(NewInf);
    return after;
}

/// Returns the states in which the row is in the drivers table, and the inf table is old, missing, or has its first
/// lines.
std::vector<State> WhileInstalling(const std::string& drivers, const std::optional<std::string>& oldInf) {
    const std::string withRow = drivers + "Hygro|hygro.txt\n";
    std::vector<State> states = {{{"drivers.txt", withRow}, {"hygro.txt", oldInf}},
                                 {{"drivers.txt", withRow}, {"hygro.txt", std::nullopt}}};
    for (std::size_t k = 0; k <= NewInf.size(); ++k) {
        const Lines first(NewInf.begin(), NewInf.begin() + static_cast<std::ptrdiff_t>(k));
        states.push_back({{"drivers.txt", withRow}, {"hygro.txt", Joined(first)}});
    }
    return states;
}

bool ChooseColumns(Machine& machine) {
    modQuorin::Selection.SelectedDriver = u"Meter";
    modQuorin::MenuEvent(u"Show/Hide Columns...");
    for (const std::int32_t row : {0, 2})
        machine.Platform.grdMain.SetCell(row, 1, u"");
    modQuorin::GoBack();
    return true;
}

Lines ColumnsHidden(bool first, bool third) {
    Lines lines = NewInf;
    if (first)
        lines[1] = "Place|0||||||";
    if (third)
        lines[3] = "Remark|0||||||";
    return lines;
}

bool SaveASetting(Machine&) {
    modQuorin::SaveSetting(u"ComPort", u"Com3");
    return true;
}

bool ListDrivers(Machine&) {
    modQuorin::MenuEvent(u"Start...");
    return true;
}

std::optional<State> AfterListingDrivers(const State& state) {
    State after = state;
    if (!after["drivers.txt"])
        after["qrnctrl.txt"] = ControlHeader + "\n";
    if (!after["drivers.txt"] || after["drivers.txt"]->empty())
        after["drivers.txt"] = DriversHeader + "\n";
    return after;
}

const std::string OldDrivers = DriversHeader + "\nMeter|meter.txt\n";

State Standing() {
    State state = {{"drivers.txt", OldDrivers},
                   {"qrnctrl.txt", ControlHeader + "\nMeter|qrn0001.txt|20070301|\n"},
                   {"meter.txt", Joined(NewInf)}};
    Lines package = {"# a package", "Hygro|hygro.txt"};
    package.insert(package.end(), NewInf.begin(), NewInf.end());
    state["meterqvd"] = Joined(package);
    return state;
}

Operation Append() {
    return {"WriteFileLine",
            {},
            Holding("list.txt", List),
            AppendLine,
            [](const State& s) { return Edited(s, [](Lines& lines) { lines.push_back("appended"); }); },
            {}};
}

std::vector<Operation> LineOperations() {
    const State list = Holding("list.txt", List);
    return {
        Append(),
        {"ChangeFileLine",
         {},
         list,
         ChangeLine,
         [](const State& s) { return Edited(s, [](Lines& lines) { lines[11] = "changed"; }); },
         {}},
        {"DeleteFileLine",
         {},
         list,
         DeleteLine,
         [](const State& s) { return Edited(s, [](Lines& lines) { lines.erase(lines.begin() + 11); }); },
         {}},
        {"InsertFileLine",
         {},
         list,
         InsertLine,
         [](const State& s) { return Edited(s, [](Lines& lines) { lines.insert(lines.begin() + 1, "inserted"); }); },
         {}}};
}

std::vector<Operation> RowOperations() {
    const State table = Holding("table.txt", Rows);
    return {{"SaveRow", {}, table, SaveARow, [](const State& s) { return Edited(s, SaveRowIn); }, {}},
            {"AddRow",
             {},
             table,
             AddARow,
             [](const State& s) { return Edited(s, [](Lines& lines) { lines.push_back("||"); }); },
             {}},
            {"DeleteRow",
             {},
             table,
             DeleteARow,
             [](const State& s) { return Edited(s, [](Lines& lines) { lines.erase(lines.begin() + 3); }); },
             {}}};
}

std::vector<Operation> FileOperations() {
    const auto made = [](const State&) -> std::optional<State> { return State{{"made.txt", "A|B\n"}}; };
    const State none = {{"made.txt", std::nullopt}};
    const State empty = {{"made.txt", ""}};
    return {{"CreateTable", {}, none, MakeTable, made, {empty}},
            {"CreateTableOverAnother", {}, Holding("made.txt", List), MakeTable, made, {none, empty}},
            {"DeleteFile",
             {},
             Holding("list.txt", List),
             RemoveFile,
             [](const State& s) -> std::optional<State> {
                 return s.at("list.txt") ? std::optional<State>(State{{"list.txt", std::nullopt}}) : std::nullopt;
             },
             {}}};
}

std::vector<Operation> Commands() {
    const std::vector<State> columns = {Holding("meter.txt", ColumnsHidden(true, false)),
                                        Holding("meter.txt", ColumnsHidden(false, true))};
    const std::string oldInf = InfHeader + "\nOld|1||||||\n";
    const std::string control = ControlHeader + "\n";
    const std::string drivers = DriversHeader + "\n";
    return {{"InstallDriver",
             {},
             {{"drivers.txt", OldDrivers}, {"hygro.txt", std::nullopt}},
             InstallPackage,
             AfterInstalling,
             WhileInstalling(OldDrivers, std::nullopt)},
            {"InstallDriverOverAnotherInf",
             {},
             {{"drivers.txt", OldDrivers}, {"hygro.txt", oldInf}},
             InstallPackage,
             AfterInstalling,
             WhileInstalling(OldDrivers, oldInf)},
            {"ColumnChoices",
             {},
             Holding("meter.txt", NewInf),
             ChooseColumns,
             [](const State&) -> std::optional<State> { return Holding("meter.txt", ColumnsHidden(true, true)); },
             columns},
            {"FirstStart",
             {},
             {{"drivers.txt", std::nullopt}, {"qrnctrl.txt", std::nullopt}},
             ListDrivers,
             AfterListingDrivers,
             {{{"drivers.txt", ""}, {"qrnctrl.txt", std::nullopt}},
              {{"drivers.txt", drivers}, {"qrnctrl.txt", std::nullopt}},
              {{"drivers.txt", drivers}, {"qrnctrl.txt", ""}},
              // the states if drivers.txt can't be made
              {{"drivers.txt", std::nullopt}, {"qrnctrl.txt", ""}},
              {{"drivers.txt", std::nullopt}, {"qrnctrl.txt", control}},
              {{"drivers.txt", ""}, {"qrnctrl.txt", control}}}}};
}

Operation Setting() {
    return {"SaveSetting",
            {},
            {{"settings.ini", "[Settings]\nStorageVolume=.\\\nComPort=OFF\n"}},
            SaveASetting,
            [](const State& s) {
                return Edited(s, [](Lines& lines) {
                    std::replace(lines.begin(), lines.end(), std::string("ComPort=OFF"), std::string("ComPort=Com3"));
                });
            },
            {}};
}

/// Removes the states in which a file has only a part of its lines: a text file is old or new at each moment, while a
/// database gets its lines one by one.
void ExpectWholeFiles(Operation& operation) {
    const State done = operation.Done();
    const auto isPart = [&](const State& state) {
        return std::any_of(state.begin(), state.end(), [&](const auto& file) {
            return file.second && file.second != operation.Before.at(file.first) && file.second != done.at(file.first);
        });
    };
    auto& between = operation.Between;
    between.erase(std::remove_if(between.begin(), between.end(), isPart), between.end());
}

} // namespace

void PrintTo(const Operation& operation, std::ostream* out) {
    *out << NameOf(operation);
}

std::string NameOf(const Operation& operation) {
    return operation.Name + (operation.Kept == Keeping::TextFiles ? "InText" : "InADatabase");
}

std::vector<Operation> Operations() {
    std::vector<Operation> rows;
    for (const auto& some : {LineOperations(), RowOperations(), FileOperations(), Commands()}) {
        for (Operation operation : some) {
            const Operation any = operation;
            if (operation.Name != "ColumnChoices") // it saves one row after the other
                ExpectWholeFiles(operation);
            rows.push_back(operation);
            operation = any;
            if (operation.Name == "InstallDriverOverAnotherInf") // a database is always made again
                continue;
            operation.Kept = Keeping::LineDatabases;
            rows.push_back(operation);
        }
    }
    rows.push_back(Setting());
    return rows;
}

const Tree& TreeBefore(const Operation& operation) {
    static std::map<std::string, Tree> trees;
    const auto [found, isNew] = trees.try_emplace(NameOf(operation));
    if (isNew) {
        State files = Standing();
        for (const auto& [name, content] : operation.Before)
            files[name] = content;
        found->second = Furnished(files, operation.Kept);
    }
    return found->second;
}

} // namespace disk
