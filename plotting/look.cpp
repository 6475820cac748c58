// SPDX-License-Identifier: MIT
#include "plotting/look.h"

#include "plotting/palette.h"
#include "plotting/readable.h"

namespace plotting {

double Look::WidthOf(const std::string& text, Role role) const {
    constexpr double DotsACell = 2;
    return IsCells ? CellsOf(text) * DotsACell : plotting::WidthOf(text, SizeOf(role));
}

std::string Look::NumberOf(std::string number) const {
    constexpr const char* Minus = "\xE2\x88\x92"; // U+2212
    if (IsCells)
        return number;
    for (std::size_t at = 0; (at = number.find('-', at)) != std::string::npos;)
        number.replace(at, 1, Minus);
    return number;
}

Look PixelLook(double width, double height) {
    return {.Width = width,
            .Height = height,
            .Row = 17,
            .TitleRow = 26,
            .TickWidth = 5,
            .TickHeight = 5,
            .Space = 8,
            .Edge = 14};
}

Look CellLook(int columns, int rows) {
    return {.Width = columns * 2.0,
            .Height = rows * 4.0,
            .Row = 4,
            .TitleRow = 4,
            .TickWidth = 2,
            .TickHeight = 4,
            .Space = 2,
            .Edge = 0,
            .IsCells = true};
}

} // namespace plotting
