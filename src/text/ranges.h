// SPDX-License-Identifier: MIT
// Ranges of a text by 1-based inclusive positions, and the token reader that splits lines and lists.
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// Removes the characters `first` to `last` of `text`. Both positions are clamped to the text, in the caller's
/// variables too: `last` to the length, `first` to 1, and a `first` above `last` to `last`.
/// REQUIRES: the text is not empty and `last` is at least 1. Otherwise the text is not changed.
void RemoveRange(Text& text, std::int32_t& first, std::int32_t& last);

/// Replaces the characters `first` to `last`, clamped as in RemoveRange, with `replacement`. `last` is not adjusted to
/// a replacement of another length. An empty replacement removes the range.
void ReplaceRange(Text& text, TextView replacement, std::int32_t& first, std::int32_t& last);

/// Inserts before the character at `position`. A position below 1 is set to 1, in the caller's variable too; one after
/// the end appends.
void InsertText(Text& text, TextView inserted, std::int32_t& position);

/// Returns the characters `first` to `last`. `last` is clamped to the length, `first` to 1, and then `last` is raised
/// to `first`, so that at least one character is returned if `first` is inside the text.
Text TextRange(TextView text, std::int32_t first, std::int32_t last);

/// Reads token `index` (from 1) of a text in which `delimiter` ends each token. Returns the number of tokens. A text
/// without a delimiter has no tokens; text after the last delimiter is the last token. `token` is empty for an index
/// out of range. The delimiter is compared with case.
std::int32_t GetToken(TextView text, TextView delimiter, std::int32_t index, Text& token);

} // namespace modStringTools
