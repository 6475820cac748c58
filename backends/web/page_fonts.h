// SPDX-License-Identifier: MIT
// Fonts as a page has measured them. The page draws text by the same measures, at any scale: widths grow with the size,
// and no pair of letters is moved together.
#pragma once

#include "src/view/platform/canvas.h"

#include <optional>
#include <string>
#include <vector>

namespace backends::web {

using namespace platform;

/// What a page has measured of its font. All are parts of the font's size.
struct FontMeasures {
    struct Range {
        char16_t First = 0;
        std::vector<double> Widths; ///< of the characters from First on
    };
    double Ascent = 0.9;
    double Descent = 0.3;
    double Other = 1; ///< width of every other character
    std::vector<Range> Ranges = {};
};

/// Reads {"ascent", "descent", "other", "ranges": [{"first", "widths": [...]}]}. Returns nothing for any other text.
std::optional<FontMeasures> ReadMeasures(const std::string& json);

/// How the page draws a font.
struct FontLook {
    std::int32_t Pixels = 0;
    double Stretch = 1; ///< its width as a part of the usual one
    bool operator==(const FontLook&) const = default;
};

class PageFonts final : public FontServer {
public:
    explicit PageFonts(FontMeasures measures) : Measures_(std::move(measures)) {}

    FontHandle GetFont(const Text& name, std::int32_t size, std::int32_t styleFlags) override;
    std::int32_t FontHeight(FontHandle font) override;
    TextSize MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) override;
    TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) override;
    Text FirstFontName() override;
    Text NextFontName() override;

    const FontLook& LookOf(FontHandle font) const { return Fonts_[static_cast<std::size_t>(font)]; }
    std::int32_t Ascent(FontHandle font) const; ///< pixels from the head of a line to its base line
    std::int32_t WidthOf(FontHandle font, TextView line) const;
    /// Breaks a text into lines of at most this width: at its line ends, before the word that does not fit, or inside a
    /// word that is longer than a line.
    std::vector<TextView> LinesOf(FontHandle font, TextView text, std::int32_t width) const;

private:
    double PartOf(char16_t character) const;
    double Exact(FontHandle font, TextView line) const;
    TextView TakeLine(FontHandle font, TextView& paragraph, std::int32_t width) const;

    FontMeasures Measures_;
    std::vector<FontLook> Fonts_; ///< a font's handle is its index
    std::size_t Next_ = 0;
};

} // namespace backends::web
