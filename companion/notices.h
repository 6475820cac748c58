// SPDX-License-Identifier: MIT
// The one list of what a person should know and the form has no message for. A back-end shows the worst of it, and
// tells each that is new.
#pragma once

#include "src/text/text.h"

#include <functional>
#include <vector>

namespace companion {

enum class Severity { Warning, Loss };

/// How long a notice stands, unless it is withdrawn before.
enum class Until {
    Tapped,     ///< a person has said that it was seen
    RecordLeft, ///< it is about the record on screen
    Withdrawn,  ///< what it says is no longer so
};

struct Notice {
    Text About; ///< the short name of what it is about, as docs/limits.md has it: one of a name stands at a time
    Severity Weight = Severity::Warning;
    Text Words;
    Until Stands = Until::Withdrawn;
    bool operator==(const Notice&) const = default;
};

class Notices {
public:
    /// Puts a notice up, in place of the one of its name. One that stands already is not told again.
    void Raise(const Notice& notice);
    void Withdraw(const Text& about);
    /// The record on screen was left: what was about it goes.
    void RecordLeft() { Drop(Until::RecordLeft); }
    /// A person has seen what stands: what waits for that goes.
    void Tapped() { Drop(Until::Tapped); }

    /// The worst one; among these the newest. Nothing when there is none.
    const Notice* Worst() const;
    /// In the order in which they were raised.
    const std::vector<Notice>& Standing() const { return List; }

    std::function<void(const Notice&)> Told;

private:
    void Drop(Until until);

    std::vector<Notice> List;
};

} // namespace companion
