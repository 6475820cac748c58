// SPDX-License-Identifier: MIT
// The scales that a person can choose for the form, and what is said about them. A scale is how many pixels of the
// screen a pixel of the form takes.
#pragma once

#include "companion/notices.h"

#include <string>

namespace companion {

/// The short name of the notice below.
inline const Text AboutScale = u"scale";

/// Return the next step above or below a scale, which need not be a step itself; the same scale if there is none.
double LargerScale(double scale);
double SmallerScale(double scale);
/// Returns the largest step that is not above a scale; the smallest step if each of them is.
double StepUpTo(double scale);

/// Returns the scale that a text of ScaleText has; `otherwise` if it has none of 0.5 to 4.
double ScaleOfText(const std::string& text, double otherwise);
/// "1.25", in any locale.
std::string ScaleText(double scale);

/// Says that the screen has no room for a scale, and which one is used.
Notice ScaleIsLimited(double wanted, double used);

} // namespace companion
