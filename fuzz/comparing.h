// SPDX-License-Identifier: MIT
// Makes a fuzz target of a comparison (tests/reference): the fuzzer's bytes are its choices.
#pragma once

#include "tests/reference/choices.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

inline int Compare(std::string (*compare)(reference::Choices&), const std::uint8_t* bytes, std::size_t count) {
    reference::Choices choices(bytes, count);
    const std::string difference = compare(choices);
    if (difference.empty())
        return 0;
    std::fprintf(stderr, "%s\n", difference.c_str());
    std::abort();
}

} // namespace fuzz
