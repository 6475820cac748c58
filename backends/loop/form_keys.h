// SPDX-License-Identifier: MIT
// The way of a key through the form, which is the same whatever the key is struck with.
#pragma once

#include <cstdint>

namespace backends {

/// Whether the key writes a character: the codes 8, 9, 13, 27, 32 and 41 to 126. The codes between are those of the
/// page, home and arrow keys, which write nothing.
bool IsCharacter(std::int32_t keyCode);

bool IsPageKey(std::int32_t keyCode);

/// Key down and, where the code is a character, key press. Whether the form has left the key to the control.
bool KeyDownPasses(std::int32_t keyCode);

void RaiseKeyUp(std::int32_t keyCode);

} // namespace backends
