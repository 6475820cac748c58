// SPDX-License-Identifier: MIT
// The bytes are a driver package, which is listed and installed twice, and whose driver is used. If their number is
// even, it is on a card, else in the data folder, where its inf table may replace the package. The table of drivers
// lacks its last line end. A package in which the check finds no error must not end the program when it is used.
#include "companion/driver_check.h"
#include "companion/file_lines.h"
#include "fuzz/table_lines.h"
#include "fuzz/technician.h"

#include <algorithm>

namespace {

const std::string Drivers = "NAME|INFFILE\nMeter|meter.txt";
constexpr std::int32_t WithCard = 3; // a device type
constexpr std::int32_t WithoutCard = 0;

void Install(fuzz::Technician& technician) {
    for (const char16_t* caption : {u"inf editor...", u"Add Driver...", u"Install...", u"Install..."})
        technician.Choose(caption);
    fuzz::Must(!technician.Boxes.empty(), "an installation without a word");
}

/// Returns true if the table of drivers has kept its lines, or the package names this table as its inf file.
bool KeepsDrivers(const std::string& package, const std::string& after) {
    std::vector<std::string> lines = fuzz::LinesOf(after);
    lines.resize(2);
    return package.find("drivers.txt") != std::string::npos || lines == fuzz::LinesOf(Drivers);
}

/// True if the check finds no error. What has a NUL in it is no text, and is not checked.
bool IsSound(const std::string& package) {
    const auto found =
        companion::CheckPackage(companion::LinesOf(modStringTools::FromBytes(package)), {{u"Meter", u"meter.txt"}});
    return package.find('\0') == std::string::npos &&
           std::none_of(found.begin(), found.end(),
                        [](const companion::Finding& each) { return each.Grade == companion::Grade::Error; });
}

void UseDriver(fuzz::Technician& technician) {
    technician.Choose(u"Start...");
    technician.Tap(1);
    for (const char16_t* caption : {u"Ok", u"New", u"Open", u"Close"})
        technician.Choose(caption);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string package = fuzz::AsString(bytes, count);
    const bool onCard = count % 2 == 0;
    const std::string folder = onCard ? "My Documents/Quorin/" : "Quorin/";
    const std::int32_t deviceType = onCard ? WithCard : WithoutCard;
    const auto putFiles = [&] {
        place.Put(folder + "drivers.txt", Drivers);
        place.Put(onCard ? "meter.qvd" : folder + "meter.qvd", package);
    };
    fuzz::Run(place, deviceType, putFiles, Install, {});
    fuzz::Must(!onCard || place.Bytes("meter.qvd") == package, "a package that was only read has changed");
    fuzz::Must(KeepsDrivers(package, place.Bytes(folder + "drivers.txt")), "a driver that was there is lost");
    // It may stop with any message if the inf has replaced a table.
    const std::string stopped = fuzz::WorkOn(place, deviceType, UseDriver);
    fuzz::Must(stopped.empty() || !IsSound(package), "a package without an error has ended the program: " + stopped);
    return 0;
}
