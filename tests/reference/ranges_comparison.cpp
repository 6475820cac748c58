// SPDX-License-Identifier: MIT
#include "tests/reference/ranges_comparison.h"

#include "src/text/ranges.h"
#include "tests/reference/ranges_reference.h"
#include "tests/reference/shown.h"

namespace reference {

namespace {

Text Drawn(Choices& choices, TextView alphabet, std::uint32_t longest) {
    Text text(choices.Below(longest + 1), u' ');
    for (char16_t& character : text)
        character = alphabet[choices.Below(static_cast<std::uint32_t>(alphabet.size()))];
    return text;
}

std::int32_t From(Choices& choices, std::int32_t lowest, std::int32_t highest) {
    return lowest + static_cast<std::int32_t>(choices.Below(static_cast<std::uint32_t>(highest - lowest + 1)));
}

/// A text after an operation, and the positions, clamped by it.
struct Changed {
    Text After;
    std::int32_t First = 0;
    std::int32_t Last = 0;

    bool operator==(const Changed& other) const {
        return After == other.After && First == other.First && Last == other.Last;
    }
};

std::string Told(const Changed& changed) {
    return Shown(changed.After) + " " + std::to_string(changed.First) + " " + std::to_string(changed.Last);
}

std::string Difference(const Changed& before, const Text& with, const Changed& product, const Changed& literal) {
    if (product == literal)
        return {};
    return Told(before) + " with " + Shown(with) + ": " + Told(product) + "; literally " + Told(literal);
}

} // namespace

std::string CompareToken(Choices& choices) {
    const Text text = Drawn(choices, choices.OneIn(2) ? u"a|" : u"ab||\rc", 12);
    const Text delimiter = Drawn(choices, u"||a", choices.OneIn(3) ? 2 : 0) + (choices.OneIn(8) ? u"\r" : u"|");
    const std::int32_t index = From(choices, -1, 8);
    Text product = u"left over";
    Text literal = u"left over";
    const std::int32_t productCount = modStringTools::GetToken(text, delimiter, index, product);
    const std::int32_t literalCount = GetToken(text, delimiter, index, literal);
    if (productCount == literalCount && product == literal)
        return {};
    return "token " + std::to_string(index) + " of " + Shown(text) + " ended by " + Shown(delimiter) + ": " +
           Shown(product) + " of " + std::to_string(productCount) + "; literally " + Shown(literal) + " of " +
           std::to_string(literalCount);
}

std::string CompareRange(Choices& choices) {
    const Changed before{Drawn(choices, u"abc", 7) + u"d", From(choices, -2, 10), From(choices, 1, 10)};
    const Text by = Drawn(choices, u"xyz", 4);
    Changed product = before;
    Changed literal = before;
    switch (choices.Below(3)) {
    case 0:
        modStringTools::ReplaceRange(product.After, by, product.First, product.Last);
        ReplaceRange(literal.After, by, literal.First, literal.Last);
        break;
    case 1:
        modStringTools::RemoveRange(product.After, product.First, product.Last);
        RemoveRange(literal.After, literal.First, literal.Last);
        break;
    default:
        product.After = modStringTools::TextRange(before.After, before.First, before.Last - 3);
        literal.After = TextRange(before.After, before.First, before.Last - 3);
    }
    return Difference(before, by, product, literal);
}

std::string CompareInsertion(Choices& choices) {
    const Changed before{Drawn(choices, u"abc", 6), From(choices, -2, 9), 0};
    const Text inserted = Drawn(choices, u"xyz", 3);
    Changed product = before;
    Changed literal = before;
    modStringTools::InsertText(product.After, inserted, product.First);
    InsertText(literal.After, inserted, literal.First);
    return Difference(before, inserted, product, literal);
}

} // namespace reference
