// SPDX-License-Identifier: MIT
// The text of a control that a person types into.
#pragma once

#include "src/text/text.h"

namespace backends::headless {

class EditedText {
public:
    const Text& Contents() const { return Value; }
    /// Puts another text in; the caret stays where it is, as far as there is text, but never inside a character.
    void Set(const Text& text);
    /// What a person has put in the place of the old text, with the caret behind it. A text of one line takes line ends
    /// as blanks.
    void ReplaceAll(const Text& text, bool multiLine);
    /// The caret behind `position` characters, with the `length` characters selected that follow it.
    void Select(std::int32_t position, std::int32_t length);
    std::int32_t Caret() const { return static_cast<std::int32_t>(From); }

    /// A character as typed takes the place of what is selected. Character 8 deletes that, or the one before the caret;
    /// Enter begins a line in a text of several lines; any other control character does nothing.
    void Enter(TextView character, bool multiLine);
    void MoveCaret(std::int32_t step);

private:
    void Replace(std::size_t from, std::size_t count, TextView text);
    std::size_t Before(std::size_t place) const;
    std::size_t Behind(std::size_t place) const;

    Text Value;
    std::size_t From = 0;     ///< characters before the caret
    std::size_t Selected = 0; ///< characters selected from there on
};

} // namespace backends::headless
