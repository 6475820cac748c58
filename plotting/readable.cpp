// SPDX-License-Identifier: MIT
#include "plotting/readable.h"

#include <array>

namespace plotting {

namespace {

constexpr char32_t Replacement = 0xFFFD;

/// Returns how many bytes a character has that begins with this one, 0 if none does.
std::size_t LengthFrom(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first < 0xE0)
        return 2;
    if (first >= 0xE0 && first < 0xF0)
        return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

bool IsCharacter(char32_t character, std::size_t length) {
    constexpr std::array<char32_t, 5> Smallest = {0, 0, 0x80, 0x800, 0x10000}; // a longer form is none
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    return character >= Smallest[length] && character < 0x110000 && !isSurrogate;
}

bool IsBetween(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

bool IsShown(char32_t character) {
    const bool isControl = character < 0x20 || IsBetween(character, 0x7F, 0x9F);
    const bool turnsText = IsBetween(character, 0x202A, 0x202E) || IsBetween(character, 0x2066, 0x2069);
    return !isControl && !turnsText && (character & 0xFFFE) != 0xFFFE;
}

bool IsAccent(char32_t character) {
    return IsBetween(character, 0x300, 0x36F) || IsBetween(character, 0x200B, 0x200F) ||
           IsBetween(character, 0x20D0, 0x20FF) || IsBetween(character, 0xFE00, 0xFE0F);
}

bool IsWide(char32_t character) {
    return IsBetween(character, 0x1100, 0x115F) || IsBetween(character, 0x2E80, 0xA4CF) ||
           IsBetween(character, 0xAC00, 0xD7A3) || IsBetween(character, 0xF900, 0xFAFF) ||
           IsBetween(character, 0xFE30, 0xFE6F) || IsBetween(character, 0xFF00, 0xFF60) ||
           IsBetween(character, 0x1F300, 0x1FAFF) || IsBetween(character, 0x20000, 0x3FFFD);
}

/// In parts of the font's size.
double WidthOf(char32_t character) {
    constexpr double Narrow = 0.42, Usual = 0.65, Broad = 0.8, Widest = 1.05;
    constexpr std::u32string_view NarrowOnes = U" .,:;'|!ijl()[]/-ftI", WidestOnes = U"mwMW%@", BroadOnes = U"GOQDNHU~";
    if (IsAccent(character))
        return 0;
    if (IsWide(character) || WidestOnes.find(character) != std::u32string_view::npos)
        return Widest;
    if (NarrowOnes.find(character) != std::u32string_view::npos)
        return Narrow;
    const bool isBroad = BroadOnes.find(character) != std::u32string_view::npos || character >= 0x250;
    return isBroad ? Broad : character >= 'A' && character <= 'Z' ? 0.72 : Usual;
}

} // namespace

char32_t TakeCharacter(std::string_view& rest) {
    const auto first = static_cast<unsigned char>(rest.front());
    const std::size_t length = LengthFrom(first);
    if (length == 1) {
        rest.remove_prefix(1);
        return first;
    }
    if (length == 0 || rest.size() < length) {
        rest.remove_prefix(1);
        return Replacement;
    }
    char32_t character = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(rest[i]);
        if ((next & 0xC0U) != 0x80U) {
            rest.remove_prefix(1);
            return Replacement;
        }
        character = (character << 6U) | (next & 0x3FU);
    }
    const bool isOne = IsCharacter(character, length);
    rest.remove_prefix(isOne ? length : 1);
    return isOne ? character : Replacement;
}

void Append(char32_t character, std::string& text) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    const auto part = [&](unsigned shift) { text += static_cast<char>(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x800) {
        text += static_cast<char>(0xC0U | (character >> 6U));
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0U | (character >> 12U));
        part(6);
    } else {
        text += static_cast<char>(0xF0U | (character >> 18U));
        part(12);
        part(6);
    }
    part(0);
}

std::string Readable(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const char32_t character = TakeCharacter(bytes);
        Append(IsShown(character) ? character : Replacement, text);
    }
    return text;
}

int CellsOf(char32_t character) {
    return IsAccent(character) ? 0 : IsWide(character) ? 2 : 1;
}

int CellsOf(std::string_view text) {
    int cells = 0;
    while (!text.empty())
        cells += CellsOf(TakeCharacter(text));
    return cells;
}

double WidthOf(std::string_view text, double size) {
    double width = 0;
    while (!text.empty())
        width += WidthOf(TakeCharacter(text));
    return width * size;
}

} // namespace plotting
