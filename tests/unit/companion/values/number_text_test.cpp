// SPDX-License-Identifier: MIT
#include "companion/values/number_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace values {
namespace {

TEST(ARoundedNumber, HasItsDigitsUpToAPlace) {
    EXPECT_EQ(RoundedText(24.5123, -2), "24.51");
    EXPECT_EQ(RoundedText(-24.5123, -2), "-24.51");
    EXPECT_EQ(RoundedText(20, -3), "20");
    EXPECT_EQ(RoundedText(10000.5, -3), "10000.5");
    EXPECT_EQ(RoundedText(1234567.8, -1), "1234567.8");
    EXPECT_EQ(RoundedText(-0.00071, -6), "-0.00071");
    EXPECT_EQ(RoundedText(0, 3), "0");
    EXPECT_EQ(RoundedText(-0.004, -1), "0");
}

TEST(ARoundedNumber, HasAnExponentIfItIsHugeOrTiny) {
    EXPECT_EQ(RoundedText(1.53e300, 299), "1.5e300");
    EXPECT_EQ(RoundedText(3e10, 8), "3e10");
    EXPECT_EQ(RoundedText(-2.5e-9, -12), "-2.5e-9");
}

TEST(ARoundedNumber, HasNoDigitThatNobodyMeasured) {
    EXPECT_EQ(RoundedText(0.1 + 0.2, -20), "0.3");
    EXPECT_EQ(RoundedText(1e15 + 0.5, -3), "1e15");
    EXPECT_EQ(RoundedText(std::numeric_limits<double>::infinity(), 0), "(too large)");
}

TEST(ANumberAsText, HasAFullStopAndAsManyPlacesAsAreAsked) {
    EXPECT_EQ(FixedText(24.5, 2), "24.50");
    EXPECT_EQ(ScientificText(1.5e300, 4), "1.5e300");
    EXPECT_EQ(ScientificText(1e-7, 2), "1e-7");
    EXPECT_EQ(ExponentOf(0.03), -2);
    EXPECT_EQ(ExponentOf(1000), 3);
}

} // namespace
} // namespace values
