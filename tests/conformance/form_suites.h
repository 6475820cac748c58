// SPDX-License-Identifier: MIT
// The suites of a form and of the device around it, for any back-end: src/view/platform/controls.h, grid.h, device.h
// and run_time.h, and the events of src/app/form.h.
//
// A back-end joins by one file that derives from FormUnderTest and runs QUORIN_RUN_FORM_SUITES with its factory, as
// headless_form.cpp and qt_form.cpp do: their FormInHand (form_in_hand.h) has most of it for a back-end that is made
// from BackEnd and has a Hand (backends/input). What a back-end does not have is a suite that its file leaves out, as
// none_form.cpp does, with the reason; the routines of FormUnderTest that only such suites call may be left out too.
#pragma once

#include "src/view/platform/platform.h"
#include "tests/conformance/grid_suites.h"
#include "tests/conformance/raised_events.h"
#include "tests/conformance/service_suites.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace conformance {

using namespace platform;

/// How something ended the program.
struct ProgramEnd {
    bool Failed = false;
    Text Message; ///< of the failure
};

/// A device whose form was loaded and activated, with the handlers of raised_events.h. Its clock moves only by Pass.
/// The events of a person's action have been handled when the routine returns. An impossible action, such as a tap on a
/// disabled grid, does nothing.
class FormUnderTest {
public:
    virtual ~FormUnderTest() = default;
    /// Installed by platform::Install as long as this object exists.
    virtual Platform& Record() = 0;

    /// Lets time pass, with the events that become due.
    virtual void Pass(std::int64_t) { ADD_FAILURE() << "the clock of this device can't be moved"; }

    virtual void Tap(std::int32_t /*row*/, std::int32_t /*col*/) { Lacks(); } ///< on grdMain
    virtual void ClickItem(std::int32_t /*menu*/, std::int32_t /*item*/) { Lacks(); }
    virtual void ClickTitle(std::int32_t /*menu*/) { Lacks(); }
    virtual void PressKey(std::int32_t /*keyCode*/) { Lacks(); }
    /// Types into the control that has the focus, without key events of the form; `\r` is Enter, `\b` Backspace.
    virtual void Type(const Text&) { Lacks(); }
    virtual void ReplaceText(const Text&) { Lacks(); } ///< all text of the control that has the focus, in one step
    virtual void ChooseDate(const CalendarDate&) { Lacks(); }

    /// Runs `step` while the next message box is open; then the person answers the box.
    virtual void WhileABoxIsOpen(std::function<void()> /*step*/, BoxAnswer) { Lacks(); }
    /// Runs `step` when WaitEvents waits next.
    virtual void WhileItWaits(std::function<void()> /*step*/) { Lacks(); }
    /// Asks for the end of the program, as something outside of it does.
    virtual void BeginEnding() { Lacks(); }
    /// Runs an action that may end the program. Returns how it ended; nothing if the program goes on.
    virtual std::optional<ProgramEnd> EndOf(const std::function<void()>&) {
        Lacks();
        return {};
    }
    /// Returns the tones played so far, in hertz and milliseconds. Nothing if they can't be observed.
    virtual std::optional<std::vector<std::pair<std::int32_t, std::int32_t>>> TonesPlayed() { return {}; }

private:
    static void Lacks() { ADD_FAILURE() << "nobody is at this device"; }
};

struct FormFactory {
    const char* Name;
    std::unique_ptr<FormUnderTest> (*Make)();
};

inline void PrintTo(const FormFactory& factory, std::ostream* out) {
    *out << factory.Name;
}

class FormSuite : public testing::TestWithParam<FormFactory> {
protected:
    FormSuite() {
        for (Timer* timer : {&Form().tmrBlue, &Form().tmrHoldEvent, &Form().tmrMenus})
            timer->SetEnabled(false);
        Raised = {};
    }
    ~FormSuite() override { Raised = {}; }

    Platform& Form() { return Device->Record(); }
    void Settle() { Form().runTime.DoEvents(); }
    /// Returns the events since the last call.
    static std::vector<std::string> Heard() { return std::exchange(Raised.Heard, {}); }
    /// Shows a field and gives it the focus. The events of this are forgotten.
    void Open(Control& field) {
        field.SetBounds({10, 20, 120, 24});
        field.SetVisible(true);
        field.SetFocus();
        Heard();
    }
    /// Shows grdMain with rows of 20 pixels and the focus.
    void ShowRows(std::int32_t rows) {
        Form().grdMain.SetBounds({0, 0, 200, 100});
        Form().grdMain.SetDefaultRowHeight(20);
        Form().grdMain.SetRows(rows);
        Form().grdMain.SetCols(2);
        Form().grdMain.SetColWidth(0, 100);
        Form().grdMain.SetColWidth(1, 100);
        Form().grdMain.SetFocus();
        Settle();
        Heard();
    }

    const std::unique_ptr<FormUnderTest> Device = GetParam().Make();
};

