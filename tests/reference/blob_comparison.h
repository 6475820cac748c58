// SPDX-License-Identifier: MIT
// Compares the product's framing and decoding with the literal ones, in one generated case a call. Each routine returns
// the difference; empty if they agree.
#pragma once

#include "tests/reference/choices.h"

#include <string>

namespace reference {

/// A stream in pieces, and its results: compares the whole state after each piece and each result.
std::string CompareFraming(Choices& choices);
/// The text of one BLob, whole or not.
std::string CompareDecoding(Choices& choices);
/// A variable that is put into a list of them.
std::string CompareVariables(Choices& choices);
/// The text between quotes.
std::string CompareQuotedValues(Choices& choices);

} // namespace reference
