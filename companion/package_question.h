// SPDX-License-Identifier: MIT
// The question before a driver package is installed with which something is wrong.
#pragma once

#include "companion/packages.h"

namespace companion {

/// True if a driver of the package's name is installed: the form refuses the package then, and says so.
bool IsInstalled(const Package& package);

/// Checks the package against the installed drivers. Returns its warnings and errors, of which at most ten are named,
/// and asks whether it is to be installed all the same. Returns an empty text if there are none, or if a driver of its
/// name is installed.
Text InstallQuestion(const Package& package);

} // namespace companion
