// SPDX-License-Identifier: MIT
#include "companion/losses.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

const Text NotMade = u"qrn0001.txt could not be created: the disk is full. Readings are not stored.";

TEST(Losses, SayWhatIsWrongAndCountTheReadings) {
    Losses losses;
    EXPECT_FALSE(losses.Any());
    losses.NoPlace(NotMade);
    EXPECT_TRUE(losses.Any());
    EXPECT_EQ(losses.Words(), NotMade);
    losses.Reading(u"the reading 1 % is not stored.");
    EXPECT_EQ(losses.Words(), NotMade + u"\n\n1 reading is not stored.");
    losses.Reading(u"the reading 2 % is not stored.");
    EXPECT_EQ(losses.Words(), NotMade + u"\n\n2 readings are not stored.");
}

TEST(Losses, AreSaidAnewWithTheNextReading) {
    Losses losses;
    losses.NoPlace(NotMade);
    losses.Seen();
    EXPECT_FALSE(losses.Any());
    losses.Reading(u"the reading 1 % is not stored.");
    EXPECT_EQ(losses.Words(), u"the reading 1 % is not stored.\n\n1 reading is not stored.");
}

} // namespace
} // namespace companion
