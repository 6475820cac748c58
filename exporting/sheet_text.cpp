// SPDX-License-Identifier: MIT
#include "exporting/sheet_text.h"

#include "companion/values/columns.h"
#include "src/text/utf8.h"

#include <algorithm>
#include <cstdio>

namespace exporting {

using modStringTools::FirstCharacter;
using modStringTools::ReplacementCharacter;

namespace {

constexpr std::size_t MostOfAName = 31; // characters
constexpr std::size_t EscapeLength = 7; // of "_x0001_"

bool IsHexDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F') ||
           (character >= 'a' && character <= 'f');
}

bool LooksEscaped(std::string_view text) {
    return text.size() >= EscapeLength && text.substr(0, 2) == "_x" && text[EscapeLength - 1] == '_' &&
           std::all_of(text.begin() + 2, text.begin() + EscapeLength - 1, IsHexDigit);
}

std::string Escaped(unsigned code) {
    char escape[EscapeLength + 1];
    std::snprintf(escape, sizeof escape, "_x%04X_", code & 0xFFFFU);
    return escape;
}

/// Returns the character that begins at `at` as a sheet has it, and moves `at` behind it.
std::string TakeCharacter(std::string_view text, std::size_t& at, bool& isReplaced) {
    const std::size_t length = FirstCharacter(text.substr(at)).Length;
    if (length == 0) {
        isReplaced = true;
        ++at;
        return std::string(ReplacementCharacter);
    }
    const std::string_view character = text.substr(at, length);
    const auto byte = static_cast<unsigned char>(character.front());
    const bool looksEscaped = byte == '_' && LooksEscaped(text.substr(at));
    at += length;
    if (looksEscaped || (byte < ' ' && byte != '\t' && byte != '\n'))
        return Escaped(byte);
    if (character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF") // U+FFFE, U+FFFF
        return Escaped(character.back() == '\xBE' ? 0xFFFE : 0xFFFF);
    return std::string(character);
}

std::size_t CharactersOf(std::string_view piece) {
    constexpr std::size_t BeyondFfff = 4; // bytes of such a character
    const bool isAscii = static_cast<unsigned char>(piece.front()) < 0x80;
    return isAscii ? piece.size() : piece.size() == BeyondFfff ? 2 : 1;
}

bool IsPlain(char character) {
    return character >= ' ' && character != '_' && static_cast<unsigned char>(character) < 0x80;
}

/// Returns the beginning of a text, of at most so many characters.
std::string Beginning(std::string_view text, std::size_t mostCharacters) {
    std::string beginning;
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view character =
            text.substr(at, std::max<std::size_t>(FirstCharacter(text.substr(at)).Length, 1));
        characters += CharactersOf(character);
        if (characters > mostCharacters)
            break;
        beginning += character;
        at += character.size();
    }
    return beginning;
}

/// Returns a name without the characters that none may have.
std::string CleanName(std::string_view wanted) {
    constexpr std::string_view Never = "[]:*?/\\";
    bool isReplaced = false;
    std::string name;
    for (std::size_t at = 0; at < wanted.size();) {
        const bool isBad = static_cast<unsigned char>(wanted[at]) < ' ' || Never.find(wanted[at]) != Never.npos;
        const std::string character = TakeCharacter(wanted, at, isReplaced);
        name += isBad ? "_" : character;
    }
    name = Beginning(name, MostOfAName);
    for (char* const end : {name.empty() ? nullptr : &name.front(), name.empty() ? nullptr : &name.back()})
        if (end != nullptr && *end == '\'')
            *end = '_';
    if (name.find_first_not_of(' ') == std::string::npos)
        return "Sheet";
    return values::IsName(name, "History") ? name + "_" : name; // spreadsheets keep that name for themselves
}

} // namespace

SheetText TextOfCell(std::string_view text, std::size_t mostCharacters) {
    SheetText made;
    if (text.size() <= mostCharacters && std::all_of(text.begin(), text.end(), IsPlain)) {
        made.Text = text;
        return made;
    }
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::string piece = TakeCharacter(text, at, made.IsReplaced);
        characters += CharactersOf(piece);
        if (characters > mostCharacters) {
            made.IsCut = true;
            break;
        }
        made.Text += piece;
    }
    return made;
}

std::string SheetName(std::string_view wanted, std::vector<std::string>& taken) {
    const std::string clean = CleanName(wanted);
    std::string name = clean;
    const auto isTaken = [&] {
        return std::any_of(taken.begin(), taken.end(), [&](const auto& each) { return values::IsName(each, name); });
    };
    for (int count = 2; isTaken(); ++count) {
        const std::string ending = " (" + std::to_string(count) + ")";
        name = Beginning(clean, MostOfAName - ending.size()) + ending;
    }
    taken.push_back(name);
    return name;
}

} // namespace exporting
