// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QString>

namespace backends::qt {

/// Returns a text as it fits into so many lines of `width` pixels, with line feeds between them. If it is longer, the
/// last line ends with "…".
QString ElidedToLines(const QFont& font, const QString& text, int width, int lines);

/// Returns a text as it fits into one line of `width` pixels. What is cut is cut before `end`, which is the end of the
/// text, unless that takes most of the line by itself.
QString ElidedBefore(const QFont& font, const QString& text, const QString& end, int width);

} // namespace backends::qt
