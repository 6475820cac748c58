// SPDX-License-Identifier: MIT
#include "apps/guide/guide.h"

#include "backends/loop/acts.h"
#include "backends/loop/form_events.h"
#include "src/app/commands.h"
#include "src/app/form.h"

#include <algorithm>
#include <array>

namespace apps {

using namespace modQuorin;

namespace {

/// A screen, the one from which it is reached, and the command for that. Back leads the other way.
struct Way {
    const ScreenId& To;
    const ScreenId& From;
    const char16_t* Command;
};
constexpr std::array Ways = {
    Way{ScrDrivers, ScrMain, u"Start..."},
    Way{ScrInstalledDrivers, ScrMain, u"inf editor..."},
    Way{ScrAddDriver, ScrInstalledDrivers, u"Add Driver..."},
    Way{ScrPreferences, ScrMain, u"Preferences..."},
};
const Text Back = u"Back";

/// Returns the command that leads from a screen towards the goal.
Text CommandTowards(ScreenId goal, ScreenId from) {
    while (goal != ScrMain) {
        const auto* const way =
            std::find_if(Ways.begin(), Ways.end(), [goal](const Way& each) { return each.To == goal; });
        if (way == Ways.end())
            break;
        if (way->From == from)
            return way->Command;
        goal = way->From;
    }
    return Back;
}

} // namespace

/// A filled grid is hidden until its rows are painted, and a hidden grid reports no change of its row.
void Guide::Settle() {
    constexpr std::int64_t Step = 20;       // milliseconds
    constexpr std::int64_t Patience = 2000; // for a grid that stays hidden
    Device_.loop.HandleDue();
    for (std::int64_t waited = 0; waited < Patience && !Device_.Seen().grdMain.Visible(); waited += Step)
        Device_.loop.PassTime(Step);
}

void Guide::Run(const Text& command) {
    backends::ReportAct(
        {.Word = "command", .Arguments = '"' + modStringTools::ToBytes(command) + '"', .About = command});
    MenuEvent(command);
    Settle();
}

bool Guide::GoTo(ScreenId goal) {
    constexpr int MostSteps = 8; // a person may lead the form elsewhere meanwhile
    for (int step = 0; step < MostSteps && Screens.CurrentScreen != goal && !Device_.loop.Ending(); ++step) {
        const Text command = CommandTowards(goal, Screens.CurrentScreen);
        if (command == Back && Screens.CurrentScreen == ScrMain)
            return false; // it would end the program
        Run(command);
    }
    return Screens.CurrentScreen == goal;
}

bool Guide::TapRow(const Text& text) {
    const auto& grid = Device_.Seen().grdMain;
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
        if (grid.Cell(row, 0) != text)
            continue;
        TapRow(row);
        return true;
    }
    return false;
}

void Guide::TapRow(std::int32_t row) {
    auto& grid = Device_.Seen().grdMain;
    const ScreenId screen = Screens.CurrentScreen;
    backends::ReportPress(grid, row, 0);
    grid.SetFocus();
    grid.SetCurrentCell(row, 0);
    frmQuorin::grdMain_Press();
    Device_.loop.HandleDue();
    backends::ReportRelease();
    if (Screens.CurrentScreen == screen && !Device_.loop.Ending())
        frmQuorin::grdMain_Release();
    Settle();
}

} // namespace apps
