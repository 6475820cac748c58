// SPDX-License-Identifier: MIT
// A back-end that does nothing, compiled by every build: the template of the next one. Copy this folder, rename it, and
// replace one object after the other. What an object must do is said in src/view/platform, and tried by the conformance
// suites in tests/unit/backends; what it may leave out is said at the object here.
//
// Before replacing an object by code of your own, look for a part that does it: backends/files (storage), serial
// (ports), grid (cells and their painting), simulated (what a device reports), loop (the event loop and all that hangs
// on it: BackEnd is a whole device but for its controls).
#pragma once

#include "backends/none/none_controls.h"
#include "backends/none/none_device.h"

#include <array>

namespace backends::none {

class NonePlatform {
public:
    NonePlatform();
    NonePlatform(const NonePlatform&) = delete;
    NonePlatform& operator=(const NonePlatform&) = delete;

    /// Valid for as long as the object.
    Platform& Record() { return record_; }

private:
    NoneForm form_;
    NoneGrid grdTitle_;
    NoneGrid grdMain_;
    NoneTextBox txtInputField_;
    NoneComboBox cboInputField_;
    NoneTextBox cbotxtInputField_;
    NoneDatePicker dteInputField_;
    NoneListBox lstHoldMenu_;
    NoneLabel lblStatus_;
    NoneScrollBar scrollBar_;
    NoneTimer tmrBlue_;
    NoneTimer tmrHoldEvent_;
    NoneTimer tmrMenus_;
    std::array<NoneMenuItem, 2> menuTitles_;
    std::array<NoneMenuItem, MenuItemCount> menuItems1_;
    std::array<NoneMenuItem, MenuItemCount> menuItems2_;
    NoneFonts fonts_;
    NoneSystem system_;
    NoneKeys keys_;
    NonePort port_;
    NoneConnections connections_;
    NoneTones tones_;
    NoneBox box_;
    NoneSettings settings_;
    NoneClock clock_;
    NoneRandom random_;
    NoneRunTime runTime_;
    NoneVolumes volumes_;
    NoneFiles files_;
    NoneDatabases databases_;
    NoneOnlooker onlooker_;
    Platform record_;
};

} // namespace backends::none
