// SPDX-License-Identifier: MIT
// An instrument that a person plays, line by line: each line of standard input is an order.
#pragma once

#include "apps/quorin-instrument/made_to_order.h"
#include "apps/quorin-instrument/outlet.h"
#include "apps/quorin-instrument/player.h"

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace instrument {

struct Order {
    enum class Kind { None, One, All, Stranger, Unplug, Plug, Every, Quit, Unknown };
    Kind What = Kind::None;
    std::size_t ResultKind = 0;    ///< One alone
    std::chrono::seconds Every{0}; ///< Every alone; 0: no more
};

/// Reads a line, in any case. `kinds`: the names of the results; a name or its number, from 1, asks for one.
Order ReadOrder(std::string_view line, const std::vector<std::string>& kinds);

/// Carries out what the descriptor `input` asks for, until it ends, asks to quit, or the process is told to stop. While
/// nobody listens nothing is sent. What was done is written to `told`, a line each.
Outcome Ask(MadeToOrder& results, const PlayOptions& options, Outlet& outlet, int input, std::ostream& told);

} // namespace instrument
