// SPDX-License-Identifier: MIT
#include "backends/port/serial_text.h"

#include "src/text/characters.h"
#include "src/text/windows_1252.h"

namespace backends {

namespace {

enum class Sequence { Whole, Cut, Invalid };

struct Character {
    Sequence State = Sequence::Invalid;
    std::size_t Length = 0;
    char32_t Value = 0;
};

/// What the first byte of a UTF-8 sequence says about the bytes after it. The range of the second byte excludes
/// overlong forms, surrogates and values above the last character.
struct Lead {
    std::size_t Length = 0; ///< 0 if it can't be a first byte
    unsigned char SecondFrom = 0x80;
    unsigned char SecondTo = 0xBF;
};

Lead LeadOf(unsigned char first) {
    if (first < 0x80)
        return {1};
    if (first >= 0xC2 && first <= 0xDF)
        return {2};
    if (first >= 0xE0 && first <= 0xEF)
        return {3, static_cast<unsigned char>(first == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(first == 0xED ? 0x9F : 0xBF)};
    if (first >= 0xF0 && first <= 0xF4)
        return {4, static_cast<unsigned char>(first == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(first == 0xF4 ? 0x8F : 0xBF)};
    return {};
}

Character NextCharacter(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes.front());
    const Lead lead = LeadOf(first);
    if (lead.Length == 0)
        return {};
    char32_t value = lead.Length == 1 ? first : first & (0x7FU >> lead.Length);
    for (std::size_t i = 1; i < lead.Length; ++i) {
        if (i == bytes.size())
            return {Sequence::Cut, 0, 0};
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const bool fits = i == 1 ? byte >= lead.SecondFrom && byte <= lead.SecondTo : (byte & 0xC0U) == 0x80U;
        if (!fits)
            return {};
        value = (value << 6U) | (byte & 0x3FU);
    }
    return {Sequence::Whole, lead.Length, value};
}

} // namespace

Text SerialText::Decode(std::string_view bytes) {
    Waiting_ += bytes;
    std::string_view rest = Waiting_;
    Text text;
    while (!rest.empty()) {
        const Character next = NextCharacter(rest);
        if (next.State == Sequence::Cut)
            break;
        if (next.State == Sequence::Whole)
            modStringTools::AppendCharacter(text, next.Value);
        else
            text += modStringTools::FromWindows1252(rest.front());
        rest.remove_prefix(next.State == Sequence::Whole ? next.Length : 1);
    }
    Waiting_.erase(0, Waiting_.size() - rest.size());
    modStringTools::BlankNuls(text); // a break on the line is read as a NUL
    return text;
}

} // namespace backends
