// SPDX-License-Identifier: MIT
// Sets of places in a text, 64 of them a word. A place is told by the number of characters that are left from there to
// the text's end, itself among them: 1 for the last one, 0 for behind the end.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace modStringTools {

using PlaceBits = std::uint64_t;

constexpr std::size_t PlacesOfWord = 64;

inline std::size_t WordsFor(std::size_t length) {
    return length / PlacesOfWord + 1;
}

inline PlaceBits BitOf(std::size_t left) {
    return PlaceBits{1} << left % PlacesOfWord;
}

inline bool Has(const PlaceBits* places, std::size_t left) {
    return (places[left / PlacesOfWord] & BitOf(left)) != 0;
}

/// The word with each place moved to the one in front of it. `below` is the highest bit of the word below, shifted down
/// to the lowest, and becomes that of this one.
inline PlaceBits MovedForward(PlaceBits places, PlaceBits& below) {
    const PlaceBits moved = places << 1U | below;
    below = places >> (PlacesOfWord - 1);
    return moved;
}

/// Each place in `through` takes over whether the place behind it is in the set, however that came by it; any other
/// place keeps to `own`. An addition does that for all of a word: in a row of places to go through, a bit that is added
/// at the row's end makes each bit of the row carry to the next one. `below` is as above.
inline PlaceBits Spread(PlaceBits through, PlaceBits own, PlaceBits& below) {
    const PlaceBits kept = own & ~through;
    const PlaceBits entries = (kept << 1U | below) & through;
    const PlaceBits spread = kept | (through & ~(through + entries));
    below = spread >> (PlacesOfWord - 1);
    return spread;
}

/// The first place from `left` on, towards the text's end, that `outside(word)` has a bit for. The place behind the end
/// must be one.
template <typename Outside>
std::size_t FirstOutside(std::size_t left, Outside outside) {
    std::size_t word = left / PlacesOfWord;
    PlaceBits places = outside(word) & ((BitOf(left) << 1U) - 1);
    while (places == 0)
        places = outside(--word);
    return word * PlacesOfWord + static_cast<std::size_t>(std::bit_width(places)) - 1;
}

} // namespace modStringTools
