// SPDX-License-Identifier: MIT
#include "backends/qt/fonts.h"

#include "backends/grid/device_fonts.h"
#include "backends/grid/paragraphs.h"
#include "backends/qt/conversions.h"
#include "src/text/characters.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <list>

namespace backends::qt {

using modStringTools::CarriageReturn;
using modStringTools::LineFeed;

namespace {

/// Returns the font of a shape. Debian has the narrow font in a separate package: where it is not installed, the normal
/// font is drawn as narrow. Where that is missing too, the machine substitutes another font for its name.
QFont FontOfShape(bool isNarrow) {
    const QString normal = QStringLiteral("DejaVu Sans");
    if (!isNarrow)
        return QFont(normal);
    const QString narrow = QStringLiteral("DejaVu Sans Condensed");
    static const bool IsThere = QFontDatabase::hasFamily(narrow);
    QFont font(IsThere ? narrow : normal);
    if (!IsThere)
        font.setStretch(90); // width of the narrow font's letters, in percent of the normal ones
    return font;
}

/// Breaks one paragraph and appends its lines.
void BreakParagraph(const QFont& font, const QString& paragraph, std::int32_t width, QStringList& lines) {
    QTextLayout layout(paragraph, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    const qsizetype before = lines.size();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        lines.push_back(paragraph.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    if (lines.size() == before)
        lines.push_back(QString());
}

/// A text in a font, broken into lines at a width.
struct Shaped {
    QString Font;
    std::int32_t Width = 0;
    Text Words;
    QStringList Lines;
    int Widest = 0;
};

constexpr std::int32_t OnOneLine = -1; // as a width: the text is not broken

QStringList BreakText(const QFont& font, TextView text, std::int32_t width) {
    QStringList lines;
    for (TextView rest = text;;) {
        const std::size_t end = rest.find_first_of(u"\r\n");
        BreakParagraph(font, ToQt(rest.substr(0, end)), width, lines);
        if (end == TextView::npos)
            return lines;
        const bool both = rest[end] == CarriageReturn && end + 1 < rest.size() && rest[end + 1] == LineFeed;
        rest.remove_prefix(end + (both ? 2 : 1));
        if (rest.empty())
            return lines; // a line end at the end of the text begins no new line
    }
}

Shaped Shape(const QFont& font, TextView text, std::int32_t width) {
    Shaped shaped;
    shaped.Lines = width == OnOneLine ? QStringList(OneLine(text)) : BreakText(font, text, width);
    const QFontMetrics metrics(font);
    for (const QString& line : shaped.Lines)
        shaped.Widest = std::max(shaped.Widest, metrics.horizontalAdvance(line));
    return shaped;
}

/// The long texts already shaped, the most recently used first. A page has few.
struct {
    std::list<Shaped> Kept;
    std::size_t Count = 0;
} LongTexts;

/// Shapes a long text once and keeps the result: a text of a megabyte takes seconds, and the page is painted at each
/// key.
const Shaped& ShapeOnce(const QFont& font, TextView text, std::int32_t width) {
    constexpr std::size_t Long = 2000; // characters
    constexpr std::size_t MostKept = 8;
    static Shaped brief;
    if (text.size() < Long)
        return brief = Shape(font, text, width);
    const QString key = font.key();
    std::list<Shaped>& kept = LongTexts.Kept;
    const auto found = std::find_if(kept.begin(), kept.end(), [&](const Shaped& each) {
        return each.Width == width && each.Words == text && each.Font == key;
    });
    if (found != kept.end()) {
        kept.splice(kept.begin(), kept, found);
        return kept.front();
    }
    ++LongTexts.Count;
    kept.push_front(Shape(font, text, width));
    kept.front().Font = key;
    kept.front().Width = width;
    kept.front().Words = text;
    if (kept.size() > MostKept)
        kept.pop_back();
    return kept.front();
}

} // namespace

QFont FontOf(const Text& name, std::int32_t size) {
    const DeviceFont* const known = DeviceFontNamed(name);
    QFont font = known != nullptr ? FontOfShape(known->IsNarrow) : QFont(ToQt(name));
    font.setPixelSize(PixelsOfFont(known, size));
    font.setHintingPreference(QFont::PreferFullHinting); // whole pixels, so that widths add up
    return font;
}

QString OneLine(TextView text) {
    return ToQt(WithoutLineEnds(text));
}

QStringList LinesOf(const QFont& font, TextView text, std::int32_t width) {
    return ShapeOnce(font, text, std::max(width, 0)).Lines;
}

std::size_t LongTextsShaped() {
    return LongTexts.Count;
}

FontHandle QtFonts::GetFont(const Text& name, std::int32_t size, std::int32_t) {
    if (Working)
        Working();
    const auto found = std::find_if(Fonts_.begin(), Fonts_.end(),
                                    [&](const Known& font) { return font.Size == size && font.Name == name; });
    if (found != Fonts_.end())
        return static_cast<FontHandle>(found - Fonts_.begin());
    Fonts_.push_back({name, size, FontOf(name, size)});
    return static_cast<FontHandle>(Fonts_.size() - 1);
}

std::int32_t QtFonts::FontHeight(FontHandle font) {
    return QFontMetrics(Of(font)).height();
}

TextSize QtFonts::MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) {
    const auto from = std::min(static_cast<std::size_t>(std::max(start, 0)), text.size());
    const TextView line = TextView(text).substr(from, static_cast<std::size_t>(std::max(length, 0)));
    return {ShapeOnce(Of(font), line, OnOneLine).Widest, QFontMetrics(Of(font)).height()};
}

TextSize QtFonts::MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) {
    const Shaped& shaped = ShapeOnce(Of(font), text, std::max(width, 0));
    const int height = QFontMetrics(Of(font)).height();
    return {shaped.Widest, height * static_cast<std::int32_t>(shaped.Lines.size())};
}

Text QtFonts::FirstFontName() {
    Names_ = QFontDatabase::families();
    Next_ = 0;
    return NextFontName();
}

Text QtFonts::NextFontName() {
    return Next_ < Names_.size() ? FromQt(Names_[Next_++]) : Text();
}

} // namespace backends::qt
