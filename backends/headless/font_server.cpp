// SPDX-License-Identifier: MIT
#include "backends/headless/font_server.h"

#include "backends/grid/paragraphs.h"

#include <algorithm>

namespace backends::headless {

namespace {

// A font's handle is its size.

std::int32_t CharacterWidth(FontHandle font) {
    return (font * 3 + 2) / 4;
}

std::int32_t LineHeight(FontHandle font) {
    return (font * 15 + 4) / 8;
}

/// Returns the length of the first line of a paragraph, for lines of at most `most` characters, at least 1.
std::size_t LineLength(TextView paragraph, std::size_t most) {
    if (paragraph.size() <= most)
        return paragraph.size();
    const std::size_t blank = paragraph.substr(0, most + 1).rfind(u' ');
    return blank == TextView::npos || blank == 0 ? most : blank;
}

} // namespace

FontHandle HeadlessFonts::GetFont(const Text&, std::int32_t size, std::int32_t) {
    return std::max(size, 1);
}

std::int32_t HeadlessFonts::FontHeight(FontHandle font) {
    return LineHeight(font);
}

TextSize HeadlessFonts::MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) {
    const std::size_t from = std::min(static_cast<std::size_t>(std::max(start, 0)), text.size());
    const TextView line = TextView(text).substr(from, static_cast<std::size_t>(std::max(length, 0)));
    const auto characters = std::count_if(line.begin(), line.end(), [](char16_t c) { return !IsLineEnd(c); });
    return {static_cast<std::int32_t>(characters) * CharacterWidth(font), LineHeight(font)};
}

TextSize HeadlessFonts::MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) {
    const std::size_t most = static_cast<std::size_t>(std::max(width / CharacterWidth(font), 1));
    TextView rest = text;
    std::size_t widest = 0;
    std::int32_t lines = 0;
    do {
        TextView paragraph = TakeParagraph(rest);
        do {
            const std::size_t length = LineLength(paragraph, most);
            widest = std::max(widest, length);
            ++lines;
            paragraph.remove_prefix(length);
            while (!paragraph.empty() && paragraph.front() == u' ')
                paragraph.remove_prefix(1);
        } while (!paragraph.empty());
    } while (!rest.empty());
    return {static_cast<std::int32_t>(widest) * CharacterWidth(font), lines * LineHeight(font)};
}

Text HeadlessFonts::FirstFontName() {
    Next_ = 0;
    return NextFontName();
}

Text HeadlessFonts::NextFontName() {
    return Next_ < Names_.size() ? Names_[Next_++] : Text();
}

} // namespace backends::headless
