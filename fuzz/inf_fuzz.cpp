// SPDX-License-Identifier: MIT
// The bytes are a driver's inf table: a download is opened through it, its records are edited and added, columns are
// hidden, and the inf editor edits the table itself.
#include "fuzz/table_lines.h"
#include "fuzz/technician.h"

namespace {

using fuzz::Technician;

/// Returns true if a table without rows was completed: it has its old header if it had one, and one blank row.
bool IsMended(const std::string& table, const std::string& left) {
    const auto before = fuzz::RewrittenLinesOf(table);
    const auto after = fuzz::LinesOf(left);
    return before.size() < 2 && after.size() == 2 && after.back().find_first_not_of('|') == std::string::npos &&
           (before.empty() || before.front().empty() || after.front() == before.front());
}

void EditRecords(Technician& technician) {
    for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
        technician.Choose(caption);
    technician.Tick(600);
    technician.Enter(1, u"Value");
    technician.Tap(2, 1);
    for (const char16_t* caption : {u"Next Record", u"New Record", u"Insert Record", u"Last Record", u"Delete Record"})
        technician.Choose(caption);
    technician.Receive(u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"2\"]\r\n[/BLob]\r\n");
    technician.Tick(1100);
    technician.Choose(u"Close");
}

void EditInf(Technician& technician) {
    for (const char16_t* caption : {u"inf editor...", u"Show/Hide Columns..."})
        technician.Choose(caption);
    technician.Tap(0);
    for (const char16_t* caption : {u"Back", u"Edit", u"Save"})
        technician.Choose(caption);
    technician.Enter(0, u"Name");
    for (const char16_t* caption : {u"Next Record", u"New Record", u"Delete Record", u"Close"})
        technician.Choose(caption);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string table = fuzz::AsString(bytes, count);
    const auto putFiles = [&] {
        fuzz::PutMeter(place);
        place.Put("Quorin/meter.txt", table);
    };
    const auto allowed = {"is too short to have a field", "is not a number", "has no rows", "is not a date"};
    fuzz::Run(
        place, 0, putFiles,
        [&](Technician& technician) {
            EditRecords(technician);
            const std::string left = place.Bytes("Quorin/meter.txt");
            fuzz::Must(left == table || IsMended(table, left), "a table that was only looked at has changed");
        },
        allowed);
    fuzz::Run(place, 0, putFiles, EditInf, allowed);
    return 0;
}
