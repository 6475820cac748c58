// SPDX-License-Identifier: MIT
#include "exporting/utf8.h"

namespace exporting {

namespace {

/// What a character of several bytes begins with, and the range of its second byte, which rules out longer forms than
/// needed, surrogates, and what is beyond U+10FFFF.
struct Lead {
    unsigned char First, Last;
    std::size_t Length;
    unsigned char SecondFrom, SecondTo;
};
constexpr Lead Leads[] = {
    {0x00, 0x7F, 1, 0, 0},       {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

} // namespace

std::optional<std::size_t> CharacterAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
    for (const Lead& lead : Leads) {
        if (byte(0) < lead.First || byte(0) > lead.Last)
            continue;
        if (text.size() - at < lead.Length)
            return std::nullopt;
        bool isWhole = lead.Length == 1 || (byte(1) >= lead.SecondFrom && byte(1) <= lead.SecondTo);
        for (std::size_t i = 2; i < lead.Length; ++i)
            isWhole = isWhole && (byte(i) & 0xC0) == 0x80;
        return isWhole ? std::optional(lead.Length) : std::nullopt;
    }
    return std::nullopt;
}

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto length = CharacterAt(text, at);
        if (!length)
            return false;
        at += *length;
    }
    return true;
}

} // namespace exporting
