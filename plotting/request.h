// SPDX-License-Identifier: MIT
// What a chart is asked to show.
#pragma once

#include <string>
#include <vector>

namespace plotting {

enum class Kind { Line, Points, Histogram, Control };

struct Request {
    std::vector<std::string> Columns = {}; ///< names for other tools or FIELDNAMEs; none: those of the instrument
    std::string By = {};                   ///< a series for each text of this column; empty for none
    std::string Against = "record";        ///< "record", "time" or a column
    plotting::Kind Kind = Kind::Line;
};

} // namespace plotting
