// SPDX-License-Identifier: MIT
// The power is lost after each step of each operation. Anything that was not synced may be lost.
#include "tests/system/power_loss/trial.h"

#include <gtest/gtest.h>

namespace disk {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int Damages = 30;
#else
constexpr int Damages = 100;
#endif

class LostPower : public testing::TestWithParam<Operation> {
protected:
    LostPower() {
        WriteTree(Folder.Path(), TreeBefore(GetParam()));
        Whole = Try(GetParam(), Folder.Path());
    }

    Ending EndingAt(std::size_t cut) const {
        return cut == Whole.Steps.size() ? Ending::Completed : Ending::BetweenSteps;
    }

    const FreshFolder Folder;
    Outcome Whole;
};

/// The recorded steps must explain every change on the disk, because the model knows only these.
TEST_P(LostPower, KnowsAllThatWasDone) {
    EXPECT_TRUE(LastsAfter(Whole) == ReadTree(Folder.Path()));
}

TEST_P(LostPower, LeavesTheOldOrNewStateAndLosesNoCompletedSave) {
    const std::size_t count = Whole.Steps.size();
    int trees = 0;
    for (std::size_t cut = 0; cut <= count && !HasFailure(); ++cut) {
        SCOPED_TRACE("behind step " + std::to_string(cut) + " of " + std::to_string(count));
        trees += LosePower(GetParam(), Whole, cut, Damages, EndingAt(cut));
    }
    EXPECT_GE(count, 1U);
    EXPECT_GE(trees, static_cast<int>(count));
    CountPoints("power lost at points:", static_cast<int>(count) + 1);
    CountPoints("damages made:", (static_cast<int>(count) + 1) * Damages);
    CountPoints("damages that differed:", trees);
}

INSTANTIATE_TEST_SUITE_P(Operations, LostPower, testing::ValuesIn(Operations()),
                         [](const auto& row) { return NameOf(row.param); });

} // namespace
} // namespace disk
