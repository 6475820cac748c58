// SPDX-License-Identifier: MIT
// The bytes are the register of downloads: listed, opened, renamed, added to, deleted from.
#include "fuzz/technician.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string table = fuzz::AsString(bytes, count);
    const auto putFiles = [&] {
        fuzz::PutMeter(place);
        place.Put("Quorin/qrnctrl.txt", table);
    };
    const auto work = [&](fuzz::Technician& technician) {
        for (const char16_t* caption : {u"Start...", u"Ok"})
            technician.Choose(caption);
        technician.Tick(200);
        for (const char16_t* caption : {u"Open", u"Close"})
            technician.Choose(caption);
        fuzz::Must(place.Bytes("Quorin/qrnctrl.txt") == table, "a table that was only looked at has changed");
        technician.Tap(1);
        for (const char16_t* caption : {u"Rename", u"New", u"Delete", u"Open", u"Close"})
            technician.Choose(caption);
    };
    fuzz::Run(place, 0, putFiles, work, {"is too short to have a field", "has no number in its name"});
    return 0;
}
