// SPDX-License-Identifier: MIT
// Converts texts, colours and boxes between the types of the platform operations and those of Qt.
#pragma once

#include "src/view/platform/controls.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <cmath>

namespace backends::qt {

using namespace platform;

inline QString ToQt(TextView text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline Text FromQt(const QString& text) {
    return text.toStdU16String();
}

/// Converts a colour 0xBBGGRR.
inline QColor ColourOf(std::int32_t colour) {
    return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

/// Returns the pixels that a box covers.
inline QRect RectOf(const Box& box) {
    const int left = static_cast<int>(std::lround(box.Left));
    const int top = static_cast<int>(std::lround(box.Top));
    return {left, top, static_cast<int>(std::lround(box.Left + box.Width)) - left,
            static_cast<int>(std::lround(box.Top + box.Height)) - top};
}

} // namespace backends::qt
