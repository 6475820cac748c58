// SPDX-License-Identifier: MIT
// An allocator for SQLite that fails at a chosen allocation.
#pragma once

namespace disk {

enum class Scarce {
    Once,       ///< only this allocation fails
    FromThereOn ///< it and all after it fail
};

/// While it exists, the `at`th allocation of SQLite fails, counted from 1. There can be only one.
class ScarceMemory {
public:
    ScarceMemory(int at, Scarce how);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    static bool Struck(); ///< true if that allocation has come
};

} // namespace disk
