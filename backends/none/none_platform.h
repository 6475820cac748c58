// SPDX-License-Identifier: MIT
// A back-end that does nothing, compiled by every build: the template of the next one. Copy this folder, rename it, and
// replace one object after the other. What an object must do is said in src/view/platform, and tried by the suites in
// tests/conformance, where one file with a factory joins; what it may leave out is said at the object here.
//
// Before replacing an object by code of your own, look for a part that does it: backends/files (storage), serial and
// port (ports), grid (cells and their painting), simulated (what a device reports), loop (the event loop and all that
// uses it: BackEnd is a whole device except for its controls and what DeviceParts names), host (those parts on a POSIX
// host). BackEnd has a record of its own: it takes the place of this class and of none_device.h in one step, and its
// head says what the controls must be then.
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
    Platform& Record() { return Record_; }

private:
    NoneForm Form_;
    NoneGrid GrdTitle_;
    NoneGrid GrdMain_;
    NoneTextBox TxtInputField_;
    NoneComboBox CboInputField_;
    NoneTextBox CbotxtInputField_;
    NoneDatePicker DteInputField_;
    NoneListBox LstHoldMenu_;
    NoneLabel LblStatus_;
    NoneScrollBar ScrollBar_;
    NoneTimer TmrBlue_;
    NoneTimer TmrHoldEvent_;
    NoneTimer TmrMenus_;
    std::array<NoneMenuItem, 2> MenuTitles_;
    std::array<NoneMenuItem, MenuItemCount> MenuItems1_;
    std::array<NoneMenuItem, MenuItemCount> MenuItems2_;
    NoneFonts Fonts_;
    NoneSystem System_;
    NoneKeys Keys_;
    NonePort Port_;
    NoneConnections Connections_;
    NoneTones Tones_;
    NoneBox Box_;
    NoneSettings Settings_;
    NoneClock Clock_;
    NoneRandom Random_;
    NoneRunTime RunTime_;
    NoneVolumes Volumes_;
    NoneFiles Files_;
    NoneDatabases Databases_;
    NoneOnlooker Onlooker_;
    NoneReadingLog Log_;
    Platform Record_;
};

} // namespace backends::none
