// SPDX-License-Identifier: MIT
// A session of the journal as a script of quorin-console: its acts, the bytes of the port, and the time between them.
#pragma once

#include "journal/journal_format.h"

#include <cstdint>
#include <string>
#include <vector>

namespace journal {

class Story {
public:
    /// Takes a line of the session, in the order of the file.
    void Take(const Line& line);

    /// True if playing the story on the same files gives the same files: a session of the console by the virtual clock,
    /// from its beginning, with nothing that a script can't do.
    bool IsExact() const { return IsVirtual_ && WhyNot_.empty(); }
    /// Returns what makes it an approximation, for people.
    std::string WhyNot() const;

    /// Returns the commands, a line each.
    std::string Commands() const;

private:
    struct Command {
        std::int64_t Wait = 0; ///< milliseconds before it
        std::string Text;
    };

    void TakeAct(const Line& line);
    void TakeReceived(const Line& line);
    void Press(const std::string& cell);
    void Release();
    void Jump(const std::string& milliseconds);
    void Add(const std::string& text);
    void Miss(const std::string& what);

    std::vector<Command> Commands_;
    std::int64_t Now_ = 0;    ///< `ms` of the line
    std::int64_t Told_ = 0;   ///< the time that the commands take so far, as such a count
    std::size_t Pressed_ = 0; ///< the number of commands up to the tap that is not released yet; 0 for none
    std::int64_t PressedAt_ = 0;
    bool IsVirtual_ = false;
    std::string WhyNot_;
};

} // namespace journal
