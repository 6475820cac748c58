// SPDX-License-Identifier: MIT
#include "companion/values/moments.h"

#include "src/text/digits.h"
#include "src/view/date_text.h"

namespace values {

namespace {

/// Returns a number of one or two digits, at most `most`, with two digits.
std::optional<std::string> TwoDigits(std::string_view text, int most) {
    if (text.empty() || text.size() > 2 || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    const std::string padded = (text.size() == 1 ? "0" : "") + std::string(text);
    return (padded[0] - '0') * 10 + (padded[1] - '0') <= most ? std::optional(padded) : std::nullopt;
}

} // namespace

std::optional<std::string> IsoDate(std::string_view cell) {
    const auto date = modPDAUI::DateOf(modStringTools::FromBytes(cell));
    if (!date)
        return std::nullopt;
    using modStringTools::TwoDigits;
    const Text year = modStringTools::WithZeros(modStringTools::NumberText(date->Year), 4);
    return modStringTools::ToBytes(year + u"-" + TwoDigits(date->Month) + u"-" + TwoDigits(date->Day));
}

std::optional<std::string> CellDate(std::string_view iso) {
    constexpr std::size_t Length = 10; // "2026-11-21"
    if (iso.size() != Length || iso[4] != '-' || iso[7] != '-')
        return std::nullopt;
    const std::string cell =
        std::string(iso.substr(8)) + "/" + std::string(iso.substr(5, 2)) + "/" + std::string(iso.substr(0, 4));
    return IsoDate(cell) == iso ? std::optional(cell) : std::nullopt;
}

std::optional<std::string> IsoTime(std::string_view cell, std::string_view zone) {
    constexpr int LastHour = 23, LastOfSixty = 59;
    std::string time;
    for (int part = 0; part < 3; ++part) {
        const std::size_t colon = cell.find(':');
        const auto digits = TwoDigits(cell.substr(0, colon), part == 0 ? LastHour : LastOfSixty);
        if (!digits)
            return std::nullopt;
        time += (part == 0 ? "" : ":") + *digits;
        if (colon == std::string_view::npos)
            return part == 0 ? std::nullopt : std::optional(time + std::string(zone));
        cell.remove_prefix(colon + 1);
    }
    return std::nullopt;
}

bool IsZone(std::string_view zone) {
    if (zone == "Z")
        return true;
    constexpr int MostHours = 14;
    return zone.size() == 6 && (zone[0] == '+' || zone[0] == '-') && zone[3] == ':' &&
           TwoDigits(zone.substr(1, 2), MostHours) && TwoDigits(zone.substr(4, 2), 59);
}

} // namespace values
