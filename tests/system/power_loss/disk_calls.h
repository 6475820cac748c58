// SPDX-License-Identifier: MIT
// A layer between the program and the C library. It counts the program's calls on one folder of the host, and makes one
// of them fail or kills the program there. It defines routines with the names of the library's, so text files, settings
// and SQLite all use it without any change.
#pragma once

#include "tests/system/power_loss/tree.h"

#include <cstdint>
#include <vector>

namespace disk {

enum class Call { Open, Write, Truncate, Sync, SyncFolder, Rename, Unlink, MakeFolder };

/// One call that changes the contents of the disk or syncs them. Paths are relative to the root.
struct Step {
    Call What = Call::Open;
    std::string Path;
    std::string To;          ///< of a rename
    std::uint64_t File = 0;  ///< the number of the file, which a rename does not change
    std::int64_t Offset = 0; ///< of a write; the new size of a truncation
    std::string Bytes;       ///< those that were written
    bool Made = false;       ///< the opening made the file
    bool MadeEmpty = false;  ///< the opening truncated the file
};

enum class Blow {
    None,
    Fail,         ///< this step alone
    FullFromHere, ///< from this step on every step that needs room fails
    ShortWrite,   ///< half of the bytes are written, and the disk is full at the next attempt
    KillBefore,
    KillInside, ///< half of the bytes are written
    KillAfter,
};

/// What a plan counts. Steps: calls that change something. Reads: also openings for reading. Looks: calls that ask what
/// there is (the state of a file or folder, the target of a link, the opening of a folder as the start of further
/// calls). Names: looks by a name, not at an open file.
enum class Counted { Steps, Reads, Looks, Names };

/// Which call is affected, and how. A read or a look can only fail, alone or with those after it.
struct Plan {
    Blow What = Blow::None;
    int At = 0;    ///< from 1
    int Error = 0; ///< the value of errno
    Counted Kind = Counted::Steps;
    int Times = 1; ///< how many reads or looks fail, one after the other
};

/// The files at the start of the watch, with the numbers that steps have for them.
struct Start {
    Tree Held;
    std::map<std::string, std::uint64_t> Numbers;
};

/// While it exists, the calls under a folder are counted and recorded, and the plan is applied. There can be only one.
///
/// A sync is not passed on: the loss of power is only simulated, and a real disk is slow.
class Watch {
public:
    explicit Watch(const std::string& root, const Plan& plan = {});
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    static int Steps();
    static int Reads();
    static int Looks();
    static int Names();
    static bool IsOn();
    static bool Struck();                         ///< true if the plan's call has come
    static const std::string& StruckPath();       ///< the path of that call, relative to the root
    static const std::vector<Call>& Kinds();      ///< of all steps, step 1 first
    static const std::vector<Step>& StepsTaken(); ///< those that succeeded, in order
    static const Start& Began();
};

} // namespace disk
