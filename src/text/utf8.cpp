// SPDX-License-Identifier: MIT
#include "src/text/utf8.h"

#include "src/text/characters.h"

namespace modStringTools {

namespace {

/// Returns the number of bytes that a lead byte announces, and the smallest code that may be written with so many.
Utf8Character Announced(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF)
        return {2, 0x80};
    if (lead >= 0xE0 && lead <= 0xEF)
        return {3, 0x800};
    if (lead >= 0xF0 && lead <= 0xF4)
        return {4, 0x10000};
    return {};
}

} // namespace

Utf8Character FirstCharacter(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (lead < 0x80)
        return {1, lead};
    const Utf8Character announced = Announced(lead);
    if (announced.Length == 0 || announced.Length > bytes.size())
        return {};
    char32_t code = lead & (0x7FU >> announced.Length);
    for (std::size_t i = 1; i < announced.Length; ++i) {
        const auto tail = static_cast<unsigned char>(bytes[i]);
        if ((tail & 0xC0U) != 0x80U)
            return {};
        code = code << 6U | (tail & 0x3FU);
    }
    const bool surrogate = IsHighHalf(code) || IsLowHalf(code);
    if (code < announced.Code || code > 0x10FFFF || surrogate)
        return {};
    return {announced.Length, code};
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = FirstCharacter(bytes).Length;
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

void AppendUtf8(std::string& bytes, char32_t code) {
    const auto tail = [&bytes](char32_t bits) { bytes += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (code < 0x80) {
        bytes += static_cast<char>(code);
    } else if (code < 0x800) {
        bytes += static_cast<char>(0xC0U | code >> 6U);
        tail(code);
    } else if (code < 0x10000) {
        bytes += static_cast<char>(0xE0U | code >> 12U);
        tail(code >> 6U);
        tail(code);
    } else {
        bytes += static_cast<char>(0xF0U | code >> 18U);
        tail(code >> 12U);
        tail(code >> 6U);
        tail(code);
    }
}

} // namespace modStringTools
