// SPDX-License-Identifier: MIT
// The whole list of platform operations, gathered in one record. A back-end fills it before the form is loaded.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/platform/controls.h"
#include "src/view/platform/device.h"
#include "src/view/platform/grid.h"
#include "src/view/platform/onlooker.h"
#include "src/view/platform/run_time.h"
#include "src/view/platform/storage.h"

#include <array>

namespace platform {

/// The number of items of a soft menu; they are numbered from 1.
inline constexpr std::int32_t MenuItemCount = 5;

struct Platform {
    Form& form;
    OwnerDrawGrid& grdTitle;
    OwnerDrawGrid& grdMain;
    TextBox& txtInputField;
    ComboBox& cboInputField;
    TextBox& cbotxtInputField;
    DatePicker& dteInputField;
    ListBox& lstHoldMenu;
    Label& lblStatus;
    ScrollBar& AFVScrollBar1;
    Timer& tmrBlue;
    Timer& tmrHoldEvent;
    Timer& tmrMenus;
    MenuItem& mnuButton1;
    MenuItem& mnuButton2;
    std::array<MenuItem*, MenuItemCount> mnuButtonO1; ///< item i stands at i less 1
    std::array<MenuItem*, MenuItemCount> mnuButtonO2;
    FormColours colours;

    FontServer& fontServer;
    SystemObject& myCsys;
    HardwareKeys& hardwareKeys;
    SerialPort& serConnection;
    ConnectionService& connectionService;
    ToneMaker& toneMaker;
    MessageBox& messageBox;
    Settings& settings;
    Clock& clock;
    Random& random;
    RunTime& runTime;

    Volumes& volumes;
    FileSystem& fileSystem;
    RecordDatabase& recordDatabase;
    SaveWatcher& saveWatcher;
    Onlooker& onlooker;
};

/// Puts a back-end in place for all that follows; nothing takes it away. The record stays the caller's.
void Install(Platform* platform);

/// The back-end in place.
Platform& Device();

/// What a failure that stops the program goes through.
struct StopState {
    /// Runs once the program is known to stop, before that is told: what is not on disk yet can be saved. The
    /// application sets it at its start. Where it fails itself, both messages are told.
    void (*BeforeFailure)() = nullptr;
    const Text* Failure = nullptr; ///< the one for which BeforeFailure runs; RuntimeFailure writes it
};
inline StopState Stop;

/// Stops the program: the run-time's failure of the back-end in place.
[[noreturn]] void RuntimeFailure(const Text& text);

} // namespace platform
