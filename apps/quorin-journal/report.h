// SPDX-License-Identifier: MIT
// What a command writes: its results to standard output, and what was odd to standard error.
#pragma once

#include "apps/start/exit_status.h"

#include <string>
#include <string_view>

namespace reader {

class Report {
public:
    /// Writes bytes to standard output, now or later.
    void Write(std::string_view bytes);
    void WriteLine(std::string_view line);
    /// Hands on what was written so far.
    void Flush();
    /// True if standard output can't be written any more.
    bool Lost() const;

    /// Tells a person what was odd in the input. The command goes on.
    void Odd(const std::string& what);
    /// Writes a finding, which is odd and a result.
    void Found(const std::string& finding);
    /// Tells a person what could not be done. The command goes on with the rest.
    void Failed(const std::string& what);

    /// Tells a person why the command can't do anything.
    void Refused(const std::string& what);

    start::ExitStatus Status() const { return Status_; }

private:
    std::size_t Waiting_ = 0; ///< bytes that std::cout has kept
    start::ExitStatus Status_ = start::ExitStatus::Ended;
};

} // namespace reader
