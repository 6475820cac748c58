// SPDX-License-Identifier: MIT
// The bytes are the table of drivers: listed, edited, added to, deleted from.
#include "fuzz/technician.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string table = fuzz::AsString(bytes, count);
    const auto putFiles = [&] {
        fuzz::PutMeter(place);
        place.Put("Quorin/drivers.txt", table);
    };
    const auto work = [&](fuzz::Technician& technician) {
        for (const char16_t* caption : {u"Start...", u"Ok", u"Open", u"Close", u"Back", u"Back"})
            technician.Choose(caption);
        technician.Choose(u"inf editor...");
        const std::string looked =
            table.empty() ? std::string("NAME|INFFILE\n") : table; // an empty one gets its header
        fuzz::Must(place.Bytes("Quorin/drivers.txt") == looked, "a table that was only looked at has changed");
        technician.Tap(1);
        technician.Choose(u"Edit");
        technician.Enter(0, u"Name");
        for (const char16_t* caption : {u"Save", u"New Record", u"Close", u"New", u"Back", u"Delete"})
            technician.Choose(caption);
        technician.Choose(u"Show/Hide Columns...");
    };
    fuzz::Run(place, 0, putFiles, work, {"is too short to have a field", "is not a number", "has no rows"});
    return 0;
}
