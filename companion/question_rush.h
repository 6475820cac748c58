// SPDX-License-Identifier: MIT
// Notices that an instrument asks a person one question after the other.
#pragma once

#include "src/text/text.h"

#include <chrono>
#include <deque>

namespace companion {

class QuestionRush {
public:
    using Moment = std::chrono::milliseconds; ///< by a clock that does not run backwards

    /// Takes a question into account. Returns true if it is the third of its kind within ten seconds: questions of one
    /// kind have the same first line, and differ in their values.
    bool Comes(const Text& message, Moment now);

private:
    Text Kind_; ///< of the last question
    std::deque<Moment> Last_;
};

} // namespace companion
