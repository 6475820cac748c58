// SPDX-License-Identifier: MIT
#include "plotting/cut_line.h"

#include <algorithm>

namespace plotting {

namespace {

/// Returns where the way between two spots is at a height between theirs.
Spot At(const Spot& from, const Spot& to, double height) {
    return {from.X + (to.X - from.X) * ((height - from.Y) / (to.Y - from.Y)), height};
}

} // namespace

std::vector<std::vector<Spot>> PartsBetween(const std::vector<Spot>& line, double top, double bottom) {
    std::vector<std::vector<Spot>> parts;
    std::vector<Spot> part;
    const auto end = [&] {
        if (part.size() > 1)
            parts.push_back(part);
        part.clear();
    };
    for (std::size_t i = 0; i < line.size(); ++i) {
        const Spot& spot = line[i];
        const double inside = std::clamp(spot.Y, top, bottom);
        if (i > 0) {
            const Spot& before = line[i - 1];
            const double insideBefore = std::clamp(before.Y, top, bottom);
            if (before.Y != insideBefore && inside != insideBefore)
                part.push_back(At(before, spot, insideBefore));
            if (spot.Y != inside && inside != insideBefore)
                part.push_back(At(before, spot, inside));
        }
        if (spot.Y == inside)
            part.push_back(spot);
        else
            end();
    }
    end();
    return parts;
}

} // namespace plotting
