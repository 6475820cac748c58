// SPDX-License-Identifier: MIT
#include "backends/simulated/number_source.h"

namespace backends {

double NumberSource::Next() {
    constexpr double wholeRange = 4294967296.0;
    return static_cast<double>(Engine_()) / wholeRange;
}

} // namespace backends
