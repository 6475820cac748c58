// SPDX-License-Identifier: MIT
#include "src/text/pattern_attempts.h"

#include <algorithm>
#include <functional>

// A search whose pattern does not begin with a `+` has one outcome for each place, and goes on after each refusal: it
// succeeds from a place if the first outcome from there on that is not a refusal holds.
//
// With a `+` at the start (13) an attempt depends on the element that was read last, the one that refused the attempt
// before. That element makes a difference only where it matches the current character and the `+` may go on there.
// Places with such a refusal before them are computed one by one; all others are still computed by the word.
//
// If rests have no anchors of their own, no more needs to be computed for such a place: once the `+` has gone on, the
// search succeeds. Proof: the `+` goes on as far as the search for its rest succeeds from the next place. The attempt
// that begins where it stops does not run out of text, or that search would have failed there; if it is refused, the
// next attempt also begins at a place from which the search succeeds. This continues until one holds, because no search
// succeeds at the end of the text. For the same reason each `+` at the start finds at least what the next one finds,
// goes on at least as far, and leaves nothing to it.

namespace modStringTools {

namespace {

/// The row of `+` signs, first to last, at the start of a pattern or of a rest.
struct Front {
    std::size_t From = 0;
    std::size_t To = 0;
};

Outcome OutcomeAt(const PatternReading& reading, std::size_t left) {
    const PlaceBits* digits = reading.Outcomes + left / PlacesOfWord;
    const std::size_t bit = left % PlacesOfWord;
    PlaceBits outcome = 0;
    for (std::size_t digit = 0; digit < reading.Digits; ++digit, digits += reading.Words)
        outcome |= (*digits >> bit & 1U) << digit;
    return static_cast<Outcome>(outcome);
}

/// Returns the place at which an attempt from `left` on, with `readLast` to be repeated, reaches the element after the
/// front. If it is another place than `left`, a match has begun.
std::size_t BehindFront(const PatternReading& reading, const Front& front, Element readLast, std::size_t left) {
    const PlaceBits* matching = reading.MatchingOf(readLast);
    if (readLast == NoElement || !Has(matching, left))
        return left;
    for (std::size_t number = front.From; number <= front.To; ++number) {
        const PlaceBits* rest = reading.RestIn(reading.Rests, number);
        if (Has(rest, left))
            left = FirstOutside(left, [&](std::size_t word) { return ~(matching[word] & rest[word]); });
    }
    return left;
}

/// The known results of a search with `+` signs at its start, computed from the end of the text to its beginning.
struct FrontSearch {
    const PatternReading& Reading;
    Front Signs;
    std::vector<PlaceBits> Found; ///< places from which it succeeds if no element was read before
    // For each place and each class of elements. All single characters are one class: only one of them matches at a
    // place.
    std::vector<std::uint8_t> Known; ///< the result is known for an element of this class read last
    std::vector<std::uint8_t> Finds; ///< that result
    std::vector<std::uint8_t> Trail; ///< the class being computed
};

std::uint8_t ClassBit(Element element) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(std::min(element, FirstSingle) - AnyCharacter));
}

/// True if the search succeeds from `left` on after `readLast` refused the attempt before. The results of all attempts
/// on the way are kept, so that a search makes only a few attempts for each place.
bool FindsAfter(FrontSearch& search, std::size_t left, Element readLast) {
    std::size_t at = left;
    bool finds = false;
    for (;;) {
        const std::size_t behind = BehindFront(search.Reading, search.Signs, readLast, at);
        if (behind == at) {
            finds = Has(search.Found.data(), at);
            break;
        }
        const std::uint8_t bit = ClassBit(readLast);
        if ((search.Known[at] & bit) != 0) {
            finds = (search.Finds[at] & bit) != 0;
            break;
        }
        search.Trail[at--] = bit;
        const Outcome outcome = OutcomeAt(search.Reading, behind);
        if (!IsRefusal(outcome)) {
            finds = outcome == Holds;
            break;
        }
        readLast = RefuserOf(outcome);
    }
    for (; left > at; --left) {
        search.Known[left] |= search.Trail[left];
        if (finds)
            search.Finds[left] |= search.Trail[left];
    }
    return finds;
}

