// SPDX-License-Identifier: MIT
#include "plotting/readable.h"

#include "src/text/utf8.h"

namespace plotting {

using modStringTools::AppendUtf8;

namespace {

constexpr char32_t Replacement = 0xFFFD;

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
    const modStringTools::Utf8Character first = modStringTools::FirstCharacter(rest);
    rest.remove_prefix(first.Length == 0 ? 1 : first.Length);
    return first.Length == 0 ? Replacement : first.Code;
}

std::string Readable(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const char32_t character = TakeCharacter(bytes);
        AppendUtf8(text, IsShown(character) ? character : Replacement);
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
