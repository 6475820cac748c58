// SPDX-License-Identifier: MIT
// What became of each result that an instrument has sent. A result may be lost only by a rule.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace shift {

/// Results are numbered from 1 in the order in which they are sent; 0 is none.
using ResultId = std::uint32_t;

/// The last thing that happened to a result. Only the files show whether it was kept.
enum class Fate {
    OnTheWay,      ///< in a buffer, in the mailbox, or part of the noise that never leaves the buffer
    PortClosed,    ///< the port was not open when it was sent
    CutOff,        ///< its record was cut before the end of its value
    NoConnect,     ///< its record names an origin, and no instrument has connected
    WrongOrigin,   ///< its record comes from another instrument than the connected one
    Unreadable,    ///< its record was damaged on the way
    Emptied,       ///< it came while a question was open, and was removed with the decoded lines
    LeftInBuffers, ///< the program ended before it was decoded
    Traced,        ///< it was listed on the trace of the link
    OtherScreen,   ///< no record was on screen
    NoRow,         ///< the driver has no row for its type
    Refused,       ///< the technician has kept the old value
    OnScreen,      ///< it is in the record
    Replaced,      ///< the technician has answered yes to a later one
    FieldTaken,    ///< a later one came into the open field
    TypedOver,     ///< the technician has typed over it
    WrittenOver,   ///< a variable or an automatic date has replaced it
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

    /// Records that the result is in a download that was copied from the device before it was deleted there.
    void HandOver(ResultId id) { Handed_[id] = true; }
    bool HandedOver(ResultId id) const { return Handed_[id]; }

    /// Returns how often this has happened to any result.
    std::uint64_t Times(Fate fate) const { return Counts_[static_cast<std::size_t>(fate)]; }

private:
    std::vector<Fate> Fates_ = {Fate::OnTheWay};
    std::vector<bool> Handed_ = {false};
    std::uint64_t Counts_[static_cast<std::size_t>(Fate::FateCount)] = {};
};

/// Returns the number of the result in a cell; 0 if there is none. The value of a result begins with its number and a
/// full stop, as in "17.3"; no other text of a shift does.
ResultId IdOf(const std::string& cell);

/// Return the results whose values are in received text, or in the fields of a file.
std::vector<ResultId> IdsInRecords(const std::string& text);
std::vector<ResultId> IdsInFields(const std::string& bytes);

} // namespace shift
