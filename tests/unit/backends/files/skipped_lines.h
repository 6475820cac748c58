// SPDX-License-Identifier: MIT
// Returns how many lines of an undamaged file were skipped.
#pragma once

#include "src/view/platform/storage.h"

#include <gtest/gtest.h>

inline std::int64_t Skipped(platform::TextStream& stream, std::int64_t most) {
    std::int64_t passed = -1;
    EXPECT_EQ(stream.SkipLines(most, passed), platform::NoError);
    return passed;
}
