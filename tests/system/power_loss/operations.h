// SPDX-License-Identifier: MIT
// The operations of storage that must not lose anything, as rows: the state before, the action, the states afterwards.
#pragma once

#include "tests/system/power_loss/machine.h"

#include <functional>
#include <ostream>

namespace disk {

struct Operation {
    std::string Name;
    Keeping Kept = Keeping::TextFiles;
    /// The files that are compared. There are others beside them: the drivers table, the register, a driver's inf
    /// table, a package.
    State Before;
    /// Returns true if the operation reports success. One without a result has succeeded when it returns.
    bool (*Do)(Machine&) = nullptr;
    /// Returns the state after the operation; nothing if it can't be done on that state.
    std::optional<State> (*After)(const State&) = nullptr;
    /// The states between the two, if the operation is documented as several steps.
    std::vector<State> Between;

    State Done() const { return *After(Before); }
};

void PrintTo(const Operation& operation, std::ostream* out);
std::string NameOf(const Operation& operation); ///< for a test's name

/// Returns all rows, each for every way of keeping lines that it works on.
std::vector<Operation> Operations();

/// Returns the root folder before the operation.
const Tree& TreeBefore(const Operation& operation);

} // namespace disk
