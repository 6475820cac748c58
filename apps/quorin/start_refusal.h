// SPDX-License-Identifier: MIT
// What is said when the window can't be started.
#pragma once

#include <string>

namespace quorin {

/// True if the environment names a display. Without one Qt can't show anything, not even a message.
bool HasDisplay();

/// Says why the program is not started, as lines for standard error: there, and in a box if standard error is no
/// terminal and there is a display. Returns when a person has closed the box. REQUIRES: there is no QApplication.
void TellRefusal(const std::string& lines);

} // namespace quorin
