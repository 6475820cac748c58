// SPDX-License-Identifier: MIT
#include "src/storage/row_line.h"

#include "src/text/characters.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace modFileSystem {

using modStringTools::Bar;

namespace {

/// Characters of a line that are searched for bars in one step: the number of bits of a word.
constexpr std::size_t LookedThroughAtOnce = 64;

/// Returns which of four characters are bars, in the lowest four bits.
std::uint64_t BarsAmongFour(const char16_t* characters) {
    constexpr std::uint64_t Each = 0x0001000100010001U; // a 1 for each of the four
    constexpr std::uint64_t LowBits = 0x7FFF * Each;
    const auto place = [characters](unsigned i) { return std::uint64_t{characters[i]} << 16U * i; };
    const std::uint64_t others = (place(0) | place(1) | place(2) | place(3)) ^ Bar * Each; // 0 for a bar
    const std::uint64_t bars = ~(((others & LowBits) + LowBits) | others | LowBits) >> 15U;
    return (bars * 0x0001000200040008U) >> 48U & 0xFU;
}

/// Returns which characters are bars; the lowest bit is for the first character. There is no branch at a bar: a row has
/// many, at places that branch prediction can't learn.
std::uint64_t FindBars(TextView characters) {
    const std::size_t count = std::min(characters.size(), LookedThroughAtOnce);
    std::uint64_t bars = 0;
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        bars |= BarsAmongFour(characters.data() + i) << i;
    for (; i < count; ++i)
        bars |= std::uint64_t{characters[i] == Bar} << i;
    return bars;
}

} // namespace

void Split(TextView line, std::vector<Text>& fields) {
    std::size_t count = 0;
    const auto add = [&fields, &count](TextView field) {
        if (count == fields.size())
            fields.emplace_back();
        Text& room = fields[count++];
        room.clear();
        room.append(field.data(), field.size());
    };
    std::size_t start = 0; // of the field
    for (std::size_t head = 0; head < line.size(); head += LookedThroughAtOnce) {
        for (std::uint64_t bars = FindBars(line.substr(head)); bars != 0; bars &= bars - 1) {
            const std::size_t bar = head + static_cast<std::size_t>(std::countr_zero(bars));
            add(line.substr(start, bar - start));
            start = bar + 1;
        }
    }
    add(line.substr(start));
    fields.resize(count);
}

Text Join(const std::vector<Text>& fields) {
    Text line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += Bar;
        line += fields[i];
    }
    return line;
}

} // namespace modFileSystem
