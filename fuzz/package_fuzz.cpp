// SPDX-License-Identifier: MIT
// The bytes are a driver package on a card: listed, installed, and its driver used.
#include "fuzz/technician.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string package = fuzz::AsString(bytes, count);
    const std::string folder = "My Documents/Quorin/";
    const auto putFiles = [&] {
        place.Put(folder + "drivers.txt", fuzz::DriversTable);
        place.Put("meter.qvd", package);
    };
    const auto install = [](fuzz::Technician& technician) {
        for (const char16_t* caption : {u"inf editor...", u"Add Driver...", u"Install...", u"Install..."})
            technician.Choose(caption);
        fuzz::Must(!technician.Boxes.empty(), "an installation without a word");
    };
    fuzz::Run(place, 3, putFiles, install, {});
    fuzz::Must(place.Bytes("meter.qvd") == package, "a package that was only read has changed");
    // A package may put its inf in the place of any file of the data folder, that of the drivers included.
    fuzz::WorkOn(place, 3, [](fuzz::Technician& technician) {
        technician.Choose(u"Start...");
        technician.Tap(1);
        for (const char16_t* caption : {u"Ok", u"New", u"Open", u"Close"})
            technician.Choose(caption);
    });
    return 0;
}
