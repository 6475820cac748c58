// SPDX-License-Identifier: MIT
// The product's forms against the literal ones, on generated input. QUORIN_CASES in the environment asks for more (or
// fewer) cases than the number that each test has by itself.
#include "tests/reference/patterns_reference.h"
#include "tests/reference/ranges_reference.h"
#include "text/patterns.h"
#include "text/ranges.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace modStringTools {
namespace {

/// Holds each character that a pattern gives a meaning, and hardly any other, so that things happen to it.
constexpr TextView Anything = u"ab=|+.^$\\\"[]\r\n \t1_sdwSDW";
/// Few enough characters for long matches and for attempts that fail late.
constexpr TextView Repetitive = u"aab.+$\\";

std::uint32_t Cases(std::uint32_t byDefault) {
    const char* wanted = std::getenv("QUORIN_CASES");
    return wanted != nullptr ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10)) : byDefault;
}

class Generator {
public:
    explicit Generator(std::uint32_t seed) : Random(seed) {}

    std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(Random()) % bound; }
    bool Flag() { return Below(2) == 1; }
    std::int32_t From(std::int32_t lowest, std::int32_t highest) {
        return lowest + static_cast<std::int32_t>(Below(static_cast<std::uint32_t>(highest - lowest + 1)));
    }

    Text Any(TextView alphabet, std::uint32_t longest) {
        Text text;
        for (std::uint32_t left = Below(longest + 1); left > 0; --left)
            text += alphabet[Below(static_cast<std::uint32_t>(alphabet.size()))];
        return text;
    }

    Text Joined(const std::vector<Text>& pieces, std::uint32_t most) {
        Text text;
        for (std::uint32_t left = Below(most + 1); left > 0; --left)
            text += pieces[Below(static_cast<std::uint32_t>(pieces.size()))];
        return text;
    }

    /// The literal matcher's time is to the power of the number of repetitions, so there are three at most.
    Text Pattern(TextView alphabet, std::uint32_t longest) {
        Text pattern = Any(alphabet, longest);
        int repetitions = 0;
        for (char16_t& character : pattern) {
            if (Below(6) == 0)
                character = u'+';
            if (character == u'+' && ++repetitions > 3)
                character = u'a';
        }
        return pattern;
    }

private:
    std::mt19937 Random;
};

struct Match {
    bool Found = false;
    std::int32_t First = 77;
    std::int32_t Last = 88;
    bool operator==(const Match& other) const {
        return Found == other.Found && First == other.First && Last == other.Last;
    }
};

void PrintTo(const Match& match, std::ostream* out) {
    *out << (match.Found ? "match " : "no match ") << match.First << ", " << match.Last;
}

/// Looks from each place of the text, and from some outside it. Gives the number of searches.
std::uint32_t CompareMatches(const Text& text, const Text& pattern, bool caseSensitive) {
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t start = -1; start <= length + 2; ++start) {
        Match product;
        Match literal;
        product.Found = MatchPattern(text, start, pattern, product.First, product.Last, caseSensitive);
        literal.Found = reference::MatchPattern(text, start, pattern, literal.First, literal.Last, caseSensitive);
        EXPECT_EQ(product, literal) << testing::PrintToString(pattern) << " in " << testing::PrintToString(text)
                                    << " from " << start << (caseSensitive ? ", cases apart" : ", any case");
    }
    return static_cast<std::uint32_t>(length + 4);
}

void CompareReplacement(const Text& before, const Text& pattern, const Text& by, bool global, bool caseSensitive) {
    Text product = before;
    Text literal = before;
    ReplacePattern(product, pattern, by, global, caseSensitive);
    reference::ReplacePattern(literal, pattern, by, global, caseSensitive);
    EXPECT_EQ(product, literal) << testing::PrintToString(pattern) << " in " << testing::PrintToString(before) << " by "
                                << testing::PrintToString(by) << (global ? ", each" : ", the first");
}

class AgainstTheLiteralForm : public testing::Test {
protected:
    void Compare(std::uint32_t cases, TextView alphabet, std::uint32_t longestText, std::uint32_t longestPattern) {
        for (std::uint32_t done = 0; done < cases && !HasFailure();) {
            const Text text = Input.Any(alphabet, longestText);
            const Text pattern = Input.Pattern(alphabet, longestPattern);
            done += CompareMatches(text, pattern, false) + CompareMatches(text, pattern, true);
        }
    }

    Generator Input{4711};
};

TEST_F(AgainstTheLiteralForm, PatternsOfAnythingMatchTheSame) {
    Compare(Cases(600000), Anything, 12, 7);
}

TEST_F(AgainstTheLiteralForm, RepetitivePatternsMatchTheSame) {
    Compare(Cases(400000), Repetitive, 12, 7);
}

TEST_F(AgainstTheLiteralForm, LongRepetitivePatternsMatchTheSameInLongTexts) {
    Compare(Cases(60000), Repetitive, 30, 12);
}

