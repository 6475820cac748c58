// SPDX-License-Identifier: MIT
// Runs an operation on a disk that fails, and checks the state afterwards.
#pragma once

#include "tests/system/power_loss/disk_calls.h"
#include "tests/system/power_loss/operations.h"

namespace disk {

/// The result of one run.
struct Outcome {
    bool Done = false;    ///< the operation reported success, or returned without a result
    bool Stopped = false; ///< the program has stopped with a message
    bool Told = false;    ///< it was reported that something could not be written, or is elsewhere
    bool Struck = false;  ///< the plan's call has come
    std::string StruckPath;
    int Reads = 0;
    int Looks = 0;
    int Names = 0;
    std::vector<Call> Kinds; ///< of its steps
    std::vector<Step> Steps; ///< those that succeeded
    Start Began;

    bool IsSuccess() const { return Done && !Stopped && !Told; }
};

/// Starts the program on the folder, runs the operation there under the plan, and ends the program.
Outcome Try(const Operation& operation, const std::string& root, const Plan& plan = {});

/// How the operation has ended.
enum class Ending {
    Completed,    ///< it reported success: only the new state is right
    BetweenSteps, ///< the old state, the new one, or one between them
};

/// Returns the state of the files if it may be left by such an ending; else fails and returns nothing.
std::optional<State> ExpectWhole(const Operation& operation, const std::string& root, Ending ending);
/// Checks what the operation has left, then starts the program there again and repeats the operation.
void Judge(const Operation& operation, const std::string& root, Ending ending);

/// Checks what may be on the disk if the power is lost after `count` steps of a run, in up to `damages` ways. Returns
/// the number of different trees.
int LosePower(const Operation& operation, const Outcome& run, std::size_t count, int damages, Ending ending);

/// Returns the tree that a run must have left if its recorded steps are all that it did.
Tree LastsAfter(const Outcome& run);

/// Adds points that were tried, whose sum is printed when the program ends.
void CountPoints(const std::string& what, int points);

} // namespace disk
