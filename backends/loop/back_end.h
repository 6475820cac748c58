// SPDX-License-Identifier: MIT
// A whole device: everything that back-ends have in common. A back-end adds the controls, the fonts and a pump.
//
// Its controls implement Controls (form_controls.h), and those that can have the focus also FocusTarget (focus.h). Its
// constructor makes the record by RecordOf, calls DesignControls and WireEvents (form_events.h), and sets
// boxes.Opening: a box that opens takes the release of a cell that is pressed. In each round of events it calls
// RaisePainting of both grids, as an EventSource of the loop or in the pump's HandlePending.
//
// These events are left to it: grdMain_Press and grdMain_Release, with HandIsDown true between them; grdTitle_Release,
// lstHoldMenu_Click and dteInputField_Closed; keys, by form_keys.h; menus, the request to close the form and the soft
// keyboard, by form_events.h.
#pragma once

#include "backends/loop/form_controls.h"
#include "backends/loop/form_onlooker.h"
#include "backends/loop/serial_ports.h"
#include "backends/loop/services.h"
#include "backends/simulated/number_source.h"
#include "companion/readings.h"

namespace backends {

/// What a device is made of besides its controls. How these are made depends on the system that the program runs on;
/// this folder needs neither files nor descriptors. What is referred to must exist for as long as the back-end.
struct DeviceParts {
    DeviceSystem system; ///< what the device reports of itself
    DeviceClock clock;
    DeviceSerial& serial;
    ConnectionService& connections;
    Volumes& volumes;
    FileSystem& files;
    RecordDatabase& databases;
    Settings& settings;
};

class BackEnd {
public:
    BackEnd(const DeviceParts& parts, Pump& pump, CommandSource& commands, Watcher& watcher);
    BackEnd(const BackEnd&) = delete;
    BackEnd& operator=(const BackEnd&) = delete;
    virtual ~BackEnd();

    /// Loads the form and brings it to the front, as the start of the program does.
    void StartProgram();
    /// Lets the application's routines use this back-end before the form is started.
    void Serve() { Install(&Record()); }

    /// Call this when the program was held up. That must not be taken for a sleep of the device, which would reset the
    /// link.
    void WasHeldUp();

    /// Holds the link as two boxes do that stand one over the other, or lets it go on with what has arrived meanwhile.
    void PauseLink(bool isPaused);
    bool LinkIsPaused() const { return LinkIsPaused_; }

    /// The controls. They live as long as the back-end.
    virtual const Controls& Seen() const = 0;

    Focus focus;
    DeviceClock clock;
    EventLoop loop;
    LoopTimer tmrBlue;
    LoopTimer tmrHoldEvent;
    LoopTimer tmrMenus;

    DeviceSystem system;
    DeviceKeys keys;
    DeviceSerial& serial;
    ConnectionService& connections;
    WatchedTones tones;
    NumberSource random;
    LoopRunTime runTime;
    FormOnlooker onlooker;              ///< holds the notices
    companion::ReadingReports readings; ///< what becomes of readings is reported to its observers

    Volumes& volumes;
    FileSystem& files;
    RecordDatabase& databases;
    ReportedSettings settings;

protected:
    /// Returns the record of platform operations over these controls.
    Platform RecordOf(const Controls& controls);
    /// Sets the design-time properties of the controls and the handlers that the controls of every back-end raise.
    void DesignControls(const Controls& controls);

    virtual Platform& Record() = 0;
    /// Called when the form is loaded and is to appear on the screen.
    virtual void ShowForm() {}

private:
    void HoldLinkUnderPile(DeviceBoxes& boxes);

    bool LinkIsPaused_ = false;
};

} // namespace backends
