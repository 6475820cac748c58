// SPDX-License-Identifier: MIT
// How the parts of a chart look. Colours are told apart by those who see few of them; shape and dashes say the same.
#pragma once

#include "plotting/scene.h"

#include <array>
#include <string_view>

namespace plotting {

enum class Shape { Disc, Square, Triangle, Diamond, Plus, Cross, Ring };

struct Appearance {
    std::string_view Colour; ///< "#0072B2"
    double Width = 1;
    std::array<int, 4> Dashes = {}; ///< lengths of line and space in turn; all 0 for a whole line
    plotting::Shape Shape = Shape::Disc;
};

Appearance AppearanceOf(const Stroke& stroke);

/// Sizes of texts in pixels.
double SizeOf(Role role);

} // namespace plotting
