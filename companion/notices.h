// SPDX-License-Identifier: MIT
// The list of what a person should know and the form has no message for. A back-end shows the worst notice, and reports
// each new one.
#pragma once

#include "src/text/text.h"

#include <functional>
#include <vector>

namespace companion {

enum class Severity {
    Note,    ///< nothing is wrong
    Hint,    ///< the next step of a person who is new to the program
    Warning, ///< something may fail, or has failed
    Loss,    ///< something is not stored
};

/// What a person can do about a notice.
enum class NoticeAction {
    None,
    Dismiss, ///< confirm that it was seen
    Open,    ///< open the folder that it names
};

/// How long a notice stays in the list, unless it is withdrawn before.
enum class Until {
    Tapped,     ///< until a person has confirmed that it was seen
    RecordLeft, ///< until the record on screen is left, which it is about
    Withdrawn,  ///< until it no longer applies
};

/// Something that a person can have done about a notice.
struct Offer {
    Text Name;  ///< for the program (offers.h)
    Text Words; ///< what its button says
    bool operator==(const Offer&) const = default;
};

struct Notice {
    /// The short name of its subject, as in docs/limits.md, in a loss followed by a blank and the name of its file. The
    /// list has one notice of a subject at most.
    Text About = {};
    Severity Weight = Severity::Warning;
    Text Words = {};
    Until Stands = Until::Withdrawn;
    NoticeAction Action = Stands == Until::Tapped ? NoticeAction::Dismiss : NoticeAction::None;
    std::vector<Offer> Offers = {};
    Text Remedy =
        {}; ///< the end of the words, which says what the person must do; where there is little room, it is kept
    bool operator==(const Notice&) const = default;
};

class Notices {
public:
    /// Adds a notice and replaces the one of its name. A notice that is in the list already is not reported again.
    void Raise(const Notice& notice);
    void Withdraw(const Text& about);
    /// Removes the notices about the record on screen, which was left.
    void RecordLeft() { Drop(Until::RecordLeft); }
    /// Does what a person can do about the notice of this name; nothing if its action is None.
    void Act(const Text& about);

    /// Returns all notices, the worst first; of equally bad ones, the newest first.
    std::vector<Notice> Sorted() const;
    /// Returns how many warnings and losses there are besides the worst notice.
    std::size_t Behind() const;
    /// Returns the notices in the order in which they were raised.
    const std::vector<Notice>& Standing() const { return List_; }

    std::function<void(const Notice&)> Told;

private:
    void Drop(Until until);

    std::vector<Notice> List_;
};

} // namespace companion
