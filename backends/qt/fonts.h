// SPDX-License-Identifier: MIT
// The devices' fonts, or what stands in for them, and the one way in which text is broken into lines: what is measured
// is what is drawn.
#pragma once

#include "src/view/platform/canvas.h"

#include <QFont>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <vector>

namespace backends::qt {

using namespace platform;

/// The font of a name and a size. A font of the devices has a stand-in; any other name is looked for on the machine.
QFont FontOf(const Text& name, std::int32_t size);

/// The lines of a text at a width in pixels. A line ends at CR LF, CR or LF, and before the word that does not fit; a
/// word longer than a line is cut. Always one line at least.
QStringList LinesOf(const QFont& font, TextView text, std::int32_t width);

/// How often a long text has been broken into lines or measured so far: one that is painted again and again is not.
std::size_t LongTextsShaped();

/// The text as it stands on one line: carriage returns and line feeds have no width.
QString OneLine(TextView text);

class QtFonts final : public FontServer {
public:
    FontHandle GetFont(const Text& name, std::int32_t size, std::int32_t styleFlags) override;
    std::int32_t FontHeight(FontHandle font) override;
    TextSize MeasureLine(FontHandle font, const Text& text, std::int32_t start, std::int32_t length) override;
    TextSize MeasureWrapped(FontHandle font, const Text& text, std::int32_t width) override;
    Text FirstFontName() override;
    Text NextFontName() override;

    std::function<void()> Working; ///< text is measured, for as long as a page or a long list takes

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
