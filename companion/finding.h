// SPDX-License-Identifier: MIT
// What is wrong in a file that a person writes.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace companion {

enum class Grade {
    Note,    ///< nothing is wrong; it may not be what was meant
    Warning, ///< the file is used, and not all of it does what it says
    Error,   ///< it can't be used, ends the program, or costs readings or other files
};

/// Returns its name: "note", "warning", "error".
Text NameOf(Grade grade);

struct Finding {
    std::size_t Line = 0;   ///< from 1; 0 if it belongs to no line
    std::size_t Column = 0; ///< of the first character, from 1; 0 if it belongs to no line
    companion::Grade Grade = companion::Grade::Warning;
    Text Words; ///< one line; texts of the file are shortened, and their control characters are blanks
    bool operator==(const Finding&) const = default;
};

/// Puts findings into the order of their places; those without a line come last.
void SortByPlace(std::vector<Finding>& findings);

/// Returns a text of the file for a line of words: shortened, with blanks for control characters.
Text Shown(TextView text);

/// The same between double quotes.
Text Quoted(TextView text);

} // namespace companion
