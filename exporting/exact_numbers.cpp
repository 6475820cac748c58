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

/// Zeros before the first and behind the last other digit are no significant ones.
std::size_t SignificantDigits(std::string_view number) {
    std::size_t count = 0;
    std::size_t zeros = 0;
    for (const char character : number.substr(0, number.find_first_of("eE"))) {
        if (character == '0') {
            zeros += count > 0 ? 1 : 0;
        } else if (character >= '1' && character <= '9') {
            count += zeros + 1;
            zeros = 0;
        }
    }
    return count;
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

std::optional<std::int64_t> ExactInteger(std::string_view number) {
    std::int64_t value = 0;
    const char* const end = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

} // namespace exporting
