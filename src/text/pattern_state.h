// SPDX-License-Identifier: MIT
// A pattern read against a text: the results for each place of the text, and their memory. For the files of the matcher
// and the tests only.
#pragma once

#include "src/text/pattern_elements.h"
#include "src/text/place_sets.h"

namespace modStringTools {

/// An array that is on the heap only if it has more than `Few` things.
template <typename Thing, std::size_t Few>
class Room {
public:
    Room() = default;
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;

    Thing* Take(std::size_t count) {
        if (count <= Few)
            return Inside_.data();
        Outside_.resize(count);
        return Outside_.data();
    }

private:
    std::array<Thing, Few> Inside_; // not initialised
    std::vector<Thing> Outside_;
};

/// The outcome of an attempt to match: it ran into the end of the text, it holds, or an element refused a character.
using Outcome = std::uint32_t;
constexpr Outcome RanOut = 0;
constexpr Outcome Holds = 1;

inline Outcome RefusedBy(Element element) {
    return static_cast<Outcome>(element) << 2U | 2U;
}

inline bool IsRefusal(Outcome outcome) {
    return (outcome & 2U) != 0;
}

inline Element RefuserOf(Outcome outcome) {
    return static_cast<Element>(outcome >> 2U);
}

/// A pattern read against a text. ReadPattern fills it; it serves any number of searches in the same text.
struct PatternReading {
    explicit PatternReading(bool caseSensitive) { Elements.CaseSensitive = caseSensitive; }

    bool Hopeless = false;     ///< there is no place where a match may begin
    TextView Searched;         ///< the text from the first place where a match may begin
    std::size_t Offset = 0;    ///< characters before it
    std::size_t Words = 0;     ///< of a set of places
    std::size_t Digits = 0;    ///< binary digits kept of an outcome; those from the third on are the refusing element
    std::size_t Count = 0;     ///< of elements and `+` signs
    std::size_t InFront = 0;   ///< `+` signs at the start of the pattern
    std::size_t FrontFrom = 1; ///< first and last of those that make a difference
    std::size_t FrontTo = 0;
    Vocabulary Elements;

    Element* Pattern = nullptr;
    PlaceBits* Matching = nullptr; ///< a set for each element: where it matches
    PlaceBits* Outcomes =
        nullptr; ///< a set for each digit: the outcome of an attempt that has begun and has reached the current element
    PlaceBits* Rests = nullptr;  ///< a set for each `+`: the places after which a match of the pattern's rest begins
    PlaceBits* Making = nullptr; ///< the same sets for the next reading; equal to Rests if rests have no anchors

    Room<Element, 32> ElementRoom;
    Room<PlaceBits, 96> SetRoom;

    bool RestsAreFree() const { return Making == Rests; } ///< true if rests have no anchors of their own
    std::size_t Length() const { return Searched.size(); }
    Element At(std::size_t number) const { return Pattern[number - 1]; } ///< elements are numbered from 1
    const PlaceBits* MatchingOf(Element element) const { return Matching + static_cast<std::size_t>(element) * Words; }
    PlaceBits* OutcomeDigit(std::size_t digit) const { return Outcomes + digit * Words; }
    /// Returns the set of the `+` with this number in Rests or Making. The set of a `+` at the end of the pattern is
    /// meaningless.
    PlaceBits* RestIn(PlaceBits* sets, std::size_t number) const {
        return sets + static_cast<std::size_t>(-1 - At(number)) * Words;
    }
};

} // namespace modStringTools