/// Returns the places that are computed one by one: an attempt has begun there and was refused, and a `+` may go on
/// after it.
std::vector<PlaceBits> PlacesToAsk(const PatternReading& reading, const Front& signs) {
    std::vector<PlaceBits> asked(reading.Words, 0);
    for (std::size_t number = signs.From; number <= signs.To; ++number)
        std::transform(asked.begin(), asked.end(), reading.RestIn(reading.Rests, number), asked.begin(),
                       std::bit_or<PlaceBits>());
    const PlaceBits* begun = reading.MatchingOf(reading.At(signs.To + 1));
    const PlaceBits* refused = reading.OutcomeDigit(1);
    PlaceBits below = 0;
    for (std::size_t word = 0; word < asked.size(); ++word)
        asked[word] = MovedForward(asked[word], below) & begun[word] & refused[word];
    return asked;
}

std::size_t LowestOf(PlaceBits places, std::size_t word) {
    return word * PlacesOfWord + static_cast<std::size_t>(std::countr_zero(places));
}

void SearchBehindFront(FrontSearch& search) {
    const PatternReading& reading = search.Reading;
    const std::vector<PlaceBits> asked = PlacesToAsk(reading, search.Signs);
    PlaceBits below = 0;
    for (std::size_t word = 0; word < asked.size(); ++word) {
        const PlaceBits refused = reading.OutcomeDigit(1)[word] & ~asked[word];
        PlaceBits found = reading.OutcomeDigit(0)[word];
        for (PlaceBits toAsk = asked[word]; toAsk != 0; toAsk &= toAsk - 1) {
            PlaceBits belowWord = below;
            search.Found[word] = Spread(refused, found, belowWord);
            const std::size_t left = LowestOf(toAsk, word);
            if (FindsAfter(search, left - 1, RefuserOf(OutcomeAt(reading, left))))
                found |= BitOf(left);
        }
        search.Found[word] = Spread(refused, found, below);
    }
}

/// Fills the set of the `+` at `number`, whose rest begins with a `+` and has no anchors.
void MakeFreeRest(const PatternReading& reading, std::size_t number, std::size_t to, PlaceBits* rest) {
    const PlaceBits* inner = reading.RestIn(reading.Rests, number + 1);
    const PlaceBits* begun = reading.MatchingOf(reading.At(to + 1));
    const std::size_t words = reading.Words;
    PlaceBits belowInner = 0;
    PlaceBits belowFound = 0;
    PlaceBits belowRest = 0;
    for (std::size_t word = 0; word < words; ++word) {
        const PlaceBits above = word + 1 < words ? inner[word + 1] << (PlacesOfWord - 1) : 0;
        PlaceBits found = inner[word] >> 1U | above | reading.OutcomeDigit(0)[word];
        const PlaceBits refused = reading.OutcomeDigit(1)[word];
        PlaceBits asked = MovedForward(inner[word], belowInner) & begun[word] & refused & ~found;
        for (; asked != 0; asked &= asked - 1) {
            const std::size_t left = LowestOf(asked, word);
            if (Has(reading.MatchingOf(RefuserOf(OutcomeAt(reading, left))), left - 1))
                found |= BitOf(left);
        }
        rest[word] = MovedForward(Spread(refused & ~found, found, belowFound), belowRest);
    }
}

/// Fills the set of the `+` at `number`, whose rest begins with a `+` and has an anchor at its end.
void MakeTiedRest(PatternReading& reading, std::size_t number, std::size_t to, PlaceBits* rest) {
    const std::size_t places = reading.Words * PlacesOfWord;
    FrontSearch search{reading,
                       {number + 1, to},
                       std::vector<PlaceBits>(reading.Words),
                       std::vector<std::uint8_t>(places),
                       std::vector<std::uint8_t>(places),
                       std::vector<std::uint8_t>(places)};
    SearchBehindFront(search);
    PlaceBits below = 0;
    for (const PlaceBits found : search.Found)
        *rest++ = MovedForward(found, below);
}

/// The place where an attempt begins, and where it reaches the element after the `+` signs at the start of the pattern.
struct Attempt {
    std::size_t Left = 0; ///< 0 for no attempt
    std::size_t Behind = 0;
};

