// SPDX-License-Identifier: MIT
#pragma once

#include "plotting/scene.h"

#include <string>

namespace plotting {

enum class Letters { Unicode, Ascii };

/// Returns a scene that was drawn with CellLook as lines of text: dots of braille, frames and shapes, or ASCII alone.
std::string TextOf(const Scene& scene, Letters letters);

} // namespace plotting
