// SPDX-License-Identifier: MIT
// What a cell is painted with and how text is measured. Colours are 0xBBGGRR, sizes are pixels.
#pragma once

#include "src/text/text.h"

namespace platform {

/// Where a text stands in its box.
enum class AlignX : std::int32_t { Start = 0, Centre = 2 };
enum class AlignY : std::int32_t { Top = 0, Foot = 1, Middle = 2 };

/// The surface of one draw-cell event. Nothing here fails where anyone could tell.
class CellCanvas {
public:
    virtual ~CellCanvas() = default;
    virtual void SetForeColor(std::int32_t colour) = 0;
    virtual void SetBackColor(std::int32_t colour) = 0;
    virtual void FrameRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;
    virtual void ClearCell() = 0; ///< fills the cell with the background colour
    virtual void DrawLine(std::int32_t x, std::int32_t y, const Text& text) = 0;
    /// Text wrapped and aligned inside a box.
    virtual void DrawBox(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, AlignX horizontal,
                         AlignY vertical, const Text& text) = 0;
};

using FontHandle = std::int32_t;

struct TextSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
};

class FontServer {
public:
    virtual ~FontServer() = default;
    /// A font by name and size; a name that the platform lacks gives its stand-in, never a failure.
    virtual FontHandle GetFont(const Text& name, std::int32_t size, std::int32_t styleFlags) = 0;
    virtual std::int32_t FontHeight(FontHandle font) = 0; ///< height of one line
    /// Size on one line of the `length` characters from `start` (0-based) on.
    virtual TextSize MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) = 0;
    virtual TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) = 0;
    /// The fonts there are, in the platform's order; an empty text ends the walk. Equal neighbours may come.
    virtual Text FirstFontName() = 0;
    virtual Text NextFontName() = 0;
};

/// The colours that a form has when nothing else is said.
struct FormColours {
    std::int32_t Background = 0xFFFFFF;
    std::int32_t Foreground = 0x000000;
};

} // namespace platform