/// Returns the first attempt from `left` on that is not refused.
Attempt FirstNotRefused(const PatternReading& reading, std::size_t left) {
    const PlaceBits* refused = reading.OutcomeDigit(1);
    left = FirstOutside(left, [refused](std::size_t word) { return ~refused[word]; });
    return {left, left};
}

/// The same for a pattern that begins with a `+`.
Attempt FirstNotRefusedBehindFront(const PatternReading& reading, std::size_t left) {
    const Front front{reading.FrontFrom, reading.FrontTo};
    const PlaceBits* begun = reading.MatchingOf(reading.At(reading.InFront + 1));
    Element readLast = NoElement;
    for (; left > 0; --left) {
        const std::size_t behind = BehindFront(reading, front, readLast, left);
        readLast = NoElement;
        if (behind == left && !Has(begun, left))
            continue; // no match has begun, so no element was read last
        const Outcome outcome = OutcomeAt(reading, behind);
        if (!IsRefusal(outcome))
            return {left, behind};
        readLast = RefuserOf(outcome);
    }
    return {};
}

/// Returns the end of a match that is known to reach element `number` at `left`: the number of characters left after
/// it.
std::size_t LeftBehindMatch(const PatternReading& reading, std::size_t number, std::size_t left) {
    Element readLast = NoElement;
    for (; number <= reading.Count && left > 0; ++number) {
        const Element element = reading.At(number);
        if (!IsRepeat(element)) {
            readLast = element;
            --left;
            continue;
        }
        const PlaceBits* matching = reading.MatchingOf(readLast);
        const PlaceBits* rest = number == reading.Count ? matching : reading.RestIn(reading.Rests, number);
        left = FirstOutside(left, [&](std::size_t word) { return ~(matching[word] & rest[word]); });
    }
    return left;
}

} // namespace

void MakeRest(PatternReading& reading, std::size_t number, std::size_t to) {
    PlaceBits* rest = reading.RestIn(reading.Making, number);
    if (to == reading.Count) {
        std::fill_n(rest, reading.Words, 0); // only `+` signs follow it: never found
        return;
    }
    if (number < to) {
        const auto used = [&reading](std::size_t each) { return reading.RestIn(reading.Rests, each); };
        // A `+` that goes on exactly where the next one goes on makes no difference: where it stops, the next one stops
        // too.
        if (number + 1 < to && std::equal(used(number + 1), used(number + 1) + reading.Words, used(number + 2)))
            std::copy_n(reading.RestIn(reading.Making, number + 1), reading.Words, rest);
        else if (reading.RestsAreFree())
            MakeFreeRest(reading, number, to, rest);
        else
            MakeTiedRest(reading, number, to, rest);
        return;
    }
    const PlaceBits* holds = reading.OutcomeDigit(0);
    const PlaceBits* refused = reading.OutcomeDigit(1);
    const std::size_t words = reading.Words;
    PlaceBits belowFound = 0;
    PlaceBits below = 0;
    for (std::size_t word = 0; word < words; ++word)
        rest[word] = MovedForward(Spread(refused[word], holds[word], belowFound), below);
}

std::int32_t FirstMatch(const PatternReading& reading, std::int32_t from, std::int32_t& last) {
    last = 0;
    const std::size_t before = std::max(static_cast<std::size_t>(from) - 1, reading.Offset) - reading.Offset;
    if (reading.Hopeless || before >= reading.Length())
        return 0;
    const std::size_t left = reading.Length() - before;
    const Attempt attempt =
        reading.InFront == 0 ? FirstNotRefused(reading, left) : FirstNotRefusedBehindFront(reading, left);
    if (attempt.Left == 0 || !Has(reading.OutcomeDigit(0), attempt.Behind))
        return 0;
    const auto position = [&reading](std::size_t behind) {
        return static_cast<std::int32_t>(reading.Offset + reading.Length() - behind);
    };
    last = position(LeftBehindMatch(reading, reading.InFront + 1, attempt.Behind));
    return position(attempt.Left - 1);
}

} // namespace modStringTools
