// SPDX-License-Identifier: MIT
// The operations of storage that must not lose anything, as rows: what there is before, what is done, what may be there
// afterwards.
#pragma once

#include "tests/system/power_loss/machine.h"

#include <functional>
#include <ostream>

namespace disk {

struct Operation {
    std::string Name;
    Keeping Kept = Keeping::TextFiles;
    /// The files that are looked at. Others stand beside them: the drivers, the register, a driver's inf table, a
    /// package.
    State Before;
    /// Whether the operation says that it has been done. One that says nothing has been done when it comes back.
    bool (*Do)(Machine&) = nullptr;
    /// What it makes of a state; nothing where there is nothing that it could do.
    std::optional<State> (*After)(const State&) = nullptr;
    /// Whole states between the two: of the steps that an operation is documented to take one after the other.
    std::vector<State> Between;

    State Done() const { return *After(Before); }
};

void PrintTo(const Operation& operation, std::ostream* out);
std::string NameOf(const Operation& operation); ///< for a test's name

/// All rows, each for every way of keeping lines that it works on.
std::vector<Operation> Operations();

/// The root folder before the operation.
const Tree& TreeBefore(const Operation& operation);

} // namespace disk
