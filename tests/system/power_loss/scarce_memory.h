// SPDX-License-Identifier: MIT
// The memory of SQLite, which has an allocator of its own, and runs out where it is told to.
#pragma once

namespace disk {

enum class Scarce {
    Once,       ///< one allocation fails alone
    FromThereOn ///< and all behind it
};

/// While it lives the `at`th allocation of SQLite fails, counted from 1. One at a time.
class ScarceMemory {
public:
    ScarceMemory(int at, Scarce how);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    static bool Struck(); ///< that allocation came
};

} // namespace disk
