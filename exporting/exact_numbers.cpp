// SPDX-License-Identifier: MIT
#include "exporting/exact_numbers.h"

#include "companion/values/quantity.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace exporting {

namespace {

constexpr std::size_t MostDigits = 15;
constexpr double Largest = 9.99999999999999e307; // of spreadsheets; a double goes to 1.8e308

constexpr std::size_t MostPlaces = 30; // decimal places of a number format

std::string_view MantissaOf(std::string_view number) {
    return number.substr(0, number.find_first_of("eE"));
}

/// Zeros before the first and behind the last other digit are no significant ones.
std::size_t SignificantDigits(std::string_view number) {
    std::size_t count = 0;
    std::size_t zeros = 0;
    for (const char character : MantissaOf(number)) {
        if (character == '0') {
            zeros += count > 0 ? 1 : 0;
        } else if (character >= '1' && character <= '9') {
            count += zeros + 1;
            zeros = 0;
        }
    }
    return count;
}

/// Returns the decimal places of a number as it stands.
std::size_t PlacesOf(std::string_view mantissa) {
    const std::size_t point = mantissa.find('.');
    return point == std::string_view::npos ? 0 : mantissa.size() - point - 1;
}

/// Returns how many digits follow the first one that is not zero; of a zero, its decimal places.
std::size_t DigitsBehindFirst(std::string_view mantissa) {
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos)
        return PlacesOf(mantissa);
    const std::string_view behind = mantissa.substr(first + 1);
    return behind.size() - (behind.find('.') == std::string_view::npos ? 0 : 1);
}

} // namespace

std::optional<double> ExactDouble(std::string_view number) {
    const std::size_t digits = SignificantDigits(number);
    const auto value = values::ValueOf(number);
    if (!value || digits > MostDigits || std::abs(*value) > Largest)
        return std::nullopt;
    if (digits > 0 && std::abs(*value) < std::numeric_limits<double>::min())
        return std::nullopt;
    return value;
}

std::optional<std::string> NumberFormatOf(std::string_view number) {
    const std::string_view mantissa = MantissaOf(number);
    const bool hasExponent = mantissa.size() < number.size() || PlacesOf(mantissa) > MostPlaces;
    const std::size_t places = hasExponent ? DigitsBehindFirst(mantissa) : PlacesOf(mantissa);
    if (places > MostPlaces)
        return std::nullopt;
    const std::string shown = (places == 0 ? "0" : "0." + std::string(places, '0')) + (hasExponent ? "E+0" : "");
    const bool isNegativeZero = number.starts_with('-') && SignificantDigits(number) == 0;
    return isNegativeZero ? shown + ";-" + shown + ";-" + shown : shown; // of more than, less than, and zero
}

std::optional<std::int64_t> ExactInteger(std::string_view number) {
    std::int64_t value = 0;
    const char* const end = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

} // namespace exporting
