// SPDX-License-Identifier: MIT
#include "backends/simulated/device_profiles.h"

#include <algorithm>

namespace backends {

namespace {

constexpr const char* Version = "5.2"; // a version that is possible for every kind of device

const ProfileVolume DesktopFolder = {u".\\", 65536};
const ProfileVolume PalmMemory = {u"Device:\\", 65536};
const ProfileVolume WindowsRoot = {u"\\", 65536};
const ProfileVolume SymbianDrive = {u"C:\\", 65536};

using Keys = std::vector<DeviceKey>;

Keys Joined(const Keys& first, const Keys& second) {
    Keys both = first;
    both.insert(both.end(), second.begin(), second.end());
    return both;
}

Keys TouchKeys() {
    return {{Key::Left, "left"}, {Key::Right, "right"},       {Key::Up, "up"},
            {Key::Down, "down"}, {Key::PalmSelect, "select"}, {Key::Enter, "enter"}};
}

Keys PhoneKeys() {
    return Joined(TouchKeys(), {{Key::Escape, "back"}});
}

Keys SmartphoneKeys() {
    return Joined(PhoneKeys(), {{Key::SoftKey2, "soft key 2"}});
}

Keys DesktopKeys() {
    return Joined(TouchKeys(), {{Key::Escape, "escape"}, {Key::PageUp, "page up"}, {Key::PageDown, "page down"}});
}

Keys PalmKeys() {
    return {{Key::PalmLeft, "left"},         {Key::PalmRight, "right"},        {Key::PalmSelect, "select"},
            {Key::PageUp, "page up"},        {Key::PageDown, "page down"},     {Key::PalmApp1, "app 1"},
            {Key::PalmApp2, "app 2"},        {Key::PalmApp3, "app 3"},         {Key::PalmApp4, "app 4"},
            {Key::PalmPower, "power"},       {Key::PalmPowerOff, "power off"}, {Key::PalmMenu, "menu"},
            {Key::PalmLauncher, "launcher"}, {Key::PalmFind, "find"},          {Key::PalmCalculator, "calculator"},
            {Key::PalmApp5, "app 5"}};
}

std::vector<DeviceProfile> AllProfiles() {
    // clang-format off
    return {
        // name        kind                    device                                screen      version  volume         keys
        {"desktop",    DeviceKind::Desktop,    "a desktop",                           {640, 480}, Version, DesktopFolder, DesktopKeys()},
        {"palm",       DeviceKind::PalmOs,     "Palm OS",                             {160, 160}, Version, PalmMemory,    PalmKeys()},
        {"palm-hires", DeviceKind::PalmOs,     "Palm OS with a high resolution",      {320, 320}, Version, PalmMemory,    PalmKeys()},
        {"other",      DeviceKind::Other,      "an unknown device",                   {240, 320}, Version, SymbianDrive,  PhoneKeys()},
        {"pocketpc",   DeviceKind::PocketPc,   "Windows Mobile with a touch screen",  {240, 320}, Version, WindowsRoot,   TouchKeys()},
        {"s60-early",  DeviceKind::S60Early,   "Symbian S60, the earlier kind",       {240, 320}, Version, SymbianDrive,  PhoneKeys()},
        {"uiq",        DeviceKind::Uiq,        "Symbian UIQ",                         {240, 320}, Version, SymbianDrive,  TouchKeys()},
        {"smartphone", DeviceKind::Smartphone, "Windows Mobile with keys",            {240, 320}, Version, WindowsRoot,   SmartphoneKeys()},
        {"s60",        DeviceKind::S60,        "Symbian S60",                         {240, 320}, Version, SymbianDrive,  PhoneKeys()},
    };
    // clang-format on
}

} // namespace

const std::vector<DeviceProfile>& DeviceProfiles() {
    static const std::vector<DeviceProfile> profiles = AllProfiles();
    return profiles;
}

const DeviceProfile& ProfileOfType(std::int32_t deviceType) {
    const auto& profiles = DeviceProfiles();
    const auto rowOf = [&profiles](DeviceKind kind) {
        return std::find_if(profiles.begin(), profiles.end(),
                            [kind](const DeviceProfile& profile) { return profile.Kind == kind; });
    };
    const auto found = rowOf(TraitsOf(deviceType).Kind);
    return found != profiles.end() ? *found : *rowOf(DeviceKind::Other);
}

const DeviceProfile* ProfileNamed(std::string_view name) {
    for (const DeviceProfile& profile : DeviceProfiles()) {
        if (name == profile.Name)
            return &profile;
    }
    return nullptr;
}

} // namespace backends
