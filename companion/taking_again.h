// SPDX-License-Identifier: MIT
// When a reading of this run may be handed to the receive path once more.
#pragma once

#include "src/view/platform/reading_log.h"

namespace companion {

/// Returns why a reading of this fate can't be taken again now; empty if it can. `isAsked`: a message box is open, and
/// its answer may empty what arrives meanwhile.
Text AgainRefusal(platform::Fate fate, bool isAsked);

/// True if a reading that was handed over waits for the end of a line that has arrived in part.
bool AgainWaits();

} // namespace companion
