// SPDX-License-Identifier: MIT
// A pattern read against a text: what is found out for each place of it, and the room that this takes. Nothing but the
// matcher's own files and the tests need this.
#pragma once

#include "src/text/pattern_elements.h"
#include "src/text/place_sets.h"

namespace modStringTools {

/// Room for so many things, on the heap only where they are more than a few.
template <typename Thing, std::size_t Few>
class Room {
public:
    Room() = default;
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;

    Thing* Take(std::size_t count) {
        if (count <= Few)
            return Inside.data();
        Outside.resize(count);
        return Outside.data();
    }

private:
    std::array<Thing, Few> Inside; // with whatever is there
    std::vector<Thing> Outside;
};

/// What becomes of an attempt to match: it ran into the text's end, it holds, or an element refused a character.
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

/// A pattern read against a text. Made by ReadPattern, good for any number of searches in the same text.
struct PatternReading {
    explicit PatternReading(bool caseSensitive) { Elements.CaseSensitive = caseSensitive; }

    bool Hopeless = false;   ///< no place is left where a match might begin
    TextView Searched;       ///< the text from the first place on at which a match may begin
    std::size_t Offset = 0;  ///< characters in front of it
    std::size_t Words = 0;   ///< of a set of places
    std::size_t Digits = 0;  ///< binary digits of an outcome that are kept; those from the third on only tell refusers
    std::size_t Count = 0;   ///< of elements and `+` signs
    std::size_t InFront = 0; ///< `+` signs at the pattern's very front
    std::size_t FrontFrom = 1; ///< those of them that make a difference
    std::size_t FrontTo = 0;
    Vocabulary Elements;

    Element* Pattern = nullptr;
    PlaceBits* Matching = nullptr; ///< a set for each element: where it matches
    PlaceBits* Outcomes = nullptr; ///< a set for each digit: of an attempt that has come, begun, to the element at hand
    PlaceBits* Rests = nullptr;    ///< a set for each `+`: where a match of what stands behind it begins further on
    PlaceBits* Making = nullptr;   ///< such sets for the reading to come; the same as Rests where these are free

    Room<Element, 32> ElementRoom;
    Room<PlaceBits, 96> SetRoom;

    bool RestsAreFree() const { return Making == Rests; } ///< of anchors of their own
    std::size_t Length() const { return Searched.size(); }
    Element At(std::size_t number) const { return Pattern[number - 1]; } ///< elements are numbered from 1
    const PlaceBits* MatchingOf(Element element) const { return Matching + static_cast<std::size_t>(element) * Words; }
    PlaceBits* OutcomeDigit(std::size_t digit) const { return Outcomes + digit * Words; }
    /// The set of the `+` with this number, out of Rests or Making. Nothing is said of a `+` at the pattern's end.
    PlaceBits* RestIn(PlaceBits* sets, std::size_t number) const {
        return sets + static_cast<std::size_t>(-1 - At(number)) * Words;
    }
};

} // namespace modStringTools
