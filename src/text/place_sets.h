// SPDX-License-Identifier: MIT
// Sets of places in a text, 64 places a word. A place is numbered by the characters left from there to the end of the
// text, its own character included: 1 for the last character, 0 for the place after the end.
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

/// Returns the word with each place replaced by the one before it. `below` is the highest bit of the word below as bit
/// 0, and is set to the highest bit of this word.
inline PlaceBits MovedForward(PlaceBits places, PlaceBits& below) {
    const PlaceBits moved = places << 1U | below;
    below = places >> (PlacesOfWord - 1);
    return moved;
}

/// Returns a set: a place of `through` is in it if the place after it is, and any other place is in it if it is in
/// `own`. An addition does this for a whole word: a bit added at the low end of a row of 1 bits carries through the
/// whole row. `below` is as above.
inline PlaceBits Spread(PlaceBits through, PlaceBits own, PlaceBits& below) {
    const PlaceBits kept = own & ~through;
    const PlaceBits entries = (kept << 1U | below) & through;
    const PlaceBits spread = kept | (through & ~(through + entries));
    below = spread >> (PlacesOfWord - 1);
    return spread;
}

/// Returns the first place from `left` on, towards the end of the text, that has a bit in `outside(word)`. REQUIRES:
/// the place after the end has one.
template <typename Outside>
std::size_t FirstOutside(std::size_t left, Outside outside) {
    std::size_t word = left / PlacesOfWord;
    PlaceBits places = outside(word) & ((BitOf(left) << 1U) - 1);
    while (places == 0)
        places = outside(--word);
    return word * PlacesOfWord + static_cast<std::size_t>(std::bit_width(places)) - 1;
}

} // namespace modStringTools
