// SPDX-License-Identifier: MIT
// Lines that are longer than the room for them.
#pragma once

#include "plotting/scene.h"

#include <vector>

namespace plotting {

/// Returns the parts of a line that lie from `top` to `bottom`, which is larger: it ends where it leaves them, and
/// begins again where it comes back.
std::vector<std::vector<Spot>> PartsBetween(const std::vector<Spot>& line, double top, double bottom);

} // namespace plotting
