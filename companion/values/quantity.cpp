// SPDX-License-Identifier: MIT
#include "companion/values/quantity.h"

#include <algorithm>
#include <charconv>
#ifndef __cpp_lib_to_chars
#include <locale>
#include <sstream>
#endif

namespace values {

namespace {

constexpr std::string_view Blanks = " \t";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsSign(char character) {
    return character == '+' || character == '-';
}

bool IsDecimalSign(char character, DecimalSign sign) {
    return (character == '.' && sign != DecimalSign::Comma) || (character == ',' && sign != DecimalSign::Point);
}

/// Returns the first place from `at` on that has no digit.
std::size_t BehindDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return at;
}

std::string_view WithoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(Blanks) + 1));
    return text;
}

bool HasZerosBefore(std::string_view number) {
    if (!number.empty() && IsSign(number.front()))
        number.remove_prefix(1);
    return number.size() > 1 && number[0] == '0' && IsDigit(number[1]);
}

/// True for "1,234": the comma may stand before thousands or before decimal places.
bool MayHaveThousands(std::string_view number) {
    constexpr std::size_t Thousands = 3;
    if (!number.empty() && IsSign(number.front()))
        number.remove_prefix(1);
    const std::size_t comma = number.find(',');
    return comma != std::string_view::npos && comma >= 1 && comma <= Thousands && number[0] != '0' &&
           number.size() == comma + 1 + Thousands;
}

/// `behind`: what follows a number, not empty.
bool CanBeginUnit(std::string_view behind) {
    const bool isApart = Blanks.find(behind.front()) != std::string_view::npos;
    const char first = WithoutBlanks(behind).front();
    constexpr std::string_view Never = "0123456789+-.,:;=<>";
    if (isApart)
        return Never.find(first) == std::string_view::npos;
    return first == '%' || static_cast<unsigned char>(first) >= 0x80;
}

} // namespace

std::size_t NumberLength(std::string_view text, DecimalSign sign) {
    const std::size_t whole = !text.empty() && IsSign(text.front()) ? 1 : 0;
    std::size_t end = BehindDigits(text, whole);
    bool hasDigits = end > whole;
    if (end + 1 < text.size() && IsDecimalSign(text[end], sign) && IsDigit(text[end + 1])) {
        end = BehindDigits(text, end + 1);
        hasDigits = true;
    }
    if (!hasDigits)
        return 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const std::size_t exponent = end + 1 < text.size() && IsSign(text[end + 1]) ? end + 2 : end + 1;
        if (BehindDigits(text, exponent) > exponent)
            end = BehindDigits(text, exponent);
    }
    return end;
}

std::optional<double> ValueOf(std::string_view number) {
    const std::string plain = PlainNumber(number);
    double value = 0;
#ifdef __cpp_lib_to_chars
    const auto read = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
#else // the library for WebAssembly reads whole numbers alone in that way
    std::istringstream text(plain);
    text.imbue(std::locale::classic());
    return text >> value ? std::optional(value) : std::nullopt;
#endif
}

std::string PlainNumber(std::string_view number) {
    std::string plain;
    if (!number.empty() && IsSign(number.front())) {
        if (number.front() == '-')
            plain = "-";
        number.remove_prefix(1);
    }
    if (!number.empty() && !IsDigit(number.front()))
        plain += '0';
    plain += number;
    std::replace(plain.begin(), plain.end(), ',', '.');
    return plain;
}

std::optional<Quantity> QuantityOf(std::string_view field, DecimalSign sign) {
    field = WithoutBlanks(field);
    const std::string_view number = field.substr(0, NumberLength(field, sign));
    const std::string_view behind = field.substr(number.size());
    if (number.empty() || HasZerosBefore(number) || (sign == DecimalSign::Either && MayHaveThousands(number)) ||
        (!behind.empty() && !CanBeginUnit(behind)))
        return std::nullopt;
    return Quantity{number, WithoutBlanks(behind)};
}

} // namespace values
