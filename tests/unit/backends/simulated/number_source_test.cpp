// SPDX-License-Identifier: MIT
#include "backends/simulated/number_source.h"

#include <gtest/gtest.h>
#include <set>

using backends::NumberSource;

namespace {

TEST(NumberSource, GivesTheSameNumbersOnEveryMachine) {
    NumberSource source;
    source.Seed(5489);
    EXPECT_DOUBLE_EQ(source.Next(), 3499211612.0 / 4294967296.0); // the generator's well-known first number
}

TEST(NumberSource, GivesOtherNumbersForOtherSeeds) {
    std::set<double> firsts;
    for (const std::int32_t seed : {0, 1, 2, -1, 34200, 34201}) {
        NumberSource source;
        source.Seed(seed);
        firsts.insert(source.Next());
    }
    EXPECT_EQ(firsts.size(), 6U);
}

TEST(NumberSource, StaysFromZeroToBelowOneAndReachesEveryDigit) {
    NumberSource source;
    std::set<int> digits;
    for (int i = 0; i < 100000; ++i) {
        const double number = source.Next();
        ASSERT_GE(number, 0.0);
        ASSERT_LT(number, 1.0);
        digits.insert(static_cast<int>(number * 10));
    }
    EXPECT_EQ(digits.size(), 10U);
}

} // namespace
