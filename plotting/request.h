// SPDX-License-Identifier: MIT
// What a chart is asked to show.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace plotting {

enum class Kind { Line, Points, Histogram, Control };

/// The values that are shown; without an end, as far as they go.
struct ValueRange {
    std::optional<double> Low = {}, High = {};
    std::string Written = {}; ///< for people; empty for all values
    bool Has(double value) const { return !(Low && value < *Low) && !(High && value > *High); }
};

struct Request {
    std::vector<std::string> Columns = {}; ///< names for other tools or FIELDNAMEs; none: those of the instrument
    std::string By = {};                   ///< a series for each text of this column; empty for none
    std::string Against = "record";        ///< "record", "time" or a column
    plotting::Kind Kind = Kind::Line;
    bool JoinsGaps = false; ///< a line goes on where values are missing
    ValueRange Range = {};
};

} // namespace plotting
