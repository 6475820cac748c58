// SPDX-License-Identifier: MIT
// Tests of ActUntil, which repeats an action until it has an effect and then stops, and of Desktop::IsAtRest.
#include "tests/system/window/running_window.h"

#include <gtest/gtest.h>

#include <thread>

namespace live {
namespace {

using Clock = std::chrono::steady_clock;

bool AtRest() {
    return true;
}

TEST(Hand, ActsOnceWhereThatHasItsEffect) {
    int acts = 0;
    EXPECT_TRUE(ActUntil([&] { return acts > 0; }, [&] { ++acts; }, AtRest));
    EXPECT_EQ(acts, 1);
}

TEST(Hand, ActsAgainWhereNothingCameOfIt) {
    int acts = 0;
    EXPECT_TRUE(ActUntil([&] { return acts > 2; }, [&] { ++acts; }, AtRest));
    EXPECT_EQ(acts, 3);
}

TEST(Hand, WaitsAsLongAsSomethingIsOnItsWay) {
    int acts = 0;
    const auto comes = Clock::now() + std::chrono::seconds(3);
    const auto hasCome = [&] { return Clock::now() > comes; };
    EXPECT_TRUE(ActUntil(
        hasCome, [&] { ++acts; }, hasCome));
    EXPECT_EQ(acts, 1);
}

TEST(Hand, ActsAgainWhereTheEffectIsGoneAtOnce) {
    int acts = 0;
    int looks = 0;
    EXPECT_TRUE(ActUntil([&] { return acts > 1 || ++looks == 1; }, [&] { ++acts; }, AtRest));
    EXPECT_EQ(acts, 2);
}

TEST(Hand, SeesWhetherTheProgramAtTheDesktopRests) {
    Desktop screen;
    Child resting({"sleep", "600"});
    screen.Watch(resting.Id());
    EXPECT_TRUE(Eventually([&] { return screen.IsAtRest(); }));
    Child busy({"sh", "-c", "while :; do :; done"});
    screen.Watch(busy.Id());
    EXPECT_TRUE(Eventually([&] { return !screen.IsAtRest(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(screen.IsAtRest());
}

} // namespace
} // namespace live
