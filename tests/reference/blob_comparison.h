// SPDX-License-Identifier: MIT
// The product's framing and decoding against the literal ones, one made-up case each. They give what the two differ in,
// and nothing where they agree.
#pragma once

#include "tests/reference/choices.h"

#include <string>

namespace reference {

/// A stream that comes in pieces, and its results: all of the state after each piece and each result.
std::string CompareFraming(Choices& choices);
/// The text of one BLob, whole or not.
std::string CompareDecoding(Choices& choices);
/// A variable that is put into a list of them.
std::string CompareVariables(Choices& choices);
/// What stands between quotes.
std::string CompareQuotedValues(Choices& choices);

} // namespace reference
