// SPDX-License-Identifier: MIT
// Compares the product's pattern matcher with the literal one.
#pragma once

#include "tests/reference/choices.h"

#include <string>

namespace reference {

/// A search for a short pattern of any kind in a short text, from any place and with any old values of the positions.
std::string CompareMatch(Choices& choices);
/// The same in texts of up to some 200 characters, most of them long runs of one character.
std::string CompareLongMatch(Choices& choices);
/// The sets of places that a reading makes for the rest of the pattern after each `+`. A match uses few of the places.
std::string CompareRests(Choices& choices);
/// The patterns that the program itself uses, in texts like those that it searches.
std::string CompareOwnPattern(Choices& choices);
/// A replacement, of one match or of all.
std::string CompareReplacement(Choices& choices);

} // namespace reference
