// SPDX-License-Identifier: MIT
// What a person does to the form, for an observer. The back-ends report it before it is done.
#pragma once

#include "src/text/text.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

namespace backends {

/// One act, in the words of the console's commands: "menu" with the arguments "1 2". A tap is two acts, "press" with
/// row and column, and "release". Typing into a field is no act.
struct Act {
    std::string Word;
    std::string Arguments = {};
    Text About = {}; ///< for people: the caption of a menu, the text of a question, the name of a row
};

/// The observer of all acts, none at first. Who sets it resets it before it ends.
struct ActWatch {
    std::function<void(const Act&)> Begins; ///< called before the act is done
    /// Called when a message box opens, and when the end of the program closes it without an answer.
    std::function<void(const Text& question)> Asked;
    std::function<void(const Text& question)> LeftUnanswered;
};
inline ActWatch Acts;

/// Reports an act to the observer, if there is one.
void ReportAct(const Act& act);

/// Returns numbers as arguments, with a blank between them.
std::string ArgumentsOf(std::initializer_list<std::int32_t> numbers);

} // namespace backends
