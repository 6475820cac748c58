// SPDX-License-Identifier: MIT
// Painting of a cell and measuring of text. Colours are 0xBBGGRR, sizes are in pixels.
#pragma once

#include "src/text/text.h"

namespace platform {

inline constexpr std::int32_t White = 0xFFFFFF;

/// The alignment of a text in its box.
enum class AlignX : std::int32_t { Start = 0, Centre = 2 };
enum class AlignY : std::int32_t { Top = 0, Foot = 1, Middle = 2 };

/// The surface of one draw-cell event. No operation reports a failure.
class CellCanvas {
public:
    virtual ~CellCanvas() = default;
    virtual void SetForeColor(std::int32_t colour) = 0;
    virtual void SetBackColor(std::int32_t colour) = 0;
    virtual void FrameRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;
    virtual void ClearCell() = 0; ///< fills the cell with the background colour
    virtual void DrawLine(std::int32_t x, std::int32_t y, const Text& text) = 0;
    /// Draws text wrapped and aligned inside a box.
    virtual void DrawBox(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, AlignX horizontal,
                         AlignY vertical, const Text& text) = 0;
};

/// The cell of a draw-cell event. The box is in pixels from the grid's corner.
struct PaintedCell {
    std::int32_t Row = 0, Col = 0;
    std::int32_t X = 0, Y = 0, Width = 0, Height = 0;
    bool Current = false; ///< the current cell of the grid
};

using FontHandle = std::int32_t;

struct TextSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
};

class FontServer {
public:
    virtual ~FontServer() = default;
    /// Returns a font by name and size. If the platform lacks the name, it returns a substitute; it never fails.
    virtual FontHandle GetFont(const Text& name, std::int32_t size, std::int32_t styleFlags) = 0;
    virtual std::int32_t FontHeight(FontHandle font) = 0; ///< height of one line
    /// Returns the size, on one line, of `length` characters from `start` (0-based) on.
    virtual TextSize MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) = 0;
    virtual TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) = 0;
    /// Walk over the names of the fonts, in the platform's order. An empty text ends the walk. A name may be repeated
    /// next to itself.
    virtual Text FirstFontName() = 0;
    virtual Text NextFontName() = 0;
};

/// The default colours of a form.
struct FormColours {
    std::int32_t Background = 0xFFFFFF;
    std::int32_t Foreground = 0x000000;
};

} // namespace platform
