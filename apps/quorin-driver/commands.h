// SPDX-License-Identifier: MIT
// The commands of quorin-driver, as rows: name, help, options, routine.
#pragma once

#include "apps/start/exit_status.h"

#include <string>

namespace driver {

struct Options {
    std::string Package;   ///< the driver package to check
    std::string Recording; ///< what an instrument has sent; empty for none
    std::string Drivers;   ///< the list of installed drivers; empty if it is not known
    std::string Output;    ///< the package to make; empty for standard output
    bool Json = false;
};

/// Reads the command line and runs the command. Returns the exit status.
start::ExitStatus DriverMain(int count, const char* const* words);

// Each writes its result to standard output, and why it can't do anything to standard error.
start::ExitStatus CheckDriver(const Options& options);
start::ExitStatus NewDriver(const Options& options);

} // namespace driver
