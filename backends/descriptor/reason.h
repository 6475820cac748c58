// SPDX-License-Identifier: MIT
// What a failed system call is called.
#pragma once

#include <string>

namespace backends {

/// Returns the system's description of a value of errno: in English, like all texts of the program, whatever the
/// locale. "error N" for one without words.
std::string ReasonOf(int code);

} // namespace backends