/// What a control keeps of its settings. A control that raises no events does so, too.
class ControlsSuite : public FormSuite {
protected:
    std::vector<std::pair<const char*, Control*>> Controls() {
        return {{"grdTitle", &Form().grdTitle},
                {"grdMain", &Form().grdMain},
                {"txtInputField", &Form().txtInputField},
                {"cboInputField", &Form().cboInputField},
                {"cbotxtInputField", &Form().cbotxtInputField},
                {"dteInputField", &Form().dteInputField},
                {"lstHoldMenu", &Form().lstHoldMenu},
                {"lblStatus", &Form().lblStatus}};
    }
    std::vector<std::pair<const char*, FontControl*>> FontControls() {
        return {{"grdTitle", &Form().grdTitle},
                {"grdMain", &Form().grdMain},
                {"txtInputField", &Form().txtInputField},
                {"cboInputField", &Form().cboInputField},
                {"cbotxtInputField", &Form().cbotxtInputField},
                {"lblStatus", &Form().lblStatus}};
    }
    std::vector<MenuItem*> MenuItems() {
        std::vector<MenuItem*> all = {&Form().mnuButton1, &Form().mnuButton2};
        all.insert(all.end(), Form().mnuButtonO1.begin(), Form().mnuButtonO1.end());
        all.insert(all.end(), Form().mnuButtonO2.begin(), Form().mnuButtonO2.end());
        return all;
    }
};

/// The device around the form: system, volumes, port, connections, tones.
class DeviceSuite : public FormSuite {};
/// The change events of the fields, and what raises none.
class FieldEventsSuite : public FormSuite {};
class FocusSuite : public FormSuite {};
/// A person's actions: taps, keys, menus.
class PersonSuite : public FormSuite {};
class TimerSuite : public FormSuite {};
/// Message boxes, waiting, and the end of the program.
class RunTimeSuite : public FormSuite {};

/// Returns the factory of the grid grdMain of a form.
GridFactory MainGridOf(const FormFactory& factory);

/// Returns the factory of a service of a form.
template <class Service>
ServiceFactory<Service> ServiceOf(const FormFactory& factory, Service& (*get)(Platform& record)) {
    const auto make = [factory, get] {
        const std::shared_ptr<FormUnderTest> form = factory.Make();
        return std::shared_ptr<Service>(form, &get(form->Record()));
    };
    return {factory.Name, make};
}
inline ServiceFactory<FontServer> FontsOf(const FormFactory& factory) {
    return ServiceOf<FontServer>(factory, [](Platform& record) -> FontServer& { return record.fontServer; });
}
inline ServiceFactory<Clock> ClockOf(const FormFactory& factory) {
    return ServiceOf<Clock>(factory, [](Platform& record) -> Clock& { return record.clock; });
}
inline ServiceFactory<Random> NumbersOf(const FormFactory& factory) {
    return ServiceOf<Random>(factory, [](Platform& record) -> Random& { return record.random; });
}

/// Runs the suites of stored properties. They need no event, and of FormUnderTest only Record.
#define QUORIN_RUN_QUIET_FORM_SUITES(Name, factory)                                                                    \
    INSTANTIATE_TEST_SUITE_P(Name, ControlsSuite, testing::Values(factory));                                           \
    INSTANTIATE_TEST_SUITE_P(Name, DeviceSuite, testing::Values(factory));                                             \
    INSTANTIATE_TEST_SUITE_P(Name, GridCellsSuite, testing::Values(MainGridOf(factory)));                              \
    INSTANTIATE_TEST_SUITE_P(Name, FontSuite, testing::Values(FontsOf(factory)));                                      \
    INSTANTIATE_TEST_SUITE_P(Name, ClockSuite, testing::Values(ClockOf(factory)));                                     \
    INSTANTIATE_TEST_SUITE_P(Name, RandomSuite, testing::Values(NumbersOf(factory)))

/// Runs all suites of a form.
#define QUORIN_RUN_FORM_SUITES(Name, factory)                                                                          \
    QUORIN_RUN_QUIET_FORM_SUITES(Name, factory);                                                                       \
    INSTANTIATE_TEST_SUITE_P(Name, TextMeasureSuite, testing::Values(FontsOf(factory)));                               \
    INSTANTIATE_TEST_SUITE_P(Name, FieldEventsSuite, testing::Values(factory));                                        \
    INSTANTIATE_TEST_SUITE_P(Name, FocusSuite, testing::Values(factory));                                              \
    INSTANTIATE_TEST_SUITE_P(Name, GridEventsSuite, testing::Values(MainGridOf(factory)));                             \
    INSTANTIATE_TEST_SUITE_P(Name, GridPaintingSuite, testing::Values(MainGridOf(factory)));                           \
    INSTANTIATE_TEST_SUITE_P(Name, PersonSuite, testing::Values(factory));                                             \
    INSTANTIATE_TEST_SUITE_P(Name, TimerSuite, testing::Values(factory));                                              \
    INSTANTIATE_TEST_SUITE_P(Name, RunTimeSuite, testing::Values(factory))

} // namespace conformance
