// SPDX-License-Identifier: MIT
#include "src/view/sound.h"

#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modAudio {
namespace {

using testing::ElementsAre;
using testing::Pair;

class Sounding : public testing::Test {
protected:
    support::TestDevice Device;
};

TEST_F(Sounding, OfATakenResultIsHighAndShort) {
    PlaySound(SoundCode::Taken);
    EXPECT_THAT(Device.Did.Tones, ElementsAre(Pair(1046, 250)));
}

TEST_F(Sounding, OfARefusedResultIsLow) {
    PlaySound(SoundCode::Refused);
    EXPECT_THAT(Device.Did.Tones, ElementsAre(Pair(369, 300)));
}

TEST_F(Sounding, OfAnyOtherCodeRepeatsTheLastTone) {
    PlaySound(SoundCode{2});
    PlaySound(SoundCode{3});
    PlaySound(SoundCode{17});
    EXPECT_THAT(Device.Did.Tones, ElementsAre(Pair(1046, 250), Pair(369, 300), Pair(369, 300)));
}

} // namespace
} // namespace modAudio
