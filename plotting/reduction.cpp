// SPDX-License-Identifier: MIT
#include "plotting/reduction.h"

#include <cmath>
#include <cstdint>
#include <unordered_set>

namespace plotting {

namespace {

/// The spots of one column of pixels that count.
struct Column {
    std::size_t First, Lowest, Highest, Last; ///< indices

    void Take(std::size_t index, const std::vector<Spot>& spots) {
        Lowest = spots[index].Y < spots[Lowest].Y ? index : Lowest;
        Highest = spots[index].Y > spots[Highest].Y ? index : Highest;
        Last = index;
    }
    void Put(const std::vector<Spot>& spots, std::vector<Spot>& kept) const {
        std::size_t before = static_cast<std::size_t>(-1);
        for (const std::size_t index : {First, std::min(Lowest, Highest), std::max(Lowest, Highest), Last})
            if (index != before) {
                kept.push_back(spots[index]);
                before = index;
            }
    }
};

} // namespace

std::vector<Spot> ReducedLine(const std::vector<Spot>& spots) {
    std::vector<Spot> kept;
    for (std::size_t i = 0; i < spots.size();) {
        const double pixel = std::floor(spots[i].X);
        Column column{i, i, i, i};
        for (++i; i < spots.size() && std::floor(spots[i].X) == pixel; ++i)
            column.Take(i, spots);
        column.Put(spots, kept);
    }
    return kept;
}

std::vector<Spot> ReducedMarkers(const std::vector<Spot>& spots) {
    std::unordered_set<std::int64_t> taken;
    std::vector<Spot> kept;
    for (const Spot& spot : spots) {
        const auto x = static_cast<std::int64_t>(std::floor(spot.X)), y = static_cast<std::int64_t>(std::floor(spot.Y));
        if (taken.insert(x * 1'000'000 + y).second)
            kept.push_back(spot);
    }
    return kept;
}

} // namespace plotting
