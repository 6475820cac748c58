// SPDX-License-Identifier: MIT
// The text of a control into which the user types.
#pragma once

#include "src/text/text.h"

namespace backends::headless {

class EditedText {
public:
    const Text& Contents() const { return Value_; }
    /// Sets another text. The caret stays where it is, as far as there is text, but never inside a character.
    void Set(const Text& text);
    /// Replaces the old text by the user's, with the caret after it. In a text of one line, line ends become blanks.
    void ReplaceAll(const Text& text, bool multiLine);
    /// Puts the caret after `position` characters and selects the next `length` characters.
    void Select(std::int32_t position, std::int32_t length);
    std::int32_t Caret() const { return static_cast<std::int32_t>(From_); }
    std::int32_t SelectedLength() const { return static_cast<std::int32_t>(Selected_); }

    /// Enters a typed character in place of the selection. Character 8 deletes the selection, or the character before
    /// the caret; Enter begins a line in a text of several lines; any other control character does nothing.
    void Enter(TextView character, bool multiLine);
    void MoveCaret(std::int32_t step);

private:
    void Replace(std::size_t from, std::size_t count, TextView text);
    std::size_t Before(std::size_t place) const;
    std::size_t Behind(std::size_t place) const;

    Text Value_;
    std::size_t From_ = 0;     ///< characters before the caret
    std::size_t Selected_ = 0; ///< characters selected from there on
};

} // namespace backends::headless
