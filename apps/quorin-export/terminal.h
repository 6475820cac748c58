// SPDX-License-Identifier: MIT
// What standard output can show.
#pragma once

namespace exporter {

struct TerminalSize {
    int Columns = 80, Rows = 24;
};

/// True if standard output is a terminal.
bool IsTerminal();

/// Returns the size of the terminal on standard output, less the row of the shell's next prompt; 80 by 23 for none.
TerminalSize SizeOfTerminal();

/// True if the locale of the environment has UTF-8.
bool IsUtf8();

} // namespace exporter
