// SPDX-License-Identifier: MIT
#include "src/text/ranges.h"

#include <algorithm>

namespace modStringTools {

namespace {

std::int32_t Length(TextView text) {
    return static_cast<std::int32_t>(text.size());
}

/// Clamps a range to the text. False if the range is empty then.
bool Clamp(TextView text, std::int32_t& first, std::int32_t& last) {
    last = std::min(last, Length(text));
    first = std::min(std::max(first, 1), last);
    return first >= 1;
}

} // namespace

void RemoveRange(Text& text, std::int32_t& first, std::int32_t& last) {
    if (Clamp(text, first, last))
        text.erase(static_cast<std::size_t>(first) - 1, static_cast<std::size_t>(last - first) + 1);
}

void ReplaceRange(Text& text, TextView replacement, std::int32_t& first, std::int32_t& last) {
    if (Clamp(text, first, last))
        text.replace(static_cast<std::size_t>(first) - 1, static_cast<std::size_t>(last - first) + 1, replacement);
}

void InsertText(Text& text, TextView inserted, std::int32_t& position) {
    position = std::max(position, 1);
    text.insert(std::min(static_cast<std::size_t>(position) - 1, text.size()), inserted);
}

Text TextRange(TextView text, std::int32_t first, std::int32_t last) {
    last = std::min(last, Length(text));
    first = std::max(first, 1);
    last = std::max(last, first);
    if (first > Length(text))
        return {};
    return Text(text.substr(static_cast<std::size_t>(first) - 1, static_cast<std::size_t>(last - first) + 1));
}

std::int32_t GetToken(TextView text, TextView delimiter, std::int32_t index, Text& token) {
    token.clear();
    std::size_t end = text.find(delimiter);
    if (delimiter.empty() || end == TextView::npos)
        return 0; // no delimiter ends a token: "abc" has no tokens
    std::size_t start = 0;
    std::int32_t count = 0;
    while (start < text.size()) {
        ++count;
        if (count == index)
            token = text.substr(start, end - start);
        start = end + 1; // skips one character: the rest of a longer delimiter begins the next token
        end = std::min(text.find(delimiter, start), text.size());
    }
    return count;
}

} // namespace modStringTools
