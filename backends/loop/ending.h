// SPDX-License-Identifier: MIT
// The end of the program that somebody outside of it wants: a signal, the end of the session, a display that is gone.
// The record on the screen is saved where that can be, and what was and what was not is said.
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

    /// The loop unwinds from here on, and the program leaves by its pump at the outermost level.
    void Begin(const std::string& why);
    /// Nothing of the window system can be used any more, and nothing is unwound: an unsaved record goes straight to
    /// its row, unless the storage is at work at this moment.
    void SaveAtOnce(const std::string& why);

    bool Begun() const { return !Why.empty(); }
    /// For when the program is over: what was and what was not saved, in one line.
    std::string Words() const;
    bool IsLost() const { return State == Record::Saving || State == Record::Lost; }

private:
    enum class Record { NotReached, NothingToSave, UnderPrompt, Saving, Saved, Lost };

    void LeaveScreen();
    void BeginToSave();

    BackEnd& Device;
    std::string Why;
    std::string Row; ///< as people call it
    Record State = Record::NotReached;
    std::size_t Undecoded = 0; ///< characters of the instrument
};

/// For when the program is over and nobody has ended it in good order: which record on the screen is not in its file.
/// Empty where that is none.
std::string UnsavedRecordWords();
/// For whom a failure has stopped: what has become of the files, and of that record.
std::string StateWords();

} // namespace backends
