// SPDX-License-Identifier: MIT
#include "backends/headless/edited_text.h"

#include "src/text/characters.h"
#include "src/view/platform/keys.h"

#include <algorithm>

namespace backends::headless {

namespace {

/// True for two units that are never separated: a character beyond the first 65,536, or a line end.
bool AreOne(char16_t first, char16_t second) {
    return modStringTools::AreOneCharacter(first, second) || (first == u'\r' && second == u'\n');
}

} // namespace

void EditedText::Set(const Text& text) {
    Value_ = text;
    From_ = std::min(From_, Value_.size());
    if (From_ > 0 && Behind(From_ - 1) != From_)
        From_ = Before(From_ + 1);
    Selected_ = 0;
}

void EditedText::ReplaceAll(const Text& text, bool multiLine) {
    Value_ = text;
    if (!multiLine)
        std::replace_if(
            Value_.begin(), Value_.end(), [](char16_t unit) { return unit == u'\r' || unit == u'\n'; }, u' ');
    From_ = Value_.size();
    Selected_ = 0;
}

void EditedText::Select(std::int32_t position, std::int32_t length) {
    From_ = std::min(static_cast<std::size_t>(std::max(position, 0)), Value_.size());
    Selected_ = std::min(static_cast<std::size_t>(std::max(length, 0)), Value_.size() - From_);
}

void EditedText::Enter(TextView character, bool multiLine) {
    if (character.empty())
        return;
    if (character[0] == platform::BackspaceCharacter) {
        const std::size_t start = Selected_ > 0 ? From_ : Before(From_);
        Replace(start, From_ + Selected_ - start, u"");
    } else if (character[0] == u'\r' || character[0] == u'\n') {
        if (multiLine)
            Replace(From_, Selected_, u"\r\n");
    } else if (character[0] >= u' ') {
        Replace(From_, Selected_, character);
    }
}

void EditedText::MoveCaret(std::int32_t step) {
    From_ = step < 0 ? Before(From_) : Behind(From_ + Selected_);
    Selected_ = 0;
}

void EditedText::Replace(std::size_t from, std::size_t count, TextView text) {
    Value_.replace(from, count, text);
    From_ = from + text.size();
    Selected_ = 0;
}

std::size_t EditedText::Before(std::size_t place) const {
    if (place >= 2 && AreOne(Value_[place - 2], Value_[place - 1]))
        return place - 2;
    return place > 0 ? place - 1 : 0;
}

std::size_t EditedText::Behind(std::size_t place) const {
    if (place + 1 < Value_.size() && AreOne(Value_[place], Value_[place + 1]))
        return place + 2;
    return std::min(place + 1, Value_.size());
}

} // namespace backends::headless
