// SPDX-License-Identifier: MIT
// Fonts of a screen that is not shown. Every font has the same fixed metrics, so that wrapping and heights can be
// calculated: at size s each character is (3 s + 2) / 4 pixels wide and a line (15 s + 4) / 8 pixels high, in whole
// numbers. At size 8 these are 6 and 15.
#pragma once

#include "src/view/platform/canvas.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace backends::headless {

using namespace platform;

class HeadlessFonts final : public FontServer {
public:
    FontHandle GetFont(const Text& name, std::int32_t size, std::int32_t styleFlags) override;
    std::int32_t FontHeight(FontHandle font) override;
    /// Carriage returns and line feeds have no width and begin no line.
    TextSize MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) override;
    /// A line ends at CR LF, CR or LF, and before the word that does not fit; a word longer than a line is cut.
    TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) override;
    Text FirstFontName() override;
    Text NextFontName() override;
    /// Sets the available fonts.
    void OfferFonts(std::vector<Text> names) { Names_ = std::move(names); }

private:
    std::vector<Text> Names_ = {u"AFPalm",         u"AFPalmHR", u"AFSE UIQ Standard", u"Microsoft Sans Serif CMF",
                                u"Nokia Sans S60", u"Tahoma"};
    std::size_t Next_ = 0;
};

} // namespace backends::headless
