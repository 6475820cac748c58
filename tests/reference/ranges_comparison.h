// SPDX-License-Identifier: MIT
// Compares the product's range operations and token reader with the literal ones.
#pragma once

#include "tests/reference/choices.h"

#include <string>

namespace reference {

std::string CompareToken(Choices& choices);
std::string CompareRange(Choices& choices);
std::string CompareInsertion(Choices& choices);

} // namespace reference
