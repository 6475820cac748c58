// SPDX-License-Identifier: MIT
#pragma once

#include "plotting/scene.h"

#include <string>

namespace plotting {

/// Returns a file of SVG 1.1, the same bytes for the same scene, whatever the locale. It refers to nothing outside.
std::string SvgOf(const Scene& scene);

} // namespace plotting