// What was read last before an attempt failed is told apart only by elements of which some match the same characters.
TEST_F(AgainstTheLiteralForm, PatternsWithARepetitionAtTheirFrontMatchTheSame) {
    const std::vector<Text> elements = {u"a", u"a", u"b", u".", u".", u"\\w", u"\\S", u"\\d", u"a+"};
    const std::vector<Text> fronts = {u"+", u"++", u"b++", u"^+"};
    for (std::uint32_t done = 0; done < Cases(150000) && !HasFailure();) {
        const Text front = fronts[Input.Below(static_cast<std::uint32_t>(fronts.size()))];
        const Text text = Input.Any(u"aaab1- ", 14);
        done += CompareMatches(text, front + Input.Joined(elements, 6) + (Input.Flag() ? u"$" : u""), false);
    }
}

TEST_F(AgainstTheLiteralForm, PatternsThatEndInAnchorsMatchTheSame) {
    const std::vector<Text> elements = {u"a", u"b", u".", u"a+", u".+", u"\\"};
    const std::vector<Text> ends = {u"$", u"$$", u"$$$", u"\\$$"};
    for (std::uint32_t done = 0; done < Cases(100000) && !HasFailure();) {
        const Text end = ends[Input.Below(static_cast<std::uint32_t>(ends.size()))];
        done += CompareMatches(Input.Any(u"aab$\\", 10), Input.Joined(elements, 5) + end, false);
    }
}

TEST_F(AgainstTheLiteralForm, TheProgramsOwnPatternsMatchTheSame) {
    const std::vector<Text> patterns = {u"^[BLob", u"^[/BLob", u"[/BLob]\r",  u"[CONNECT",   u"^.+[CONNECT",
                                        u"].+$",   u"[ORIGIN", u"^.+[ORIGIN", u"\".+\"",     u"=.+$",
                                        u"\\d+|",  u"=.+|",    u"A=",         u"A+=",        u"\r",
                                        u"\r\n",   u"\n",      u"\" \"",      u"^[RESULT_T", u"^[DESCRIPTIVE_VAR"};
    const std::vector<Text> pieces = {u"[BLob]", u"[/BLob]", u"[/blob]\r", u"[CONNECT",     u"[ORIGIN", u"\"", u"\" \"",
                                      u"]",      u"=",       u"|",         u"12",           u"A",       u"aa", u"\r",
                                      u"\n",     u"\r\n",    u" ",         u"[RESULT_TYPE", u"[DESCRI"};
    for (std::uint32_t done = 0; done < Cases(150000) && !HasFailure();) {
        const Text text = Input.Joined(pieces, 6);
        done += CompareMatches(text, patterns[Input.Below(static_cast<std::uint32_t>(patterns.size()))], false);
    }
}

TEST_F(AgainstTheLiteralForm, ReplacementsLeaveTheSame) {
    for (std::uint32_t done = 0; done < Cases(200000) && !HasFailure(); ++done) {
        const TextView alphabet = Input.Flag() ? Anything : Repetitive;
        const Text text = Input.Any(alphabet, 12);
        const Text pattern = Input.Pattern(alphabet, 5);
        CompareReplacement(text, pattern, Input.Any(alphabet, 3), Input.Flag(), Input.Flag());
    }
}

TEST_F(AgainstTheLiteralForm, TokensAreTheSame) {
    for (std::uint32_t done = 0; done < Cases(100000) && !HasFailure(); ++done) {
        const Text text = Input.Any(u"ab||", 12);
        const Text delimiter = Input.Any(u"||a", 2) + u"|";
        const std::int32_t index = Input.From(-1, 8);
        Text product;
        Text literal;
        EXPECT_EQ(GetToken(text, delimiter, index, product), reference::GetToken(text, delimiter, index, literal));
        EXPECT_EQ(product, literal) << "token " << index << " of " << testing::PrintToString(text) << " ended by "
                                    << testing::PrintToString(delimiter);
    }
}

TEST_F(AgainstTheLiteralForm, RangesAreTheSame) {
    for (std::uint32_t done = 0; done < Cases(100000) && !HasFailure(); ++done) {
        const Text text = Input.Any(u"abc", 7) + u"d";
        const Text by = Input.Any(u"xyz", 4);
        const std::int32_t first = Input.From(-2, 10);
        const std::int32_t last = Input.From(1, 10);
        Text product = text;
        Text literal = text;
        std::int32_t productFirst = first;
        std::int32_t productLast = last;
        std::int32_t literalFirst = first;
        std::int32_t literalLast = last;
        ReplaceRange(product, by, productFirst, productLast);
        reference::ReplaceRange(literal, by, literalFirst, literalLast);
        EXPECT_EQ(product, literal) << first << " to " << last << " of " << testing::PrintToString(text);
        EXPECT_EQ(productFirst, literalFirst);
        EXPECT_EQ(productLast, literalLast);
        EXPECT_EQ(TextRange(text, first, last), reference::TextRange(text, first, last));
    }
}

TEST_F(AgainstTheLiteralForm, InsertionsAreTheSame) {
    for (std::uint32_t done = 0; done < Cases(50000) && !HasFailure(); ++done) {
        Text product = Input.Any(u"abc", 6);
        Text literal = product;
        const Text inserted = Input.Any(u"xyz", 3);
        std::int32_t productPosition = Input.From(-2, 9);
        std::int32_t literalPosition = productPosition;
        InsertText(product, inserted, productPosition);
        reference::InsertText(literal, inserted, literalPosition);
        EXPECT_EQ(product, literal);
        EXPECT_EQ(productPosition, literalPosition);
    }
}

} // namespace
} // namespace modStringTools
