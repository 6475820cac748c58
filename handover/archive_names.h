// SPDX-License-Identifier: MIT
// What a zip file of a device may contain: the names of its files, and how much.
#pragma once

#include "src/text/text.h"

#include <cstdint>
#include <set>
#include <string>

namespace handover {

inline constexpr const char* RegisterName = "qrnctrl.txt";
inline constexpr const char* DriversName = "drivers.txt";

// Beyond these a zip file is neither written nor read. A device has a thousandth of them.
inline constexpr std::uint64_t MostFiles = 1'000'000;
inline constexpr std::uint64_t LargestFile = std::uint64_t{4} << 30;    // bytes; a file is held in memory
inline constexpr std::uint64_t LargestTotal = std::uint64_t{256} << 30; // bytes of all files
/// A file above this size that packs better than this ratio is put in as it is: what a reader unpacks is then no more
/// than this ratio of what it was given.
inline constexpr std::uint64_t FreelyPacked = 16 << 20; // bytes
inline constexpr std::uint64_t MostRatio = 200;

enum class Area { Data, Databases, Journal };

/// Returns where a file goes: "qrn0001.txt" to the data folder, "Databases/drivers.sqlite" to the line databases,
/// "journal/DAY.jsonl" to the journal.
Area AreaOf(const std::string& name);
/// Returns the name without its folder.
std::string LeafOf(const std::string& name);

/// The names in a zip file, looked at one by one. A name is that of one file on every system, beneath the device's own
/// folders, and of a kind that is there.
class ArchiveNames {
public:
    /// `registered`: the files that the register names, which may have any ending.
    explicit ArchiveNames(std::set<std::string> registered) : Registered_(std::move(registered)) {}
    /// Returns why there can't be a file of this name, as a part of a sentence; empty if there can.
    std::string Add(const std::string& name);

private:
    std::set<std::string> Registered_;
    std::set<Text> Folded_;
};

} // namespace handover
