// SPDX-License-Identifier: MIT
// The device into which a zip file is taken, and what becomes of each file.
#pragma once

#include "handover/line_merge.h"

#include <cstdint>
#include <functional>
#include <string>

namespace handover {

/// A row of the register.
struct RegisterRow {
    std::string Driver;
    std::string File;
    std::string Date; ///< eight digits
    std::string Alias;
};

/// The device into which a zip file is taken. The caller has the lock of its root folder.
struct Taker {
    std::string Data;      ///< folder of its tables, on the host; empty if it keeps them in line databases
    std::string Databases; ///< folder of its line databases
    std::string Journal;   ///< folder of its journal; empty for none
    /// Returns the file of the next download; empty if no number follows the last one.
    std::function<std::string()> NextDownload;
    /// Put a row to its place. Return false if it could not be written.
    std::function<bool(const RegisterRow&)> AddDownload;
    std::function<bool(const std::string& name, const std::string& infFile)> AddDriver;
};

enum class Fate {
    New,   ///< it was not here
    Grown, ///< what is new is behind what was here
    There, ///< nothing of it is new
    Left,  ///< what is here differs, and stays
    Failed
};

/// What became of a file of the zip file.
struct TakenFile {
    std::string File;    ///< in the zip file
    std::string As = {}; ///< here: another name if another file has that one
    Fate Is = Fate::There;
    std::uint64_t Records = 0; ///< new records of a download
    std::string Why = {};      ///< why it is not here, or not all of it, with what to do; empty else
};

struct TakeListener {
    std::function<void(const TakenFile&)> Taken;
    std::function<void(const Difference&)> Differs;
};

struct TakeResult {
    std::string WhyNot;    ///< why nothing was begun, as a sentence; empty if it was
    std::size_t Taken = 0; ///< files that are new or have grown
    std::size_t There = 0;
    std::size_t Left = 0;
    std::size_t Failed = 0;
    std::size_t Differing = 0; ///< records
    std::uint64_t Records = 0; ///< new records of downloads
};

} // namespace handover
