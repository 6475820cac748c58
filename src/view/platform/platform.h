// SPDX-License-Identifier: MIT
// All platform operations, in one record. A back-end fills it before the form is loaded.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/platform/controls.h"
#include "src/view/platform/device.h"
#include "src/view/platform/grid.h"
#include "src/view/platform/onlooker.h"
#include "src/view/platform/reading_log.h"
#include "src/view/platform/run_time.h"
#include "src/view/platform/storage.h"

#include <array>

namespace platform {

/// The number of items of a soft menu. Items are numbered from 1.
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
    std::array<MenuItem*, MenuItemCount> mnuButtonO1; ///< item i is at index i - 1
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
    ReadingLog& readingLog;
};

/// Installs a back-end for all later calls; it is never removed. The caller keeps the record, which must exist as long
/// as it is used.
void Install(Platform* platform);

/// Returns the installed back-end. REQUIRES: Install was called.
Platform& Device();

/// What happens when a failure stops the program.
struct StopState {
    /// Called before the message of the failure is shown, to save what is not on disk yet. The application sets it at
    /// its start. If it fails too, the message contains both failures.
    void (*BeforeFailure)() = nullptr;
    const Text* Failure = nullptr; ///< the failure for which BeforeFailure runs, or null; RuntimeFailure writes it
};
inline StopState Stop;

/// Stops the program with this message: calls Stop.BeforeFailure, then the back-end's RunTime::RuntimeFailure.
[[noreturn]] void RuntimeFailure(const Text& text);

} // namespace platform
