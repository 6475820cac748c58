// SPDX-License-Identifier: MIT
// Ranges of a text by 1-based inclusive positions, and the token reader that takes lines and lists apart.
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// Removes the characters `first` to `last` of `text`. Both positions are clamped to the text, for the caller too:
/// `last` to the length, `first` to 1, and a `first` above `last` to `last`.
/// An empty text or a `last` below 1 is outside the contract; the text then stays as it is.
void RemoveRange(Text& text, std::int32_t& first, std::int32_t& last);

/// Puts `replacement` in the place of the characters `first` to `last`, clamped as RemoveRange does. `last` is not
/// brought up to date for a replacement of another length. An empty replacement removes the range.
void ReplaceRange(Text& text, TextView replacement, std::int32_t& first, std::int32_t& last);

/// Inserts in front of the character at `position` (clamped to 1 from below, for the caller too); a position behind
/// the end appends.
void InsertText(Text& text, TextView inserted, std::int32_t& position);

/// The characters `first` to `last`. `last` is clamped to the length, `first` to 1, and `last` is raised to `first`,
/// so that one character comes back at least as long as `first` lies inside the text.
Text TextRange(TextView text, std::int32_t first, std::int32_t last);

/// Reads token `index` (from 1) of a text whose tokens are ended, not parted, by `delimiter`, and gives the number of
/// tokens. A text without any delimiter has none at all; what stands behind the last delimiter is the last token.
/// `token` is empty for an index out of range. The search is exact, case counts.
std::int32_t GetToken(TextView text, TextView delimiter, std::int32_t index, Text& token);

} // namespace modStringTools
