// SPDX-License-Identifier: MIT
// What the program does before there is a device, for any kind of device.
#pragma once

#include "apps/quorin-console/console_options.h"
#include "apps/quorin-console/session.h"

namespace console {

/// Reads the command line, opens the commands, creates and locks the root folder, and runs the session on a device.
/// Returns the exit status.
start::ExitStatus ConsoleMain(int count, char** words, start::ExitStatus (*run)(const Options&, Session&));

/// Tells how the program has ended, and closes what is open while the platform still exists. Returns the exit status.
start::ExitStatus EndOf(Session& session, const backends::ProgramOver& over);

} // namespace console
