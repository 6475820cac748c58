// SPDX-License-Identifier: MIT
// Messages and questions to the technician, under the application's name.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// Shows a message with one OK button.
void Tell(const Text& message);

/// Asks a question with Yes and No. Returns true for Yes. Events of timers, the port and the form are raised while it
/// is open.
bool Ask(const Text& question);

/// Asks before something is destroyed, and then "Are you sure?". Returns true after Yes to both.
bool AskTwice(const Text& question);

} // namespace modPDAUI
