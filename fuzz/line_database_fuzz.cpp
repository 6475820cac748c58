// SPDX-License-Identifier: MIT
// The bytes are the file of a line database in a device's memory, used as a table and as a driver package. A file that
// is no database, or a damaged one, may stop the program with a message. A table that was only read stays as it is.
#include "fuzz/table_use.h"

namespace {

const std::string Name = "Databases/tableqvd.sqlite";
const Text FullName = u"Device:\\tableqvd";

/// Returns true if the file's writer kept a write-ahead log. Such a file is converted when it is opened.
bool KeepsALog(const std::string& file) {
    constexpr std::size_t WriteVersion = 18;
    return file.size() > WriteVersion + 1 && (file[WriteVersion] == 2 || file[WriteVersion + 1] == 2);
}

void Edit() {
    using namespace modFileSystem;
    OpenTable(FullName, u"a", u"TEXT", u"QVRN");
    GotoRow(2);
    Table.TableValues = {u"one", u"two"};
    SaveRow();
    AddRow(1);
    AddRow(-1);
    FirstRow();
    DeleteRow();
    fuzz::LookAtTable(FullName);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string file = fuzz::AsString(bytes, count);
    const auto work = [&](fuzz::Technician& technician) {
        fuzz::LookAtTable(FullName);
        fuzz::Must(KeepsALog(file) || place.Bytes(Name) == file, "a table that was only looked at has changed");
        for (const char16_t* caption : {u"Preferences...", u"Back", u"inf editor...", u"Add Driver...", u"Install..."})
            technician.Choose(caption);
        Edit();
    };
    fuzz::Run(place, 1, [&] { place.Put(Name, file); }, work, {"Can't"});
    return 0;
}
