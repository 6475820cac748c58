// SPDX-License-Identifier: MIT
// What the application does by the kind of device it runs on: one row a kind. A new device is a row here and one of
// what it reports when it is simulated (backends/simulated/device_profiles.h).
#pragma once

#include "src/text/text.h"
#include "src/view/platform/keys.h"

#include <span>

namespace platform {

/// The kinds of device, with the numbers that SystemObject::DeviceType reports.
enum class DeviceKind : std::int32_t {
    Desktop = 0,
    PalmOs = 1,
    Other = 2, ///< as is every number that is not in this list
    PocketPc = 3,
    S60Early = 5,
    Uiq = 6,
    Smartphone = 7,
    S60 = 9,
};

constexpr std::int32_t NumberOf(DeviceKind kind) {
    return static_cast<std::int32_t>(kind);
}

/// Whether the two menus belong to keys of the device, and not to a bar of the form.
enum class SoftKeys { Never, Always, FromVersion5 };

/// A row leaves out what it has in common with a device that nothing is known of.
struct DeviceTraits {
    DeviceKind Kind = DeviceKind::Other;

    // The form
    bool HasWindow = false;     ///< the form is a window of its own size on a desktop, not the device's screen
    TextView GridFont = {};     ///< of both grids; empty: the font stays as designed
    TextView FineGridFont = {}; ///< the same on a screen of high resolution, where all is drawn at twice the size
    SoftKeys Menus = SoftKeys::Never;
    bool BarOverCells = false;    ///< the scroll bar takes no width from the grid's columns
    bool ListFieldIsText = false; ///< a text box with a list stands in for the combo box
    bool RepaintEndsHold = true;  ///< a press that waits for the hold menu ends when the grids are painted anew
    bool WritesInfoFile = false;  ///< QVRN.info, when the preferences are left

    // Keys
    std::span<const Key> GrabbedKeys = {};
    std::span<const Key> ReleasedKeys = {}; ///< given back at the end though never grabbed
    bool EnterHolds = true;                 ///< Enter held down on a row opens its hold menu, as a press does
    bool EscapeDeletes = false;             ///< Escape is the key that deletes a character of a field
    bool EnterReachesForm = false; ///< the control with the focus acts on the characters of Enter and Escape as well
    bool GridTurnsPages = false;   ///< the grid itself scrolls at a page key; the form only follows

    // Storage
    TextView OnlyVolume = {}; ///< the one volume, which is not looked for; empty: those that the platform lists
    TextView Memory = {};     ///< the volume that holds line databases alone, all others text files alone; empty: none
    bool IsMemory(TextView volume) const { return !Memory.empty() && volume == Memory; }
    TextView DataFolder = {};    ///< between the volume and the application's folder
    TextView DataFolderOnC = {}; ///< the same on drive C:; empty: no other one

    // The link
    std::int32_t ComPorts = 0; ///< so many are offered, from Com1 on
    TextView OnlyPort = {};    ///< what is offered in place of those and of the mailbox server
    bool NamedPorts = false;   ///< a port that is no Com port is opened by its name
    TextView MailboxFolder = u"c:\\";
    bool MailboxFolderCanBeSet = false; ///< by the setting RFCOMM_Path
};

/// The row of a device type. Returns that of DeviceKind::Other for a number without a row.
const DeviceTraits& TraitsOf(std::int32_t deviceType);

/// The row of the device in place.
const DeviceTraits& Traits();

} // namespace platform
