// SPDX-License-Identifier: MIT
#include "src/text/windows_1252.h"

#include "src/text/characters.h"

#include <array>

namespace modStringTools {

namespace {

/// The characters of the bytes 80 to 9F (hexadecimal); every other byte is the character of the same number.
constexpr std::array<char16_t, 32> From80To9F = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

} // namespace

char16_t FromWindows1252(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 && value <= 0x9F ? From80To9F[value - 0x80U] : char16_t{value};
}

void ReadRawBytesAsWindows1252(Text& text) {
    char16_t before = 0;
    for (char16_t& unit : text) {
        const char16_t own = unit;
        if (own >= FirstRawByte && own <= LastRawByte && !AreOneCharacter(before, own))
            unit = FromWindows1252(static_cast<char>(own - RawByteBase));
        before = own;
    }
}

} // namespace modStringTools
