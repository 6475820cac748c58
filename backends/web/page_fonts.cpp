// SPDX-License-Identifier: MIT
#include "backends/web/page_fonts.h"

#include "backends/grid/device_fonts.h"
#include "backends/grid/paragraphs.h"
#include "src/text/characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace backends::web {

namespace {

using Json = nlohmann::json;

constexpr double Narrow = 0.85; // width of a narrow letter as a part of a usual one

FontLook LookNamed(const Text& name, std::int32_t size) {
    const DeviceFont* const font = DeviceFontNamed(name);
    return {.Pixels = PixelsOfFont(font, size), .Stretch = font != nullptr && font->IsNarrow ? Narrow : 1};
}

std::optional<double> Number(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_number() ? std::optional(found->get<double>()) : std::nullopt;
}

std::optional<FontMeasures::Range> ReadRange(const Json& json) {
    const auto first = json.is_object() ? Number(json, "first") : std::nullopt;
    if (!first || *first < 0 || *first > 0xFFFF || !json.contains("widths") || !json["widths"].is_array())
        return std::nullopt;
    FontMeasures::Range range{.First = static_cast<char16_t>(*first), .Widths = {}};
    for (const Json& width : json["widths"]) {
        if (!width.is_number())
            return std::nullopt;
        range.Widths.push_back(width.get<double>());
    }
    return range;
}

TextView WithoutBlanksAtEnd(TextView line) {
    const std::size_t last = line.find_last_not_of(u' ');
    return line.substr(0, last == TextView::npos ? 0 : last + 1);
}

} // namespace

std::optional<FontMeasures> ReadMeasures(const std::string& json) {
    const Json read = Json::parse(json, nullptr, false);
    if (!read.is_object() || !read.contains("ranges") || !read["ranges"].is_array())
        return std::nullopt;
    const auto ascent = Number(read, "ascent");
    const auto descent = Number(read, "descent");
    const auto other = Number(read, "other");
    if (!ascent || !descent || !other)
        return std::nullopt;
    FontMeasures measures{.Ascent = *ascent, .Descent = *descent, .Other = *other};
    for (const Json& each : read["ranges"]) {
        const auto range = ReadRange(each);
        if (!range)
            return std::nullopt;
        measures.Ranges.push_back(*range);
    }
    return measures;
}

FontHandle PageFonts::GetFont(const Text& name, std::int32_t size, std::int32_t) {
    const FontLook look = LookNamed(name, size);
    const auto found = std::find(Fonts_.begin(), Fonts_.end(), look);
    if (found != Fonts_.end())
        return static_cast<FontHandle>(found - Fonts_.begin());
    Fonts_.push_back(look);
    return static_cast<FontHandle>(Fonts_.size() - 1);
}

std::int32_t PageFonts::FontHeight(FontHandle font) {
    return Ascent(font) + static_cast<std::int32_t>(std::ceil(Measures_.Descent * LookOf(font).Pixels));
}

std::int32_t PageFonts::Ascent(FontHandle font) const {
    return static_cast<std::int32_t>(std::ceil(Measures_.Ascent * LookOf(font).Pixels));
}

double PageFonts::PartOf(char16_t character) const {
    if (IsLineEnd(character))
        return 0;
    for (const FontMeasures::Range& range : Measures_.Ranges) {
        if (character >= range.First && character - range.First < static_cast<std::int64_t>(range.Widths.size()))
            return range.Widths[static_cast<std::size_t>(character - range.First)];
    }
    return Measures_.Other;
}

double PageFonts::Exact(FontHandle font, TextView line) const {
    double parts = 0;
    for (const char16_t character : line)
        parts += PartOf(character);
    return parts * LookOf(font).Pixels * LookOf(font).Stretch;
}

std::int32_t PageFonts::WidthOf(FontHandle font, TextView line) const {
    constexpr double Noise = 0.001; // of a sum of parts
    return static_cast<std::int32_t>(std::ceil(Exact(font, line) - Noise));
}

TextSize PageFonts::MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) {
    const auto from = std::min(static_cast<std::size_t>(std::max(start, 0)), text.size());
    const TextView line = TextView(text).substr(from, static_cast<std::size_t>(std::max(length, 0)));
    return {WidthOf(font, line), FontHeight(font)};
}

/// Cuts off the first line of a paragraph, and the blanks behind it.
TextView PageFonts::TakeLine(FontHandle font, TextView& paragraph, std::int32_t width) const {
    std::size_t fits = 0;
    for (double used = 0; fits < paragraph.size(); ++fits) {
        used += Exact(font, paragraph.substr(fits, 1));
        if (used > width && paragraph[fits] != u' ')
            break;
    }
    std::size_t end = fits;
    if (fits < paragraph.size()) {
        const std::size_t blank = paragraph.substr(0, fits).rfind(u' ');
        end = blank != TextView::npos && blank > 0 ? blank + 1 : std::max<std::size_t>(fits, 1);
        if (end < paragraph.size() && modStringTools::AreOneCharacter(paragraph[end - 1], paragraph[end]))
            end += end > 1 ? std::size_t(-1) : std::size_t(1);
    }
    const TextView line = WithoutBlanksAtEnd(paragraph.substr(0, end));
    paragraph.remove_prefix(end);
    return line;
}

std::vector<TextView> PageFonts::LinesOf(FontHandle font, TextView text, std::int32_t width) const {
    std::vector<TextView> lines;
    do {
        TextView paragraph = TakeParagraph(text);
        do {
            lines.push_back(TakeLine(font, paragraph, width));
        } while (!paragraph.empty());
    } while (!text.empty());
    return lines;
}

TextSize PageFonts::MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) {
    const std::vector<TextView> lines = LinesOf(font, text, width);
    std::int32_t widest = 0;
    for (const TextView line : lines)
        widest = std::max(widest, WidthOf(font, line));
    return {widest, static_cast<std::int32_t>(lines.size()) * FontHeight(font)};
}

Text PageFonts::FirstFontName() {
    Next_ = 0;
    return NextFontName();
}

Text PageFonts::NextFontName() {
    return Next_ < DeviceFonts().size() ? Text(DeviceFonts()[Next_++].Name) : Text();
}

} // namespace backends::web
