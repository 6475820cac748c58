// SPDX-License-Identifier: MIT
// The product's pattern matcher against the literal one.
#pragma once

#include "tests/reference/choices.h"

#include <string>

namespace reference {

/// A search for a short pattern of any kind in a short text, from any place and with any positions left over.
std::string CompareMatch(Choices& choices);
/// The same in texts that go on for hundreds of characters, most of them in long runs of the same.
std::string CompareLongMatch(Choices& choices);
/// What a reading says of the rest behind each `+`, for all places. Little of it comes to light in a match.
std::string CompareRests(Choices& choices);
/// The patterns that the program itself looks for, in what it finds them in.
std::string CompareOwnPattern(Choices& choices);
/// A replacement, of one match or of all.
std::string CompareReplacement(Choices& choices);

} // namespace reference
