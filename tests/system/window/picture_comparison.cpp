// SPDX-License-Identifier: MIT
#include "tests/system/window/picture_comparison.h"

#include <algorithm>
#include <cstdlib>

namespace windowtest {

namespace {

constexpr int Paler = 48;     // of 255, in each of the three parts of a colour
constexpr int Tile = 16;      // pixels; a letter fills a large part of it
constexpr int FewPixels = 12; // of a tile's 256; so few scattered pixels show nothing

bool AreAlike(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) <= Paler && std::abs(qGreen(a) - qGreen(b)) <= Paler &&
           std::abs(qBlue(a) - qBlue(b)) <= Paler;
}

/// Returns true if a picture has a colour at a place or right beside it.
bool IsAt(const QImage& picture, QPoint place, QRgb colour) {
    const QRect around = QRect(place - QPoint(1, 1), place + QPoint(1, 1)).intersected(picture.rect());
    for (int y = around.top(); y <= around.bottom(); ++y)
        for (int x = around.left(); x <= around.right(); ++x)
            if (AreAlike(picture.pixel(x, y), colour))
                return true;
    return false;
}

int PixelsThatDiffer(const QImage& stored, const QImage& seen, const QRect& tile) {
    int count = 0;
    for (int y = tile.top(); y <= tile.bottom(); ++y) {
        for (int x = tile.left(); x <= tile.right(); ++x) {
            const QRgb was = stored.pixel(x, y);
            const QRgb is = seen.pixel(x, y);
            if (!AreAlike(was, is) && (!IsAt(seen, {x, y}, was) || !IsAt(stored, {x, y}, is)))
                ++count;
        }
    }
    return count;
}

std::string SizeOf(const QImage& picture) {
    return std::to_string(picture.width()) + "x" + std::to_string(picture.height());
}

} // namespace

std::string Difference(const QImage& stored, const QImage& seen) {
    if (stored.size() != seen.size())
        return "its size is " + SizeOf(seen) + " in place of " + SizeOf(stored);
    QRect all;
    int most = 0;
    for (int top = 0; top < seen.height(); top += Tile) {
        for (int left = 0; left < seen.width(); left += Tile) {
            const QRect tile = QRect(left, top, Tile, Tile).intersected(seen.rect());
            const int count = PixelsThatDiffer(stored, seen, tile);
            if (count <= FewPixels)
                continue;
            all |= tile;
            most = std::max(most, count);
        }
    }
    if (all.isEmpty())
        return {};
    return "it differs from " + std::to_string(all.left()) + "," + std::to_string(all.top()) + " to " +
           std::to_string(all.right()) + "," + std::to_string(all.bottom()) + ", by up to " + std::to_string(most) +
           " pixels in a square of " + std::to_string(Tile);
}

} // namespace windowtest
