// SPDX-License-Identifier: MIT
#include "src/text/text.h"

#include "src/text/characters.h"
#include "src/text/utf8.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <type_traits>

namespace modStringTools {

namespace {

/// Characters `First` to `Last`, every `Step`th of them, map to themselves plus `Added`.
struct CaseRun {
    char16_t First;
    char16_t Last;
    std::int32_t Step;
    std::int32_t Added;
};

#include "src/text/case_table.inc"

template <std::size_t Count>
char16_t Mapped(const CaseRun (&runs)[Count], char16_t character) {
    const CaseRun* run = std::lower_bound(std::begin(runs), std::end(runs), character,
                                          [](const CaseRun& each, char16_t wanted) { return each.Last < wanted; });
    if (run == std::end(runs) || character < run->First || (character - run->First) % run->Step != 0)
        return character;
    return static_cast<char16_t>(character + run->Added);
}

/// Returns the number of ASCII characters at the start of a text or of bytes. It checks eight bytes at a time, because
/// nearly everything that is read and written is ASCII.
template <typename Character>
std::size_t AsciiLength(std::basic_string_view<Character> text, std::uint64_t beyondAscii) {
    constexpr std::size_t Step = sizeof(std::uint64_t) / sizeof(Character);
    std::size_t length = 0;
    for (; length + Step <= text.size(); length += Step) {
        std::uint64_t block = 0;
        std::memcpy(&block, text.data() + length, sizeof block);
        if ((block & beyondAscii) != 0)
            break;
    }
    while (length < text.size() && static_cast<std::make_unsigned_t<Character>>(text[length]) < FirstBeyondAscii)
        ++length;
    return length;
}

/// Appends the ASCII characters at the start of `from`. Returns their number.
std::size_t AppendAscii(Text& text, std::string_view from) {
    const std::size_t length = AsciiLength(from, 0x8080808080808080U);
    const std::size_t before = text.size();
    text.resize(before + length);
    std::copy_n(from.data(), length, text.data() + before);
    return length;
}

std::size_t AppendAscii(std::string& bytes, TextView from) {
    const std::size_t length = AsciiLength(from, 0xFF80FF80FF80FF80U);
    const std::size_t before = bytes.size();
    bytes.resize(before + length);
    std::transform(from.data(), from.data() + length, bytes.data() + before,
                   [](char16_t character) { return static_cast<char>(character); });
    return length;
}

TextView WithoutBlanks(TextView text) {
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == TextView::npos)
        return {};
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

} // namespace

char16_t LowerCharBeyondAscii(char16_t character) {
    return Mapped(ToLower, character);
}

char16_t UpperChar(char16_t character) {
    if (character < FirstBeyondAscii)
        return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - 0x20) : character;
    return Mapped(ToUpper, character);
}

bool HasCases(char16_t character) {
    return character >= FirstBeyondAscii || LowerChar(character) != UpperChar(character);
}

Text LowerCase(TextView text) {
    Text lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerChar);
    return lower;
}

Text UpperCase(TextView text) {
    Text upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperChar);
    return upper;
}

bool SameIgnoringCase(TextView a, TextView b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return x == y || LowerChar(x) == LowerChar(y); });
}

Text NumberText(std::int64_t number) {
    char16_t characters[20]; // "-9223372036854775808"
    char16_t* const end = characters + std::size(characters);
    char16_t* first = end;
    const auto bits = static_cast<std::uint64_t>(number);
    for (std::uint64_t left = number < 0 ? 0 - bits : bits; left != 0 || first == end; left /= 10)
        *--first = static_cast<char16_t>(u'0' + left % 10);
    if (number < 0)
        *--first = u'-';
    return Text(first, end);
}

std::optional<std::int32_t> NumberFromText(TextView text) {
    TextView digits = WithoutBlanks(text);
    const bool negative = !digits.empty() && digits.front() == u'-';
    if (!digits.empty() && (negative || digits.front() == u'+'))
        digits.remove_prefix(1);
    if (digits.empty())
        return std::nullopt;
    constexpr std::int64_t Limit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    std::int64_t value = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        value = value * 10 + (digit - u'0');
        if (value > Limit)
            return std::nullopt;
    }
    if (value == Limit && !negative)
        return std::nullopt;
    return static_cast<std::int32_t>(negative ? -value : value);
}

void BlankNuls(Text& text) {
    std::replace(text.begin(), text.end(), u'\0', u' ');
}

std::string ToBytes(TextView text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        text.remove_prefix(AppendAscii(bytes, text));
        std::size_t taken = 0;
        while (taken < text.size() && text[taken] >= FirstBeyondAscii) {
            const Character character = FirstCharacter(text.substr(taken));
            taken += character.Length;
            if (character.Code >= FirstRawByte && character.Code <= LastRawByte)
                bytes += static_cast<char>(character.Code - RawByteBase);
            else
                AppendUtf8(bytes, character.Code);
        }
        text.remove_prefix(taken);
    }
    return bytes;
}

Text FromBytes(std::string_view bytes) {
    Text text;
    AppendBytes(text, bytes);
    return text;
}

void AppendBytes(Text& text, std::string_view bytes) {
    text.reserve(text.size() + bytes.size());
    while (!bytes.empty()) {
        bytes.remove_prefix(AppendAscii(text, bytes));
        while (!bytes.empty() && static_cast<unsigned char>(bytes.front()) >= FirstBeyondAscii) {
            const Utf8Character sequence = FirstCharacter(bytes);
            if (sequence.Length == 0)
                text += static_cast<char16_t>(RawByteBase + static_cast<unsigned char>(bytes.front()));
            else
                AppendCharacter(text, sequence.Code);
            bytes.remove_prefix(std::max<std::size_t>(sequence.Length, 1));
        }
    }
}

} // namespace modStringTools
