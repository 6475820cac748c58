// SPDX-License-Identifier: MIT
#pragma once

#include "apps/quorin-instrument/outlet.h"
#include "apps/quorin-instrument/player.h"
#include "apps/start/exit_status.h"

#include <optional>

namespace instrument {

struct CommandLine {
    std::string StreamFile;      ///< empty for a made-up stream
    std::optional<double> Times; ///< STREAM is a recording with times, to be played so many times as fast; 0: at once
    MadeUpStream MadeUp;
    PlayOptions Play;
    std::string Device;  ///< empty for none
    std::string Mailbox; ///< empty for none
    bool Print = false;
    bool Ask = false; ///< send what standard input asks for
    std::string Link; ///< empty for none
    Linger Stay;
};

/// Reads the command line. Returns false if the process is to end with `exitStatus`: help or version were asked for, or
/// the usage is wrong. Any message has been printed.
bool ReadCommandLine(int argc, char** argv, CommandLine& line, start::ExitStatus& exitStatus);

} // namespace instrument
