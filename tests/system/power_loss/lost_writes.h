// SPDX-License-Identifier: MIT
// What may be on a disk if the power was lost at some point of a recorded run.
//
// A file has the content of its last completed sync, and any of the later writes and truncations, in any order, each
// whole or torn. A name that was made, changed or removed is as before or as after until its folder has been synced,
// independently of other names; a rename is never half done. The sync of a file does not sync its name.
#pragma once

#include "tests/system/power_loss/disk_calls.h"

#include <random>

namespace disk {

class LostWrites {
public:
    /// The power is lost after the first `count` steps.
    LostWrites(const Start& start, const std::vector<Step>& steps, std::size_t count);

    /// Returns one of the trees that may then be on the disk, the same for the same seed. Seed 0 loses all that may be
    /// lost, seed 1 loses nothing, 2 and 3 lose all contents or all names.
    Tree Damaged(std::uint32_t seed) const;

private:
    struct Change {
        bool IsTruncation = false;
        std::int64_t Offset = 0;
        std::string Bytes;
    };
    struct Content {
        std::string Lasting;
        std::vector<Change> Later;
    };
    /// A change of names that has not been synced.
    struct NameChange {
        Call What = Call::Open; ///< making, renaming or removing a file, or making a folder
        std::string Path;
        std::string To;
        std::uint64_t File = 0;
    };
    struct Names {
        std::set<std::string> Folders;
        std::map<std::string, std::uint64_t> Files;
    };

    void Take(const Step& step);
    void TakeFolderSync(const std::string& folder);
    static void Apply(const NameChange& change, Names& names);
    static void Apply(const Change& change, std::string& content);
    static void ApplyTorn(const Change& change, std::string& content, std::mt19937& random);
    std::string DamagedContent(const Content& content, double chance, std::mt19937& random) const;

    std::map<std::uint64_t, Content> Contents_;
    Names Lasting_;
    std::vector<NameChange> Pending_;
};

} // namespace disk
