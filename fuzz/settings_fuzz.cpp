// SPDX-License-Identifier: MIT
// The bytes are the settings file: the program is started with it, its preferences are opened, and some are stored. The
// other lines of the file stay as they are, in their order.
#include "fuzz/table_lines.h"
#include "fuzz/technician.h"

#include <algorithm>

namespace {

/// Returns true if the line sets a key that the program stores, so that the program may have changed it.
bool SetsAKeyOfOurs(const std::string& line) {
    const std::string key = modStringTools::ToBytes(modStringTools::LowerCase(modStringTools::FromBytes(line)));
    return key.find("storagevolume") != std::string::npos || key.find("comport") != std::string::npos ||
           key.find("colour") != std::string::npos || key.find("fontsize") != std::string::npos;
}

bool HasMark(const std::string& bytes) {
    return bytes.compare(0, 3, "\xEF\xBB\xBF") == 0;
}

std::vector<std::string> LinesOfSettings(const std::string& bytes) {
    std::string text = HasMark(bytes) ? bytes.substr(3) : bytes;
    if (!text.empty() && text.back() != '\n')
        text += '\n';
    return fuzz::LinesOf(text);
}

/// Returns true if all other lines are still there, and a byte-order mark too. A last line without an end may get one.
bool KeepsOtherLines(const std::string& before, const std::string& after) {
    if (HasMark(before) != HasMark(after))
        return false;
    const std::vector<std::string> lines = LinesOfSettings(after);
    auto place = lines.begin();
    for (const std::string& line : LinesOfSettings(before)) {
        if (SetsAKeyOfOurs(line))
            continue;
        place = std::find(place, lines.end(), line);
        if (place == lines.end())
            return false;
        ++place;
    }
    return true;
}

void UsePreferences(fuzz::Technician& technician) {
    technician.Choose(u"Preferences...");
    for (std::int32_t row = 0; row < 5; ++row) {
        technician.Tap(row);
        technician.Tap(0);
        technician.Tap(1);
        technician.Choose(u"Back");
        technician.Choose(u"Preferences...");
    }
    technician.Choose(u"Back");
    for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
        technician.Choose(caption);
    technician.Tick(1600);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    constexpr std::int32_t DeviceTypes[] = {0, 3, 6, 9};
    const std::string settings = fuzz::AsString(bytes, count);
    const auto putFiles = [&] {
        fuzz::PutMeter(place);
        place.Put("settings.ini", settings);
    };
    const std::int32_t deviceType = DeviceTypes[count % std::size(DeviceTypes)];
    fuzz::Run(place, deviceType, putFiles, UsePreferences, {"The setting ComPort "});
    fuzz::Must(KeepsOtherLines(settings, place.Bytes("settings.ini")), "a line of the settings is lost");
    return 0;
}
