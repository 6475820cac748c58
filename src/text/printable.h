// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace modStringTools {

/// Returns the bytes with `?` for each control character, so that a name from outside can't control the terminal.
std::string Printable(std::string bytes);

} // namespace modStringTools
