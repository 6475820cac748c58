// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace modStringTools {

/// Bytes with `?` for each control character: what others have named must not drive a terminal.
std::string Printable(std::string bytes);

} // namespace modStringTools
