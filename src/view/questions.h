// SPDX-License-Identifier: MIT
// Messages and questions to the technician, under the application's name.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// A message with one OK button.
void Tell(const Text& message);

/// A question with Yes and No. Timers, the port and the form go on while it stands.
bool Ask(const Text& question);

/// The question before something is destroyed, then "Are you sure?"; true after Yes to both.
bool AskTwice(const Text& question);

} // namespace modPDAUI
