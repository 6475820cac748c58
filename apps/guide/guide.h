// SPDX-License-Identifier: MIT
// Leads the form by what a person would do: commands of its menus, taps on rows. Each is an act in the journal.
#pragma once

#include "backends/loop/back_end.h"
#include "src/view/screen_table.h"

namespace apps {

/// REQUIRES: each routine is called at the outermost level of the loop. Each handles events, and may return long after
/// it was called: a message box of the form may open.
class Guide {
public:
    explicit Guide(backends::BackEnd& device) : Device_(device) {}

    /// Goes to the start screen, or to one of the screens of drivers or the preferences, from any of these. Returns
    /// false if the form is on another screen in the end.
    bool GoTo(modQuorin::ScreenId goal);
    /// Runs a command of the screen.
    void Run(const Text& command);
    /// Taps the first row whose text is this. Returns false if there is none.
    bool TapRow(const Text& text);
    void TapRow(std::int32_t row);

    /// Lets what has happened so far take effect.
    void Settle();

private:
    backends::BackEnd& Device_;
};

} // namespace apps
