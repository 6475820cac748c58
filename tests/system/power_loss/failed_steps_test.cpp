// SPDX-License-Identifier: MIT
// Each step of each operation fails once, in each way that a disk can fail.
#include "tests/system/power_loss/trial.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <set>

namespace disk {
namespace {

struct Way {
    const char* Name;
    Blow What;
    int Error;
    std::set<Call> Kinds; ///< the kinds of steps that can fail in this way
};

const std::set<Call> TakeRoom = {Call::Open, Call::Write, Call::MakeFolder};
const std::set<Call> ChangeNames = {Call::Open, Call::MakeFolder, Call::Rename, Call::Unlink};
const std::set<Call> All = {Call::Open,       Call::Write,  Call::Truncate, Call::Sync,
                            Call::SyncFolder, Call::Rename, Call::Unlink,   Call::MakeFolder};

const Way Ways[] = {{"the disk is full", Blow::Fail, ENOSPC, TakeRoom},
                    {"the disk fails", Blow::Fail, EIO, All},
                    {"permission is denied", Blow::Fail, EACCES, ChangeNames},
                    {"half is written and the disk is full", Blow::ShortWrite, ENOSPC, {Call::Write}},
                    {"the disk is full from there on", Blow::FullFromHere, ENOSPC, TakeRoom}};

constexpr int DamagesOfASuccess = 10;

class FailedSteps : public testing::TestWithParam<Operation> {
protected:
    void SetUp() override {
        WriteTree(Folder.Path(), TreeBefore(GetParam()));
        Whole = Try(GetParam(), Folder.Path());
    }
    Outcome TryWith(const Plan& plan) {
        WriteTree(Folder.Path(), TreeBefore(GetParam()));
        return Try(GetParam(), Folder.Path(), plan);
    }
    /// Checks that an operation which reported success has been done, and that any other has left a whole state.
    void JudgeRun(const Outcome& run) {
        EXPECT_TRUE(run.Struck);
        Judge(GetParam(), Folder.Path(), run.IsSuccess() ? Ending::Completed : Ending::BetweenSteps);
    }
    /// The number of looks at a file while it is read depends on the machine's clock, so the planned one may not come.
    void JudgeLook(const Plan& plan) {
        const Outcome run = TryWith(plan);
        if (run.Struck)
            JudgeRun(run);
    }
    /// A call that the program repeats leads to the state of a good run. SQLite does not repeat its own calls: their
    /// failure is reported.
    void JudgeAgain(const Plan& plan) {
        const Outcome run = TryWith(plan);
        if (!run.Struck)
            return;
        JudgeRun(run);
        const bool isSqlites =
            run.StruckPath.find(".sqlite") != std::string::npos ||
            (plan.Kind != Counted::Names && plan.Kind != Counted::Looks && run.StruckPath == "Databases");
        EXPECT_TRUE(run.IsSuccess() || isSqlites) << run.StruckPath;
    }
    /// Checks that a success survives a loss of power right after it.
    void JudgeWithoutPower(const Outcome& run) {
        if (run.IsSuccess())
            LosePower(GetParam(), run, run.Steps.size(), DamagesOfASuccess, Ending::Completed);
    }

    const FreshFolder Folder;
    Outcome Whole; ///< the run in which nothing fails
};

TEST_P(FailedSteps, NothingIsLostWhenNoneFails) {
    EXPECT_TRUE(Whole.IsSuccess());
    Judge(GetParam(), Folder.Path(), Ending::Completed);
}

TEST_P(FailedSteps, LeaveTheOldStateOrTheNewOneAndAreReported) {
    int points = 0;
    for (const Way& way : Ways) {
        for (std::size_t i = 0; i < Whole.Kinds.size() && !HasFailure(); ++i) {
            if (way.Kinds.count(Whole.Kinds[i]) == 0)
                continue;
            const int step = static_cast<int>(i) + 1;
            SCOPED_TRACE("step " + std::to_string(step) + ": " + way.Name);
            JudgeRun(TryWith({way.What, step, way.Error, Counted::Steps}));
            ++points;
        }
    }
    EXPECT_GE(points, static_cast<int>(Whole.Kinds.size()));
    CountPoints("steps that failed:", points);
}

/// The power is not cut after these: if SQLite can't open a folder, it does not sync its names.
TEST_P(FailedSteps, ThatReadCostNothing) {
    int points = 0;
    for (int read = 1; read <= Whole.Reads && !HasFailure(); ++read) {
        SCOPED_TRACE("read " + std::to_string(read));
        JudgeRun(TryWith({Blow::Fail, read, EIO, Counted::Reads}));
        ++points;
    }
    EXPECT_EQ(points, Whole.Reads);
    CountPoints("reads that failed:", points);
}

/// A look that failed does not show what is there: the program goes on as in a good run, or reports the failure.
TEST_P(FailedSteps, ThatOnlyLookedCostNothing) {
    int points = 0;
    for (int look = 1; look <= Whole.Looks && !HasFailure(); ++look) {
        SCOPED_TRACE("look " + std::to_string(look));
        JudgeLook({Blow::Fail, look, EIO, Counted::Looks});
        ++points;
    }
    EXPECT_GT(points, 0);
    CountPoints("looks that failed:", points);
}

/// A name that has become stale on a network is looked up again. A stale file that is open is reported like any
/// failure.
TEST_P(FailedSteps, ThatHadBecomeStaleAreLookedUpAnew) {
    int points = 0;
    for (int look = 1; look <= Whole.Names && !HasFailure(); ++look) {
        SCOPED_TRACE("look " + std::to_string(look));
        JudgeAgain({Blow::Fail, look, ESTALE, Counted::Names});
        ++points;
    }
    EXPECT_GT(points, 0);
    CountPoints("looks that had become stale:", points);
}

/// If the failure lasts it is reported, and nothing is made elsewhere.
TEST_P(FailedSteps, ThatFailFromThereOnAreTold) {
    int points = 0;
    constexpr int all = 1'000'000;
    for (const int error : {ESTALE, EIO, ENOMEM, ENFILE, EMFILE}) {
        for (int look = 1; look <= Whole.Looks && !HasFailure(); ++look) {
            SCOPED_TRACE("from look " + std::to_string(look) + " on, error " + std::to_string(error));
            JudgeLook({Blow::Fail, look, error, Counted::Looks, all});
            ++points;
        }
    }
    CountPoints("looks that failed from there on:", points);
}

/// A call that a signal interrupts is repeated, and not reported.
TEST_P(FailedSteps, ThatASignalInterruptedAreMadeAgain) {
    int points = 0;
    const std::pair<Counted, int> all[] = {{Counted::Steps, static_cast<int>(Whole.Kinds.size())},
                                           {Counted::Reads, Whole.Reads},
                                           {Counted::Looks, Whole.Looks}};
    for (const auto& [kind, count] : all) {
        for (int call = 1; call <= count && !HasFailure(); ++call) {
            SCOPED_TRACE("kind " + std::to_string(static_cast<int>(kind)) + ", call " + std::to_string(call));
            JudgeAgain({Blow::Fail, call, EINTR, kind});
            ++points;
        }
    }
    CountPoints("calls that a signal interrupted:", points);
}

INSTANTIATE_TEST_SUITE_P(Operations, FailedSteps, testing::ValuesIn(Operations()),
                         [](const auto& row) { return NameOf(row.param); });

} // namespace
} // namespace disk
