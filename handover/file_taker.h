// SPDX-License-Identifier: MIT
// Puts single files of a zip file to their places on a device, and tells what became of them.
#pragma once

#include "handover/taker.h"

#include <set>
#include <string>

namespace handover {

/// A file that is here, or would be.
struct HereFile {
    bool Exists = false;
    std::string Bytes = {};
    std::string Why = {}; ///< why it can't be read; empty if it can, or if there is none
};

class FileTaker {
public:
    /// Both must exist as long as this.
    FileTaker(const Taker& here, const TakeListener& listener) : Here_(here), Listener_(listener) {}

    HereFile ReadHere(const std::string& name) const;

    /// Takes a file that is no download and names none.
    void Take(const std::string& name, const std::string& bytes);
    /// Takes a file of lines: what is new comes behind what is here, what differs is told.
    void TakeLines(const std::string& name, const std::string& as, const std::string& bytes, Growth growth);
    /// Writes a file, and tells `file` if that succeeded, else why not.
    void Write(TakenFile file, const std::string& bytes);

    void Tell(const TakenFile& file);
    void Tell(const Difference& difference);

    /// True if a file is not here as the zip file has it.
    bool IsLeft(const std::string& name) const { return Left_.count(name) > 0; }
    const TakeResult& Done() const { return Done_; }

private:
    std::string PathOf(const std::string& name) const;
    bool TellUnreadable(const HereFile& here, TakenFile file);
    void TakeDatabase(const std::string& name, const std::string& bytes);
    void TakeJournal(const std::string& name, const std::string& bytes);

    const Taker& Here_;
    const TakeListener& Listener_;
    TakeResult Done_;
    std::set<std::string> Left_;
};

} // namespace handover
