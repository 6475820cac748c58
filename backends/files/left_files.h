// SPDX-License-Identifier: MIT
// Half-written files of programs that were killed while they replaced a file (Replacement, host_files.h).
#pragma once

#include <cstdint>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

namespace backends {

inline constexpr std::time_t OneDay = 24 * 60 * 60; // seconds
/// Also of files of the future, as the clock of another machine may have made them.
inline constexpr std::time_t AnyAge = std::numeric_limits<std::time_t>::min();

/// Removes the files of ended programs from a folder and, to a depth of `deep`, from those beneath it: those with the
/// name of a Replacement's file whose program does not run, and which were last changed more than `age` seconds ago.
/// Links are not followed, and other users' files are left alone. What can't be removed stays: it costs nothing but its
/// space.
void RemoveLeftFiles(const std::string& folder, int deep, std::time_t age = OneDay);

/// A file that the form has written beside a table and could not give the table's name: eight digits and ".txt". No
/// start removes it, because it may be the only copy of what was saved.
struct LeftTable {
    std::string Name;
    std::int64_t Size = 0;
    std::time_t Changed = 0; ///< seconds since 1970
};

/// Returns those in a folder, by name; none if it can't be read.
std::vector<LeftTable> LeftTables(const std::string& folder);

/// The folders of a device's volumes are no deeper.
inline constexpr int DepthOfRoot = 3;

} // namespace backends
