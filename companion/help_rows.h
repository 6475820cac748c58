// SPDX-License-Identifier: MIT
// What the help says of each screen of the form: a row a screen.
#pragma once

#include "src/view/screen_table.h"

#include <vector>

namespace companion {

/// Something that can be done on a screen.
struct HelpAct {
    const char* Name; ///< as the menu or the list has it
    const char* What;
};

struct HelpRow {
    const modQuorin::ScreenId* Screen; ///< the variable that holds the screen's number
    const char* Title;
    const char* Purpose;
    std::vector<HelpAct> Acts;
    std::vector<const char*> Limits; ///< how the rows of docs/limits.md begin that matter on this screen
};

const std::vector<HelpRow>& HelpRows();

/// Returns the row of a screen; null for 0 or a screen without one.
const HelpRow* HelpRowOf(modQuorin::ScreenId screen);

} // namespace companion
