// SPDX-License-Identifier: MIT
#include "backends/simulated/device_profiles.h"

#include <algorithm>

namespace backends {

namespace {

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
    return {
        {.Name = "desktop",
         .Kind = DeviceKind::Desktop,
         .Device = "a desktop",
         .Screen = {.Width = 640, .Height = 480},
         .Volume = DesktopFolder,
         .Keys = DesktopKeys()},
        {.Name = "palm",
         .Kind = DeviceKind::PalmOs,
         .Device = "Palm OS",
         .Screen = {.Width = 160, .Height = 160},
         .Volume = PalmMemory,
         .Keys = PalmKeys()},
        {.Name = "palm-hires",
         .Kind = DeviceKind::PalmOs,
         .Device = "Palm OS with a high resolution",
         .Screen = {.Width = 320, .Height = 320},
         .Volume = PalmMemory,
         .Keys = PalmKeys()},
        {.Name = "other",
         .Kind = DeviceKind::Other,
         .Device = "an unknown device",
         .Screen = {.Width = 240, .Height = 320},
         .Volume = SymbianDrive,
         .Keys = PhoneKeys()},
        {.Name = "pocketpc",
         .Kind = DeviceKind::PocketPc,
         .Device = "Windows Mobile with a touch screen",
         .Screen = {.Width = 240, .Height = 320},
         .Volume = WindowsRoot,
         .Keys = TouchKeys()},
        {.Name = "s60-early",
         .Kind = DeviceKind::S60Early,
         .Device = "Symbian S60, the earlier kind",
         .Screen = {.Width = 240, .Height = 320},
         .Volume = SymbianDrive,
         .Keys = PhoneKeys()},
        {.Name = "uiq",
         .Kind = DeviceKind::Uiq,
         .Device = "Symbian UIQ",
         .Screen = {.Width = 240, .Height = 320},
         .Volume = SymbianDrive,
         .Keys = TouchKeys()},
        {.Name = "smartphone",
         .Kind = DeviceKind::Smartphone,
         .Device = "Windows Mobile with keys",
         .Screen = {.Width = 240, .Height = 320},
         .Volume = WindowsRoot,
         .Keys = SmartphoneKeys()},
        {.Name = "s60",
         .Kind = DeviceKind::S60,
         .Device = "Symbian S60",
         .Screen = {.Width = 240, .Height = 320},
         .Volume = SymbianDrive,
         .Keys = PhoneKeys()},
    };
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
