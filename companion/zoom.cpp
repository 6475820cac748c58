// SPDX-License-Identifier: MIT
#include "companion/zoom.h"

#include <algorithm>
#include <iterator>
#include <locale>
#include <sstream>

namespace companion {

namespace {

constexpr double Steps[] = {0.75, 1, 1.25, 1.5, 1.75, 2, 2.5, 3};
constexpr double Smallest = 0.5; // of the command line
constexpr double Largest = 4;

Text Percent(double scale) {
    return modStringTools::FromBytes(ScaleText(scale * 100)) + u" %";
}

} // namespace

double LargerScale(double scale) {
    const auto* const next = std::upper_bound(std::begin(Steps), std::end(Steps), scale);
    return next == std::end(Steps) ? scale : *next;
}

double SmallerScale(double scale) {
    const auto* const next = std::lower_bound(std::begin(Steps), std::end(Steps), scale);
    return next == std::begin(Steps) ? scale : *std::prev(next);
}

double StepUpTo(double scale) {
    const auto* const above = std::upper_bound(std::begin(Steps), std::end(Steps), scale);
    return above == std::begin(Steps) ? Steps[0] : *std::prev(above);
}

double ScaleOfText(const std::string& text, double otherwise) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double scale = 0;
    return in >> scale && scale >= Smallest && scale <= Largest ? scale : otherwise;
}

std::string ScaleText(double scale) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << scale;
    return out.str();
}

Notice ScaleIsLimited(double wanted, double used) {
    return {AboutScale, Severity::Note,
            u"This screen has no room for the form at " + Percent(wanted) + u": it is shown at " + Percent(used) +
                u"."};
}

} // namespace companion
