// SPDX-License-Identifier: MIT
// The one list of what a person should know and the form has no message for. A back-end shows the worst of it, and
// tells each that is new.
#pragma once

#include "src/text/text.h"

#include <functional>
#include <vector>

namespace companion {

enum class Severity {
    Note,    ///< nothing is wrong
    Warning, ///< something may go wrong, or has
    Loss,    ///< something is not stored
};

/// What a person can do about a notice where it stands.
enum class NoticeAction {
    None,
    Dismiss, ///< say that it was seen
};

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
    NoticeAction Action = Stands == Until::Tapped ? NoticeAction::Dismiss : NoticeAction::None;
    bool operator==(const Notice&) const = default;
};

class Notices {
public:
    /// Puts a notice up, in place of the one of its name. One that stands already is not told again.
    void Raise(const Notice& notice);
    void Withdraw(const Text& about);
    /// The record on screen was left: what was about it goes.
    void RecordLeft() { Drop(Until::RecordLeft); }
    /// Does what a person can do about the notice of this name; nothing where that is nothing.
    void Act(const Text& about);

    /// The worst one; among these the newest. Nothing when there is none.
    const Notice* Worst() const;
    /// The worst one first; among equally bad ones the newest.
    std::vector<Notice> Sorted() const;
    /// How many warnings and losses stand behind the worst one.
    std::size_t Behind() const;
    /// In the order in which they were raised.
    const std::vector<Notice>& Standing() const { return List; }

    std::function<void(const Notice&)> Told;

private:
    void Drop(Until until);

    std::vector<Notice> List;
};

} // namespace companion
