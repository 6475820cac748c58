// SPDX-License-Identifier: MIT
// The text of a field as a number and a unit. Texts are UTF-8; what a routine returns are parts of the text that it was
// given, so that no digit is lost.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace values {

/// Which signs may stand before the decimal places of a number.
enum class DecimalSign { Point, Comma, Either };

/// Returns the length in bytes of the number that a text begins with: a sign, digits with one decimal sign among them,
/// and an exponent if it has digits. 0 if it begins with anything else, as ".", "-" or "dry" do.
std::size_t NumberLength(std::string_view text, DecimalSign sign);

/// Returns the nearest double of such a number; nothing if a double can't be as large.
std::optional<double> ValueOf(std::string_view number);

/// Returns the number as programs write it: a full stop, no "+", and a digit before it ("+,5" is "0.5").
std::string PlainNumber(std::string_view number);

struct Quantity {
    std::string_view Number;
    std::string_view Unit; ///< empty for none
    bool operator==(const Quantity&) const = default;
};

/// Tells a number and its unit apart: "24.5 %" is "24.5" and "%". Blanks around the text and between the two mean
/// nothing; without a blank between them the unit begins with "%" or a character beyond ASCII ("20°C"). Returns nothing
/// for any other text, such as "", "dry", "<0.5", "21/11/2026", "1 234" or "00123": a number with zeros before it is a
/// name, and must stay as it is. With Either, "1,234" is text, too: it may be a thousand and more.
std::optional<Quantity> QuantityOf(std::string_view field, DecimalSign sign);

} // namespace values
