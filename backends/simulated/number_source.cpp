// SPDX-License-Identifier: MIT
#include "backends/simulated/number_source.h"

namespace platform::common {

double NumberSource::Next() {
    constexpr double wholeRange = 4294967296.0;
    return static_cast<double>(Engine()) / wholeRange;
}

} // namespace platform::common
