// SPDX-License-Identifier: MIT
// The program is killed before and inside each step of each operation, and after the last one.
#include "tests/system/power_loss/trial.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace disk {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t Stride = 2; // a program with sanitizers forks slowly
#else
constexpr std::size_t Stride = 1;
#endif

class KilledSteps : public testing::TestWithParam<Operation> {
protected:
    /// Returns true if the child was killed and did not end by itself.
    bool IsKilledIn(const Plan& plan) {
        WriteTree(Folder.Path(), TreeBefore(GetParam()));
        const pid_t child = ::fork();
        if (child == 0) {
            Try(GetParam(), Folder.Path(), plan);
            ::_exit(0);
        }
        int status = 0;
        return child > 0 && ::waitpid(child, &status, 0) == child && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

    int JudgeKill(const Plan& plan, Ending ending) {
        SCOPED_TRACE("step " + std::to_string(plan.At) + ", blow " + std::to_string(static_cast<int>(plan.What)));
        EXPECT_TRUE(IsKilledIn(plan));
        Judge(GetParam(), Folder.Path(), ending);
        return 1;
    }

    const FreshFolder Folder;
};

TEST_P(KilledSteps, LeaveTheOldStateOrTheNewOne) {
    WriteTree(Folder.Path(), TreeBefore(GetParam()));
    const std::vector<Call> kinds = Try(GetParam(), Folder.Path()).Kinds;
    int points = 0;
    for (std::size_t i = 0; i < kinds.size() && !HasFailure(); i += Stride) {
        const int step = static_cast<int>(i) + 1;
        points += JudgeKill({Blow::KillBefore, step, 0, Counted::Steps}, Ending::BetweenSteps);
        if (kinds[i] == Call::Write)
            points += JudgeKill({Blow::KillInside, step, 0, Counted::Steps}, Ending::BetweenSteps);
    }
    const int last = static_cast<int>(kinds.size());
    points += JudgeKill({Blow::KillAfter, last, 0, Counted::Steps}, Ending::BetweenSteps);
    EXPECT_GT(points, last / static_cast<int>(Stride));
    CountPoints("killed at points:", points);
}

INSTANTIATE_TEST_SUITE_P(Operations, KilledSteps, testing::ValuesIn(Operations()),
                         [](const auto& row) { return NameOf(row.param); });

} // namespace
} // namespace disk
