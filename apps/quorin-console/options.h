// SPDX-License-Identifier: MIT
// The command line of quorin-console.
#pragma once

#include "platform/device/back_end.h"

#include <string>

namespace console {

struct Options {
    platform::device::DeviceOptions Device;
    std::string Script; ///< file with the commands; standard input when empty
    bool Strict = false;
};

enum class Reading { Run, Shown, Wrong };

/// Reads the command line. Shown: help or the version were asked for and written. Wrong: a line on standard error says
/// what is.
Reading ReadOptions(int count, const char* const* words, Options& options);

} // namespace console
