// SPDX-License-Identifier: MIT
// The question before a driver package is installed with which something is wrong.
#pragma once

#include "companion/packages.h"

namespace companion {

/// Checks the package against the installed drivers. Returns its warnings and errors, of which at most ten are named,
/// and asks whether it is to be installed all the same. Returns an empty text if there are none, or if a driver of its
/// name is installed: the form installs nothing then, and says so.
Text InstallQuestion(const Package& package);

} // namespace companion
