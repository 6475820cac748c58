// SPDX-License-Identifier: MIT
#include "backends/headless/edited_text.h"

#include "src/text/characters.h"

#include <algorithm>

namespace backends::headless {

namespace {

constexpr char16_t Backspace = 8;

/// True for two units that are never separated: a character beyond the first 65,536, or a line end.
bool AreOne(char16_t first, char16_t second) {
    return modStringTools::AreOneCharacter(first, second) || (first == u'\r' && second == u'\n');
}

} // namespace

void EditedText::Set(const Text& text) {
    Value = text;
    From = std::min(From, Value.size());
    if (From > 0 && Behind(From - 1) != From)
        From = Before(From + 1);
    Selected = 0;
}

void EditedText::ReplaceAll(const Text& text, bool multiLine) {
    Value = text;
    if (!multiLine)
        std::replace_if(
            Value.begin(), Value.end(), [](char16_t unit) { return unit == u'\r' || unit == u'\n'; }, u' ');
    From = Value.size();
    Selected = 0;
}

void EditedText::Select(std::int32_t position, std::int32_t length) {
    From = std::min(static_cast<std::size_t>(std::max(position, 0)), Value.size());
    Selected = std::min(static_cast<std::size_t>(std::max(length, 0)), Value.size() - From);
}

void EditedText::Enter(TextView character, bool multiLine) {
    if (character.empty())
        return;
    if (character[0] == Backspace) {
        const std::size_t start = Selected > 0 ? From : Before(From);
        Replace(start, From + Selected - start, u"");
    } else if (character[0] == u'\r' || character[0] == u'\n') {
        if (multiLine)
            Replace(From, Selected, u"\r\n");
    } else if (character[0] >= u' ') {
        Replace(From, Selected, character);
    }
}

void EditedText::MoveCaret(std::int32_t step) {
    From = step < 0 ? Before(From) : Behind(From + Selected);
    Selected = 0;
}

void EditedText::Replace(std::size_t from, std::size_t count, TextView text) {
    Value.replace(from, count, text);
    From = from + text.size();
    Selected = 0;
}

std::size_t EditedText::Before(std::size_t place) const {
    if (place >= 2 && AreOne(Value[place - 2], Value[place - 1]))
        return place - 2;
    return place > 0 ? place - 1 : 0;
}

std::size_t EditedText::Behind(std::size_t place) const {
    if (place + 1 < Value.size() && AreOne(Value[place], Value[place + 1]))
        return place + 2;
    return std::min(place + 1, Value.size());
}

} // namespace backends::headless
