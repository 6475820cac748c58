// SPDX-License-Identifier: MIT
#include "backends/qt/elided.h"

#include <QFontMetrics>
#include <QTextLayout>

namespace backends::qt {

QString ElidedToLines(const QFont& font, const QString& text, int width, int lines) {
    const QFontMetrics metrics(font);
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList made;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool isLast = made.size() + 1 == lines;
        const QString rest = text.mid(line.textStart(), isLast ? -1 : line.textLength()).trimmed();
        made.push_back(isLast ? metrics.elidedText(rest, Qt::ElideRight, width) : rest);
        if (isLast)
            break;
    }
    layout.endLayout();
    return made.join(QLatin1Char('\n'));
}

QString ElidedBefore(const QFont& font, const QString& text, const QString& end, int width) {
    const QFontMetrics metrics(font);
    const int taken = metrics.horizontalAdvance(end);
    const bool isKept = !end.isEmpty() && text.endsWith(end) && taken <= width * 2 / 3;
    if (!isKept || metrics.horizontalAdvance(text) <= width)
        return metrics.elidedText(text, Qt::ElideRight, width);
    const QString before = metrics.elidedText(text.chopped(end.size()), Qt::ElideRight, width - taken);
    return before + end;
}

} // namespace backends::qt
