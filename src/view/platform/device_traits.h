// SPDX-License-Identifier: MIT
// What the application does differently on each kind of device: one row for each kind. A new device needs a row here,
// and a row with what it reports when it is simulated (backends/simulated/device_profiles.h).
#pragma once

#include "src/text/text.h"
#include "src/view/platform/keys.h"

#include <span>

namespace platform {

/// The kinds of device, with the numbers that SystemObject::DeviceType reports.
enum class DeviceKind : std::int32_t {
    Desktop = 0,
    PalmOs = 1,
    Other = 2, ///< also every number that is not in this list
    PocketPc = 3,
    S60Early = 5,
    Uiq = 6,
    Smartphone = 7,
    S60 = 9,
};

constexpr std::int32_t NumberOf(DeviceKind kind) {
    return static_cast<std::int32_t>(kind);
}

/// When the two menus are opened by keys of the device, and not from a bar of the form.
enum class SoftKeys { Never, Always, FromVersion5 };

/// A row names only what differs from an unknown device; the defaults are those of an unknown device.
struct DeviceTraits {
    DeviceKind Kind = DeviceKind::Other;

    // The form
    bool HasWindow = false;     ///< the form is a window of its own size on a desktop, not the device's screen
    TextView GridFont = {};     ///< of both grids; empty: the designed font stays
    TextView FineGridFont = {}; ///< the same on a high-resolution screen, where everything is drawn at twice the size
    SoftKeys Menus = SoftKeys::Never;
    bool BarOverCells = false;    ///< the scroll bar is drawn over the cells and does not narrow the columns
    bool ListFieldIsText = false; ///< a text box with a list replaces the combo box
    bool RepaintEndsHold = true;  ///< a press that waits for the hold menu ends when the grids are repainted
    bool WritesInfoFile = false;  ///< QVRN.info is written when the preferences are closed

    // Keys
    std::span<const Key> GrabbedKeys = {};
    std::span<const Key> ReleasedKeys = {}; ///< released at the end although never grabbed
    bool EnterHolds = true;                 ///< Enter held down on a row opens its hold menu, as a press does
    bool EscapeDeletes = false;             ///< Escape deletes a character of a field
    bool EnterReachesField = false; ///< the control with the focus also acts on the characters of Enter and Escape
    bool GridTurnsPages = false;    ///< the grid scrolls by itself on a page key; the form only follows

    // Storage
    TextView OnlyVolume = {}; ///< the only volume; empty: the volumes that the platform lists
    TextView Memory = {}; ///< the volume with only line databases, while all others have only text files; empty: none
    bool IsMemory(TextView volume) const { return !Memory.empty() && volume == Memory; }
    TextView DataFolder = {};    ///< the path between the volume and the application's folder
    TextView DataFolderOnC = {}; ///< the same on drive C:; empty: the same path as elsewhere

    // The link
    std::int32_t ComPorts = 0; ///< number of ports that are offered, from Com1 on
    TextView OnlyPort = {};    ///< offered in place of those and of the mailbox server
    bool NamedPorts = false;   ///< a port that is not a Com port is opened by its name
    TextView MailboxFolder = u"c:\\";
    bool MailboxFolderCanBeSet = false; ///< with the setting RFCOMM_Path
};

/// Returns the row of a device type, or the row of DeviceKind::Other for a number without a row.
const DeviceTraits& TraitsOf(std::int32_t deviceType);

/// Returns the row of the installed back-end's device.
const DeviceTraits& Traits();

} // namespace platform
