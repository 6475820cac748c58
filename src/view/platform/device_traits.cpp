// SPDX-License-Identifier: MIT
#include "src/view/platform/device_traits.h"

#include "src/view/platform/platform.h"

#include <algorithm>

namespace platform {

namespace {

constexpr Key PalmKeys[] = {Key::PalmLeft,     Key::PalmRight, Key::PalmApp1,       Key::PalmApp2,     Key::PalmApp3,
                            Key::PalmApp4,     Key::PageUp,    Key::PageDown,       Key::PalmPowerOff, Key::PalmPower,
                            Key::PalmLauncher, Key::PalmFind,  Key::PalmCalculator, Key::PalmApp5,     Key::PalmMenu};
constexpr Key PalmReleasedKeys[] = {Key::PalmSelect}; // never grabbed; releasing it does no harm
constexpr Key SmartphoneKeys[] = {Key::SoftKey2};

constexpr DeviceTraits Rows[] = {
    {
        .Kind = DeviceKind::Other,
    },
    {
        .Kind = DeviceKind::Desktop,
        .HasWindow = true,
        .GridFont = u"Tahoma",
        .OnlyVolume = u".\\",
        .ComPorts = 127,
    },
    {
        .Kind = DeviceKind::PalmOs,
        .FineGridFont = u"AFPalmHR",
        .Menus = SoftKeys::Always,
        .RepaintEndsHold = false,
        .GrabbedKeys = PalmKeys,
        .ReleasedKeys = PalmReleasedKeys,
        .EnterHolds = false,
        .GridTurnsPages = true,
        .Memory = u"Device:\\",
        .DataFolder = u"PALM\\Programs\\",
        .OnlyPort =
            u"1919312750", // the code of the four characters r, f, c, n: a port is opened by the code of its profile
    },
    {
        .Kind = DeviceKind::PocketPc,
        .GridFont = u"Tahoma",
        .Menus = SoftKeys::FromVersion5,
        .WritesInfoFile = true,
        .DataFolder = u"My Documents\\",
        .ComPorts = 16,
        .MailboxFolder = u"\\Application Data\\Volatile\\RFCOMM\\",
        .MailboxFolderCanBeSet = true,
    },
    {
        .Kind = DeviceKind::S60Early,
        .GridFont = u"Nokia Sans S60",
        .Menus = SoftKeys::Always,
    },
    {
        .Kind = DeviceKind::Uiq,
        .GridFont = u"AFSE UIQ Standard",
        .DataFolder = u"Media Files\\",
        .DataFolderOnC = u"documents\\",
    },
    {
        .Kind = DeviceKind::Smartphone,
        .GridFont = u"Microsoft Sans Serif CMF",
        .Menus = SoftKeys::FromVersion5,
        .WritesInfoFile = true,
        .GrabbedKeys = SmartphoneKeys,
        .EscapeDeletes = true,
        .EnterReachesField = true,
        .DataFolder = u"My Documents\\",
        .ComPorts = 16,
        .MailboxFolder = u"\\Application Data\\Volatile\\RFCOMM\\",
        .MailboxFolderCanBeSet = true,
    },
    {
        .Kind = DeviceKind::S60,
        .GridFont = u"Nokia Sans S60",
        .Menus = SoftKeys::Always,
        .BarOverCells = true,
        .ListFieldIsText = true,
        .DataFolder = u"Data\\",
        .NamedPorts = true,
        .MailboxFolder = u"d:\\",
    },
};

} // namespace

const DeviceTraits& TraitsOf(std::int32_t deviceType) {
    const auto found = std::find_if(std::begin(Rows), std::end(Rows),
                                    [deviceType](const DeviceTraits& row) { return NumberOf(row.Kind) == deviceType; });
    return found != std::end(Rows) ? *found : Rows[0];
}

const DeviceTraits& Traits() {
    return TraitsOf(Device().myCsys.DeviceType());
}

} // namespace platform
