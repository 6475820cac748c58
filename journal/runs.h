// SPDX-License-Identifier: MIT
// The runs of the programs in one root folder: where the journal breaks off, and which text nobody has decoded.
#pragma once

#include "journal/journal_format.h"

#include <cstdint>
#include <string>
#include <vector>

namespace journal {

/// Text that was received and had no verdict when its program was over.
struct UnreadText {
    std::size_t Results = 0;
    std::string From; ///< time of its first line
    std::string To;   ///< and of its last one
    /// Returns "text with 2 results arrived 2026-11-22 18:27:00 to 18:27:16 and was not looked at before the ...".
    std::string Words() const;
};

class Runs {
public:
    /// Takes any line, in the order of the files.
    void Take(const Line& line);
    /// The last line of the file was interrupted.
    void Torn();
    /// No more lines of this file.
    void EndOfFile() { IsOpen_ = false; }

    bool IsEmpty() const { return Parts_.empty(); }
    /// Returns a line for people for each program that has no end although something follows it.
    std::vector<std::string> Breaks() const;
    /// Returns the texts of programs that are over, in the order of the files.
    std::vector<UnreadText> Unread() const;

private:
    /// What one file has of a run.
    struct Part {
        std::string Program;
        std::int64_t ProcessId = 0;
        bool GoesOn = false; ///< it is not the first of its run
        bool HasEnded = false;
        bool IsTorn = false;
        bool HasVerdict = false; ///< for the text of a part before, if it has some
        std::int64_t FirstMs = 0;
        std::int64_t LastMs = 0;
        std::string LastTime;
        UnreadText Text;
        std::string Tail; ///< of the text, where a tag may begin
    };

    void TakeText(Part& part, const Line& line);
    std::size_t Next(std::size_t index) const;
    bool BreaksOff(std::size_t index) const;

    std::vector<Part> Parts_;
    bool IsOpen_ = false; ///< lines belong to the last part
};

} // namespace journal
