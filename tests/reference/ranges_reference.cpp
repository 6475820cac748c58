// SPDX-License-Identifier: MIT
#include "tests/reference/ranges_reference.h"

namespace reference {

namespace {

std::int32_t Length(const Text& text) {
    return static_cast<std::int32_t>(text.size());
}

void Clamp(const Text& text, std::int32_t& first, std::int32_t& last) {
    if (last > Length(text))
        last = Length(text);
    if (first < 1)
        first = 1;
    if (first > last)
        first = last;
}

/// Returns the position of the first `wanted` from position `from` on; 0 if there is none.
std::int32_t Search(const Text& text, std::int32_t from, const Text& wanted) {
    for (std::int32_t position = from; position + Length(wanted) - 1 <= Length(text); ++position)
        if (TextFrom(text, position, Length(wanted)) == wanted)
            return position;
    return 0;
}

} // namespace

Text TextFrom(const Text& text, std::int32_t from, std::int32_t count) {
    if (from > Length(text))
        return {};
    return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

void RemoveRange(Text& text, std::int32_t& first, std::int32_t& last) {
    Clamp(text, first, last);
    text = TextFrom(text, 1, first - 1) + TextFrom(text, last + 1, Length(text));
}

void ReplaceRange(Text& text, const Text& replacement, std::int32_t& first, std::int32_t& last) {
    if (replacement.empty()) {
        RemoveRange(text, first, last);
        return;
    }
    Clamp(text, first, last);
    const std::int32_t range = last - first + 1;
    const std::int32_t wanted = Length(replacement);
    if (range > wanted) {
        std::int32_t from = first;
        std::int32_t to = first + (range - wanted) - 1;
        RemoveRange(text, from, to);
    } else if (range < wanted) {
        std::int32_t at = first;
        InsertText(text, Text(static_cast<std::size_t>(wanted - range), u' '), at);
    }
    for (std::int32_t i = 0; i < wanted; ++i)
        text.at(static_cast<std::size_t>(first - 1 + i)) = replacement.at(static_cast<std::size_t>(i));
}

void InsertText(Text& text, const Text& inserted, std::int32_t& position) {
    if (position < 1)
        position = 1;
    if (position <= Length(text))
        text = TextFrom(text, 1, position - 1) + inserted + TextFrom(text, position, Length(text));
    else
        text = text + inserted;
}

Text TextRange(const Text& text, std::int32_t first, std::int32_t last) {
    if (last > Length(text))
        last = Length(text);
    if (first < 1)
        first = 1;
    if (last < first)
        last = first;
    return TextFrom(text, first, last - first + 1);
}

std::int32_t GetToken(const Text& text, const Text& delimiter, std::int32_t index, Text& token) {
    token.clear();
    std::int32_t end = Search(text, 1, delimiter);
    if (end == 0)
        return 0;
    std::int32_t start = 1;
    std::int32_t count = 0;
    for (;;) {
        ++count;
        if (count == index)
            token = TextFrom(text, start, end - start);
        start = end + 1;
        if (start > Length(text))
            return count;
        end = Search(text, start, delimiter);
        if (end == 0)
            end = Length(text) + 1;
    }
}

} // namespace reference
