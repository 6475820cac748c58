// SPDX-License-Identifier: MIT
// The part of the check of a package that is about what fills its rows.
#pragma once

#include "companion/driver_package.h"
#include "companion/finding.h"

namespace companion {

/// What the BLOB of a row asks for.
struct Wanted {
    bool IsVariable = false; ///< else it is a result type
    Text Name;               ///< of the type or variable
    Text Type;               ///< the result type that the variable must come with; empty for any
};
Wanted WantedBy(const Text& blob);

/// Adds what is wrong with the BLOB of each row, and with all of them together.
void CheckFilling(const DriverPackage& package, std::vector<Finding>& found);

} // namespace companion
