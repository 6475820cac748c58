// SPDX-License-Identifier: MIT
// The bytes are what a server has put into the mailbox while a download is open. Nothing in them stops the program.
#include "fuzz/technician.h"

namespace {

const std::string Mailbox = "Application Data/Volatile/RFCOMM/";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string folder = "My Documents/Quorin/";
    const auto putFiles = [&] {
        place.Put("settings.ini", "[Settings]\nComPort=SERVER\n");
        place.Put(folder + "drivers.txt", fuzz::DriversTable);
        place.Put(folder + "qrnctrl.txt", fuzz::ControlTable);
        place.Put(folder + "meter.txt", fuzz::InfTable);
        place.Put(folder + "qrn0001.txt", fuzz::Download);
        place.Put(Mailbox + "rfcomm.run", "");
    };
    const auto work = [&](fuzz::Technician& technician) {
        for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
            technician.Choose(caption);
        technician.Tick(1100);
        place.Put(Mailbox + "ipcout.txt", fuzz::AsString(bytes, count));
        technician.Tick(2600);
        fuzz::Must(!place.Has(Mailbox + "ipcout.txt"), "what the server has put there was not taken");
    };
    fuzz::Run(place, 3, putFiles, work, {});
    fuzz::Must(place.Bytes(folder + "meter.txt") == fuzz::InfTable, "a table that was only looked at has changed");
    return 0;
}
