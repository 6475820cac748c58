// SPDX-License-Identifier: MIT
#include "journal/journal_format.h"

#include <algorithm>
#include <cstdint>

namespace journal {

namespace {

constexpr std::string_view Ending = ".jsonl";
constexpr std::string_view DayForm = "9999-99-99";
constexpr std::size_t KeyLength = 16;

bool IsDay(std::string_view text) {
    return std::equal(text.begin(), text.end(), DayForm.begin(), DayForm.end(), [](char character, char form) {
        return form == '9' ? character >= '0' && character <= '9' : character == form;
    });
}

bool IsKey(std::string_view text) {
    return text.size() == KeyLength && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

} // namespace

std::string RootKey(std::string_view path) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char character : path)
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3U;
    std::string key;
    for (int shift = 60; shift >= 0; shift -= 4)
        key += "0123456789abcdef"[(hash >> static_cast<unsigned>(shift)) & 0xFU];
    return key;
}

std::string TextOf(const FileName& name) {
    return name.Day + "-" + name.Root + std::string(Ending);
}

std::optional<FileName> FileNameFrom(std::string_view text) {
    if (text.size() != DayForm.size() + 1 + KeyLength + Ending.size())
        return std::nullopt;
    const std::string_view day = text.substr(0, DayForm.size());
    const std::string_view key = text.substr(DayForm.size() + 1, KeyLength);
    if (!IsDay(day) || text[DayForm.size()] != '-' || !IsKey(key) || !text.ends_with(Ending))
        return std::nullopt;
    return FileName{std::string(day), std::string(key)};
}

std::string TextOfBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        if (byte >= 0x80)
            text += static_cast<char>(0xC0U | (byte >> 6U));
        text += static_cast<char>(byte >= 0x80 ? 0x80U | (byte & 0x3FU) : byte);
    }
    return text;
}

std::optional<std::string> BytesOfText(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80) {
            bytes += text[i];
            continue;
        }
        if ((byte != 0xC2 && byte != 0xC3) || i + 1 == text.size())
            return std::nullopt;
        const auto next = static_cast<unsigned char>(text[++i]);
        if ((next & 0xC0U) != 0x80U)
            return std::nullopt;
        bytes += static_cast<char>(((byte & 0x03U) << 6U) | (next & 0x3FU));
    }
    return bytes;
}

} // namespace journal
