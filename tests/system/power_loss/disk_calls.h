// SPDX-License-Identifier: MIT
// Stands between the program and the C library: counts what it does to one folder of the host, and makes a step of it
// fail, or the program die there. It defines the library's own calls, so text files, settings and SQLite all go through
// it, and know nothing of it.
#pragma once

#include "tests/system/power_loss/tree.h"

#include <cstdint>
#include <vector>

namespace disk {

enum class Call { Open, Write, Truncate, Sync, SyncFolder, Rename, Unlink, MakeFolder };

/// One call that changes what the disk holds, or makes it last. Paths are relative to the root.
struct Step {
    Call What = Call::Open;
    std::string Path;
    std::string To;          ///< of a rename
    std::uint64_t File = 0;  ///< which file it is, whatever its name is meanwhile
    std::int64_t Offset = 0; ///< of a write; the new size of a truncation
    std::string Bytes;       ///< those that were written
    bool Made = false;       ///< the opening made the file
    bool MadeEmpty = false;  ///< the opening cut off what was in the file
};

enum class Blow {
    None,
    Fail,         ///< this step alone
    FullFromHere, ///< from this step on nothing that needs room works
    ShortWrite,   ///< half of the bytes are written, and the disk is full at the next attempt
    KillBefore,
    KillInside, ///< half of the bytes are written
    KillAfter,
};

/// What a plan counts: steps; reads and openings for reading; looks at what there is (the state of a file or folder,
/// the target of a link, the opening of a folder as the start of further calls); looks by a name alone,
/// and not at what is open.
enum class Counted { Steps, Reads, Looks, Names };

/// Which call is hit, and how. A read or a look can only fail, by itself or with those behind it.
struct Plan {
    Blow What = Blow::None;
    int At = 0;    ///< from 1
    int Error = 0; ///< of errno
    Counted Kind = Counted::Steps;
    int Times = 1; ///< how many reads or looks fail, one after the other
};

/// The files at the moment when the watch began, with the numbers that steps know them by.
struct Start {
    Tree Held;
    std::map<std::string, std::uint64_t> Numbers;
};

/// While it lives the calls under a folder are counted and recorded, and the plan is carried out. One at a time.
///
/// A sync is not passed on: no power goes here, and a real disk would take its time.
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
    static bool Struck();                         ///< the plan's step came
    static const std::string& StruckPath();       ///< relative to the root: what that step was about
    static const std::vector<Call>& Kinds();      ///< of all steps, step 1 first
    static const std::vector<Step>& StepsTaken(); ///< those that succeeded, in order
    static const Start& Began();
};

} // namespace disk
