// SPDX-License-Identifier: MIT
// The measures of what a chart is drawn on.
#pragma once

#include "plotting/scene.h"

#include <string>

namespace plotting {

struct Look {
    double Width = 0, Height = 0;
    double Row = 0;      ///< height of a line of text
    double TitleRow = 0; ///< of the title
    double TickWidth = 0, TickHeight = 0;
    double Space = 0;     ///< between two things
    double Edge = 0;      ///< around all
    bool IsCells = false; ///< a terminal, in dots; otherwise pixels
    double WidthOf(const std::string& text, Role role) const;
    /// Returns a number as a person reads it: in a picture with a true minus sign. A terminal keeps the hyphen, which
    /// every font has, and which another program reads as a number.
    std::string NumberOf(std::string number) const;
};
Look PixelLook(double width, double height);
Look CellLook(int columns, int rows);

} // namespace plotting
