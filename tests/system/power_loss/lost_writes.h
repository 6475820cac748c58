// SPDX-License-Identifier: MIT
// What a disk may hold after the power went at some point of a recorded run.
//
// A file holds what its last completed sync brought to the medium, and of the writes and truncations behind that any,
// in any order, each whole or torn. A name that was made, changed or removed is as it was or as it became until its
// folder has been synced, each by itself; a rename is never half done. The sync of a file does nothing for its name.
#pragma once

#include "tests/system/power_loss/disk_calls.h"

#include <random>

namespace disk {

class LostWrites {
public:
    /// The power goes behind the first `count` steps.
    LostWrites(const Start& start, const std::vector<Step>& steps, std::size_t count);

    /// One of the trees that may be found then; the same seed gives the same one. Seed 0 loses all that may be lost,
    /// seed 1 loses nothing, 2 and 3 lose all contents or all names.
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
    /// A change of names that no sync has brought to the medium yet.
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
