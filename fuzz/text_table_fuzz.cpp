// SPDX-License-Identifier: MIT
// The bytes are a table in a text file. Reading its rows changes no byte; to change, insert or delete a row changes no
// other line.
#include "fuzz/table_lines.h"
#include "fuzz/table_use.h"

namespace {

const std::string Name = "Quorin/table.txt";
const Text FullName = u".\\Quorin\\table.txt";

/// Returns a row in the middle of the table; 0 if it has none.
std::size_t LineToEdit(const std::vector<std::string>& lines) {
    return lines.size() < 2 ? 0 : lines.size() / 2;
}

void ExpectLines(const fuzz::Place& place, const std::vector<std::string>& lines, const char* after) {
    fuzz::Must(fuzz::LinesOf(place.Bytes(Name)) == lines, std::string("other lines than expected after ") + after);
}

void Edit(const fuzz::Place& place, std::vector<std::string> lines) {
    using namespace modFileSystem;
    const std::size_t line = LineToEdit(lines);
    if (line == 0)
        return;
    OpenTable(FullName, u"r", u"TEXT", u"QVRN");
    const std::string blanks(Table.TableColumns.size() - 1, '|');
    GotoRow(static_cast<std::int32_t>(line));
    Table.TableValues = {u"one", u"two"};
    SaveRow();
    lines[line] = "one|two";
    ExpectLines(place, lines, "a row was changed");
    AddRow(static_cast<std::int32_t>(line));
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(line), blanks);
    ExpectLines(place, lines, "a row was inserted");
    AddRow(-1);
    lines.push_back(blanks);
    ExpectLines(place, lines, "a row was added");
    GotoRow(static_cast<std::int32_t>(line + 1));
    DeleteRow();
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(line + 1));
    ExpectLines(place, lines, "a row was deleted");
    CloseTable();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string table = fuzz::AsString(bytes, count);
    const auto work = [&](fuzz::Technician&) {
        fuzz::LookAtTable(FullName);
        fuzz::Must(place.Bytes(Name) == table, "a table that was only looked at has changed");
        Edit(place, fuzz::RewrittenLinesOf(table));
    };
    fuzz::Run(place, 0, [&] { place.Put(Name, table); }, work, {});
    return 0;
}
