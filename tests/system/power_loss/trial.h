// SPDX-License-Identifier: MIT
// Runs an operation on a disk that fails, and judges what is there afterwards.
#pragma once

#include "tests/system/power_loss/disk_calls.h"
#include "tests/system/power_loss/operations.h"

namespace disk {

/// What came of one run.
struct Outcome {
    bool Done = false;    ///< the operation said so, or came back without a word
    bool Stopped = false; ///< the program can't go on, and has said why
    bool Told = false;    ///< a person was told that something could not be written, or is elsewhere
    bool Struck = false;  ///< the plan's step came
    std::string StruckPath;
    int Reads = 0;
    int Looks = 0;
    int Names = 0;
    std::vector<Call> Kinds; ///< of its steps
    std::vector<Step> Steps; ///< those that succeeded
    Start Began;

    bool IsSuccess() const { return Done && !Stopped && !Told; }
};

/// Starts the program on the folder, runs the operation there as the plan says, and ends the program.
Outcome Try(const Operation& operation, const std::string& root, const Plan& plan = {});

/// How the operation came to its end.
enum class Ending {
    Completed,    ///< it came back and said that it was done: the new state and no other
    BetweenSteps, ///< the old state, the new one, or one between them
};

/// The state of the files, where it is one that may be left.
std::optional<State> ExpectWhole(const Operation& operation, const std::string& root, Ending ending);
/// Looks at what the operation has left, then starts the program there again and has it do the operation once more.
void Judge(const Operation& operation, const std::string& root, Ending ending);

/// What the disk may hold if the power goes behind `count` steps of a run, in up to `damages` ways, each judged. The
/// number of trees that differed.
int LosePower(const Operation& operation, const Outcome& run, std::size_t count, int damages, Ending ending);

/// The tree that a run must have left if its steps are all that it did.
Tree LastsAfter(const Outcome& run);

/// Points that were tried, told when the program ends.
void CountPoints(const std::string& what, int points);

} // namespace disk
