// SPDX-License-Identifier: MIT
// What became of each result that an instrument has sent: a result may be lost by a rule, never without one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace shift {

/// Results are numbered from 1 in the order in which they are sent; 0 stands for none.
using ResultId = std::uint32_t;

/// The last thing that happened to a result. Whether it is kept is for the files to say.
enum class Fate {
    OnTheWay,      ///< in a buffer, in the mailbox, or part of the noise that never leaves the buffer
    PortClosed,    ///< nobody listened when it was sent
    CutOff,        ///< the line went before its value did
    NoConnect,     ///< its record names an origin, and no instrument has connected
    WrongOrigin,   ///< its record comes from another instrument than the connected one
    Unreadable,    ///< its record was damaged on the way
    Emptied,       ///< it waited for its decoding while a question stood, whose end empties the text that waits
    LeftInBuffers, ///< the program ended before it was decoded
    Traced,        ///< it was listed on the trace of the link
    OtherScreen,   ///< no record was on screen
    NoRow,         ///< the driver has no row for its type
    Refused,       ///< the technician has kept the old value
    OnScreen,      ///< it stands in the record
    Replaced,      ///< the technician has said yes to a later one
    FieldTaken,    ///< a later one came into the open field
    TypedOver,     ///< the technician has
    WrittenOver,   ///< a variable or an automatic date has
    Unsaved,       ///< the program was killed before the record was saved
    DeletedRecord, ///< the technician has deleted the record
    FateCount
};

const char* NameOf(Fate fate);

class Ledger {
public:
    ResultId Send();
    void Note(ResultId id, Fate fate);
    Fate Of(ResultId id) const { return Fates_[id]; }
    std::uint32_t Sent() const { return static_cast<std::uint32_t>(Fates_.size()) - 1; }

    /// A download that holds it was taken off the device before it was deleted there.
    void HandOver(ResultId id) { Handed_[id] = true; }
    bool HandedOver(ResultId id) const { return Handed_[id]; }

    /// How often something has happened to results, to whichever.
    std::uint64_t Times(Fate fate) const { return Counts_[static_cast<std::size_t>(fate)]; }

private:
    std::vector<Fate> Fates_ = {Fate::OnTheWay};
    std::vector<bool> Handed_ = {false};
    std::uint64_t Counts_[static_cast<std::size_t>(Fate::FateCount)] = {};
};

/// The value of a result begins with its number and a full stop, as in "17.3": the number of the result that a cell
/// holds. No other text of a shift begins so.
ResultId IdOf(const std::string& cell);

/// The results whose values stand in received text, or in the fields of a file.
std::vector<ResultId> IdsInRecords(const std::string& text);
std::vector<ResultId> IdsInFields(const std::string& bytes);

} // namespace shift
