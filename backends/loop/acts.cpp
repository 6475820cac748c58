// SPDX-License-Identifier: MIT
#include "backends/loop/acts.h"

namespace backends {

void ReportAct(const Act& act) {
    if (Acts.Begins)
        Acts.Begins(act);
}

std::string ArgumentsOf(std::initializer_list<std::int32_t> numbers) {
    std::string words;
    for (const std::int32_t number : numbers)
        words += (words.empty() ? "" : " ") + std::to_string(number);
    return words;
}

} // namespace backends
