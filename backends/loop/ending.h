// SPDX-License-Identifier: MIT
// The end of the program by something outside of it: a signal, the end of the session, a lost display. The record on
// the screen is saved if possible, and the result is reported.
#pragma once

#include "backends/loop/back_end.h"

#include <cstddef>
#include <string>

namespace backends {

class Ending {
public:
    explicit Ending(BackEnd& device);
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;

    /// Starts the ending: nested loops return, and the program leaves through its pump at the outermost level.
    void Begin(const std::string& why);
    /// Ends without the window system and without unwinding. An unsaved record is written straight to its row, unless a
    /// storage operation is in progress.
    void SaveAtOnce(const std::string& why);

    bool Begun() const { return !Reason_.empty(); }
    const std::string& Reason() const { return Reason_; } ///< empty before the beginning
    /// Returns one line on what was saved and what was not, for after the program has ended.
    std::string Words() const;
    bool IsLost() const { return State_ == Record::Saving || State_ == Record::Lost; }

private:
    enum class Record { NotReached, NothingToSave, UnderPrompt, Saving, Saved, Lost };

    void LeaveScreen();
    void BeginToSave();

    BackEnd& Device_;
    std::string Reason_;
    std::string Row_; ///< in words for the user
    Record State_ = Record::NotReached;
    bool ReadingsWait_ = false; ///< behind a BLob of their burst that was refused
    std::size_t Undecoded_ = 0; ///< characters received from the instrument
};

/// Returns which record on the screen is not in its file, for a program that has ended in another way than by an
/// Ending. Empty if there is none.
std::string UnsavedRecordWords();
/// Returns the state of the files and of that record, for the user of a program that a failure has stopped.
/// `isKept`: a draft of that record is on the medium.
std::string StateWords(bool isKept = false);

} // namespace backends
