// SPDX-License-Identifier: MIT
#include "companion/values/number_text.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

namespace values {

namespace {

constexpr int DigitsOfADouble = 15;

/// By a stream, because a library without to_chars for such numbers is in use; whatever the locale.
std::string TextOf(double value, std::ios_base& (*form)(std::ios_base&), int precision) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << form << std::setprecision(precision) << value;
    return text.str();
}

std::string WithoutZerosAtEnd(std::string text) {
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

} // namespace

int ExponentOf(double value) {
    return value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::fabs(value)) + 1e-9));
}

std::string FixedText(double value, int decimals) {
    return TextOf(value, std::fixed, decimals);
}

std::string ScientificText(double value, int decimals) {
    const std::string text = TextOf(value, std::scientific, decimals); // "1.50e+300"
    const std::size_t e = text.find('e');
    std::string exponent = text.substr(e + 1);
    const bool isNegative = exponent.front() == '-';
    exponent.erase(0, std::min(exponent.find_first_not_of("+-0"), exponent.size() - 1));
    return WithoutZerosAtEnd(text.substr(0, e)) + "e" + (isNegative ? "-" : "") + exponent;
}

std::string RoundedText(double value, int place) {
    if (!std::isfinite(value))
        return "(too large)";
    constexpr double Small = 1e-4, Large = 1e15, LargeAndRound = 1e7;
    const int exponent = ExponentOf(value);
    place = std::max(place, exponent - (DigitsOfADouble - 1));
    const double size = std::fabs(value);
    const bool isUsual = size >= Small && size < (place > 0 ? LargeAndRound : Large);
    if (value == 0 || isUsual)
        return WithoutZerosAtEnd(FixedText(value, std::max(0, -place)));
    return ScientificText(value, std::max(0, exponent - place));
}

} // namespace values
