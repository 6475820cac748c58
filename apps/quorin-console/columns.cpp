// SPDX-License-Identifier: MIT
#include "apps/quorin-console/columns.h"

#include "src/text/characters.h"

#include <algorithm>

namespace console {

using modStringTools::Character;
using modStringTools::FirstCharacter;

namespace {

struct Range {
    char32_t First, Last;
};

/// The characters that a terminal draws two columns wide: East Asian characters and pictures.
constexpr Range Wide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},
                          {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
                          {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
/// The characters that are drawn over the one before.
constexpr Range Over[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};

template <std::size_t Count>
bool IsIn(const Range (&ranges)[Count], char32_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [character](const Range& range) { return character >= range.First && character <= range.Last; });
}

std::size_t WidthOf(char32_t character) {
    if (IsIn(Over, character))
        return 0;
    return IsIn(Wide, character) ? 2 : 1;
}

} // namespace

std::size_t ColumnsOf(TextView text) {
    std::size_t columns = 0;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        columns += WidthOf(character.Code);
        text.remove_prefix(character.Length);
    }
    return columns;
}

TextView HeadOf(TextView text, std::size_t columns) {
    std::size_t length = 0;
    std::size_t used = 0;
    while (length < text.size()) {
        const Character character = FirstCharacter(text.substr(length));
        used += WidthOf(character.Code);
        if (used > columns)
            break;
        length += character.Length;
    }
    return text.substr(0, length);
}

TextView TailOf(TextView text, std::size_t columns) {
    while (ColumnsOf(text) > columns)
        text.remove_prefix(FirstCharacter(text).Length);
    return text;
}

Text Fitted(const Text& text, std::size_t columns) {
    if (columns == 0)
        return {};
    Text fitted = text;
    if (ColumnsOf(text) > columns)
        fitted = Text(HeadOf(text, columns - 1)) + u'…';
    const std::size_t used = ColumnsOf(fitted);
    return fitted + Text(columns - std::min(used, columns), u' ');
}

Text Centred(const Text& text, std::size_t columns) {
    const std::size_t used = std::min(ColumnsOf(text), columns);
    return Fitted(Text((columns - used) / 2, u' ') + text, columns);
}

Text WithoutControls(Text text) {
    std::replace_if(
        text.begin(), text.end(), [](char16_t unit) { return unit < u' ' || (unit >= 0x7F && unit < 0xA0); }, u' ');
    return text;
}

std::vector<Text> Wrapped(const Text& text, std::size_t columns) {
    std::vector<Text> lines;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n", start), text.size());
        Text rest = WithoutControls(text.substr(start, end - start));
        while (ColumnsOf(rest) > columns) {
            const std::size_t most = std::max<std::size_t>(HeadOf(rest, columns).size(), FirstCharacter(rest).Length);
            const std::size_t blank = rest.rfind(u' ', most);
            const std::size_t cut = blank == Text::npos || blank == 0 ? most : blank;
            lines.push_back(rest.substr(0, cut));
            rest.erase(0, cut < rest.size() && rest[cut] == u' ' ? cut + 1 : cut);
        }
        lines.push_back(rest);
        start = end + (text.compare(end, 2, u"\r\n") == 0 ? 2 : 1);
    }
    return lines;
}

} // namespace console
