// SPDX-License-Identifier: MIT
// A journal for others to read: what people typed, measured values and names are made unreadable.
#pragma once

#include "journal/journal_format.h"

#include <map>
#include <string>
#include <string_view>

namespace journal {

/// Returns a text of the same shape: each letter is an x, each digit a 0. Blanks and signs stay.
std::string Masked(std::string_view utf8);

/// What an instrument sends, whose tags, result types and units stay. A record may come in parts.
class RecordMask {
public:
    std::string Masked(std::string_view part);

private:
    enum class State { LineStart, Tag, Kept, Hidden };
    void BeginLine(char each);
    void TakeTag(char each);

    State State_ = State::LineStart;
    std::string Tag_; ///< so far, in capitals
};

/// Masks the lines of one session, in their order. Times, events and the numbers of cells and menus stay; whatever is
/// not known to be harmless is masked.
class Masking {
public:
    Line Masked(const Line& line);

private:
    std::string Part(const Line& line, const std::string& name, const std::string& text);

    std::map<std::string, RecordMask> Records_; ///< by where the text came from
};

} // namespace journal
