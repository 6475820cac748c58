// SPDX-License-Identifier: MIT
// The devices' fonts, or substitutes for them, and the breaking of text into lines, which is the same when text is
// measured and when it is drawn.
#pragma once

#include "src/view/platform/canvas.h"

#include <QFont>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <vector>

namespace backends::qt {

using namespace platform;

/// Returns the font of a name and a size. A font of the devices has a substitute; any other name is looked up on the
/// machine.
QFont FontOf(const Text& name, std::int32_t size);

/// Returns the lines of a text at a width in pixels. A line ends at CR LF, CR or LF, and before the word that does not
/// fit; a word longer than a line is cut. There is always at least one line.
QStringList LinesOf(const QFont& font, TextView text, std::int32_t width);

/// Returns how often a long text has been broken into lines or measured so far. A text that is painted again is kept
/// and does not count again.
std::size_t LongTextsShaped();

/// Returns the text as it is shown on one line: without carriage returns and line feeds.
QString OneLine(TextView text);

class QtFonts final : public FontServer {
public:
    FontHandle GetFont(const Text& name, std::int32_t size, std::int32_t styleFlags) override;
    std::int32_t FontHeight(FontHandle font) override;
    TextSize MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) override;
    TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) override;
    Text FirstFontName() override;
    Text NextFontName() override;

    std::function<void()> Working; ///< called at each GetFont: measuring a page or a long list takes long

private:
    struct Known {
        Text Name;
        std::int32_t Size = 0;
        QFont Font;
    };

    const QFont& Of(FontHandle font) const { return Fonts_[static_cast<std::size_t>(font)].Font; }

    std::vector<Known> Fonts_; ///< a handle is an index
    QStringList Names_;
    qsizetype Next_ = 0;
};

} // namespace backends::qt
