// SPDX-License-Identifier: MIT
#include "src/text/patterns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace modStringTools {
namespace {

constexpr std::int32_t Untouched = 77;

struct Row {
    Text Searched;
    Text Pattern;
    std::int32_t First; ///< 0: no match
    std::int32_t Last;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << testing::PrintToString(row.Pattern) << " in " << testing::PrintToString(row.Searched) << ": " << row.First
         << ", " << row.Last;
}

class PatternRows : public testing::TestWithParam<Row> {};

TEST_P(PatternRows, MatchFromTheTextsBeginningInAnyCase) {
    const Row& row = GetParam();
    std::int32_t first = Untouched;
    std::int32_t last = Untouched;
    EXPECT_EQ(MatchPattern(row.Searched, 1, row.Pattern, first, last, false), row.First > 0);
    EXPECT_EQ(first, row.First);
    EXPECT_EQ(last, row.Last);
}

// The rules are those listed in src/text/pattern_reading.cpp, with what each accepts and refuses.

INSTANTIATE_TEST_SUITE_P(Rule01AnyCharacter, PatternRows,
                         testing::Values(Row{u"abc", u"a.c", 1, 3}, Row{u"a\rb", u"a.b", 1, 3},
                                         Row{u"a\nb", u"a.b", 1, 3}, Row{u"ab", u"a.b", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule02Blank, PatternRows,
                         testing::Values(Row{u"\r\n \t", u"\\s", 3, 3}, Row{u"\r\n \t", u"\\s\\s", 3, 4},
                                         Row{u"\r\n", u"\\s", 0, 0}, Row{u" \t\r", u"\\S", 3, 3},
                                         Row{u" \t", u"\\S", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule03Word, PatternRows,
                         testing::Values(Row{u"-_", u"\\w", 2, 2}, Row{u"\u00E4z", u"\\w", 2, 2},
                                         Row{u"@[`{/:\u00E4", u"\\w", 0, 0}, Row{u"Z9_-", u"\\W", 4, 4},
                                         Row{u"\u00E4", u"\\W", 1, 1}, Row{u"aZ09_", u"\\W", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule04Digit, PatternRows,
                         testing::Values(Row{u"/:5", u"\\d", 3, 3}, Row{u"/:a", u"\\d", 0, 0},
                                         Row{u"09a", u"\\D", 3, 3}, Row{u"09", u"\\D", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule05Escaped, PatternRows,
                         testing::Values(Row{u"a+b", u"a\\+b", 1, 3}, Row{u"aab", u"a\\+b", 0, 0},
                                         Row{u"foo.bar", u"\\w+\\.\\w+", 1, 7}, Row{u"axb", u"a\\.b", 0, 0},
                                         Row{u"a/b", u"a\\/b", 1, 3}, Row{u"a\\b", u"a\\\\b", 1, 3},
                                         Row{u"a^b", u"a\\^b", 1, 3}, Row{u"a$b", u"a\\$b", 1, 3}));

INSTANTIATE_TEST_SUITE_P(Rule06EscapeOfNothing, PatternRows,
                         testing::Values(Row{u"q", u"\\q", 0, 0}, Row{u"\\q", u"\\q", 0, 0}, Row{u"a|b", u"\\|", 0, 0},
                                         Row{u"a\nb", u"\\n", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule07LastBackslash, PatternRows,
                         testing::Values(Row{u"a\\", u"\\", 2, 2}, Row{u"ab", u"a\\", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule08Itself, PatternRows,
                         testing::Values(Row{u"ABC", u"abc", 1, 3}, Row{u"abd", u"abc", 0, 0},
                                         Row{u"[/BLob]\r", u"[/blob]\r", 1, 8},
                                         Row{u"(x|y)*?{1}", u"(X|Y)*?{1}", 1, 10},
                                         Row{u"\u00C4\u00D6", u"\u00F6", 2, 2}));

INSTANTIATE_TEST_SUITE_P(Rule09Anchors, PatternRows,
                         testing::Values(Row{u"[BLob]", u"^[BLob", 1, 5}, Row{u"  [BLob]", u"^[BLob", 0, 0},
                                         Row{u"abab", u"ab$", 3, 4}, Row{u"abc", u"^b", 0, 0},
                                         Row{u"a$", u"a\\$", 0, 0}, Row{u"a\\", u"a\\$", 1, 2},
                                         Row{u"ab", u"ab^", 0, 0}, Row{u"ab", u"a$b", 0, 0}, Row{u"ab", u"a+$b", 0, 0},
                                         Row{u"abc", u"^", 0, 0}, Row{u"abc", u"$", 0, 0}, Row{u"abc", u"^$", 0, 0},
                                         Row{u"abc", u"^abc$", 1, 3}, Row{u"abcabc", u"^abc$", 0, 0},
                                         Row{u"ab", u"abc$", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule10Repetition, PatternRows,
                         testing::Values(Row{u"abbb", u"ab+", 1, 4}, Row{u"ab", u"ab+", 1, 2},
                                         Row{u"abbbc", u"ab+c", 1, 5}, Row{u"aab", u"a+b", 1, 3},
                                         Row{u"xaab", u"a+b", 2, 4}, Row{u"aaab", u"a+a", 1, 3},
                                         Row{u"aXbXc", u".+X", 1, 4}, Row{u"aXXc", u"aX+b", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule11EndOfTheTextAtARepetition, PatternRows,
                         testing::Values(Row{u"A=1", u"=.+|", 2, 3}, Row{u"A=12", u"=.+|", 0, 0},
                                         Row{u"aaa", u"a+b", 3, 3}, Row{u"1b", u".+bb", 0, 0}));

INSTANTIATE_TEST_SUITE_P(Rule12AnchorsOfTheRest, PatternRows,
                         testing::Values(Row{u"abaa", u"a.+a$$", 0, 0}, Row{u"abaa", u"a.+a$", 1, 4},
                                         Row{u"abab", u"a.+b$$$", 3, 4}, Row{u"aab", u"a+^b", 0, 0},
                                         Row{u"a$abab\\aaa", u"+\\S+++\\w\\w+\\w$$$", 5, 10}));

INSTANTIATE_TEST_SUITE_P(Rule13RepetitionAtTheStart, PatternRows,
                         testing::Values(Row{u"abc", u"+b", 2, 2}, Row{u"abc", u"+", 0, 0},
                                         Row{u"ababb", u"+abb", 2, 5}, Row{u"aabaa", u"+a+b.$", 2, 5},
                                         Row{u"ababb", u"+a.b", 2, 5}, Row{u"a1aa-bcaxxxb", u"+a...\\w", 8, 12}));

INSTANTIATE_TEST_SUITE_P(ValuesAndQuotes, PatternRows,
                         testing::Values(Row{u"a=1|b=2|c=3", u"=.+|", 2, 8}, Row{u"x12|y|z", u"\\d+|", 2, 4},
                                         Row{u"\"abc\"", u"\".+\"", 1, 5}, Row{u"\"\"", u"\".+\"", 1, 2},
                                         Row{u"\"a", u"\".+\"", 1, 2}, Row{u"A=", u"=.+$", 0, 0},
                                         Row{u"A=1=2", u"=.+$", 2, 5},
                                         Row{u"x\r[ORIGIN y\r[ORIGIN \"z\"]", u"^.+[ORIGIN", 1, 19},
                                         Row{u"[ORIGIN \"z\"]", u"^.+[ORIGIN", 0, 0},
                                         Row{u" \"z\"]\r]", u"].+$", 5, 7}));

bool Matches(TextView text, std::int32_t start, TextView pattern, bool caseSensitive = false) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    return MatchPattern(text, start, pattern, first, last, caseSensitive);
}

TEST(MatchPattern, LeavesThePositionsAloneInAnEmptyText) {
    for (const Text& pattern : {Text(u"a"), Text(u"^a"), Text(u".+"), Text(u"$"), Text()}) {
        std::int32_t first = Untouched;
        std::int32_t last = Untouched;
        EXPECT_FALSE(MatchPattern(u"", 1, pattern, first, last, false));
        EXPECT_EQ(first, Untouched);
        EXPECT_EQ(last, Untouched);
    }
}

TEST(MatchPattern, KeepsPositionsForNoPatternAndAStartAfterTheEnd) {
    std::int32_t first = Untouched;
    std::int32_t last = Untouched;
    EXPECT_FALSE(MatchPattern(u"abc", 1, u"", first, last, false));
    EXPECT_FALSE(MatchPattern(u"abc", 4, u"c", first, last, false));
    EXPECT_EQ(first, Untouched);
    EXPECT_EQ(last, Untouched);
}

TEST(MatchPattern, TakesAStartBelowTheTextAsItsBeginning) {
    EXPECT_TRUE(Matches(u"abc", 0, u"^a"));
    EXPECT_TRUE(Matches(u"abc", -5, u"^a"));
}

TEST(MatchPattern, NeverHoldsAnAnchoredPatternFromALaterStart) {
    EXPECT_FALSE(Matches(u"aaa", 2, u"^a"));
    EXPECT_FALSE(Matches(u"aaa", 2, u"^a+"));
    EXPECT_TRUE(Matches(u"aaa", 2, u"a"));
}

TEST(MatchPattern, TellsCasesApartWhenAsked) {
    EXPECT_FALSE(Matches(u"ABC", 1, u"abc", true));
    EXPECT_FALSE(Matches(u"ABBBC", 1, u"ab+c", true));
    EXPECT_TRUE(Matches(u"xabc", 1, u"abc", true));
    EXPECT_TRUE(Matches(u"xabbc", 1, u"ab+c", true));
}

TEST(MatchPattern, FindsWhatLowerCasesToTheSameFromBeyondAscii) {
    EXPECT_TRUE(Matches(u"5 \u212A", 1, u"k")); // the sign for kelvin
    EXPECT_TRUE(Matches(u"5 \u212A", 1, u"\\d k"));
    EXPECT_FALSE(Matches(u"5 \u212A", 1, u"k", true));
}

TEST(HasPattern, LooksFromTheBeginningWhateverTheUnusedFlagSays) {
    EXPECT_TRUE(HasPattern(u"x [connect", u"[CONNECT", false, false));
    EXPECT_TRUE(HasPattern(u"x [connect", u"[CONNECT", true, false));
    EXPECT_FALSE(HasPattern(u"x [connect", u"[CONNECT", true, true));
}

TEST(FindPattern, GivesThePositionOfTheNextMatch) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    EXPECT_EQ(FindPattern(3, u"a\rb\rc", u"\r", first, last, false), 4);
    EXPECT_EQ(FindPattern(5, u"a\rb\rc", u"\r", first, last, false), 0);
}

TEST(FindPattern, GivesAStalePositionForAStartBehindTheEnd) {
    std::int32_t first = Untouched;
    std::int32_t last = 0;
    EXPECT_EQ(FindPattern(6, u"a\rb\rc", u"\r", first, last, false), Untouched);
}

TEST(FindPattern, MayBeGivenItsOwnResultAsStart) {
    std::int32_t first = 2;
    std::int32_t last = 2;
    EXPECT_EQ(FindPattern(first, u"a=1|b=2|c", u"=.+|", first, last, false), 2);
    EXPECT_EQ(last, 8);
}

struct Replacement {
    Text Before;
    Text Pattern;
    Text By;
    bool Global;
    Text After;
};

void PrintTo(const Replacement& row, std::ostream* out) {
    *out << testing::PrintToString(row.Pattern) << " in " << testing::PrintToString(row.Before) << " by "
         << testing::PrintToString(row.By) << (row.Global ? ", each" : ", the first");
}

class ReplacementRows : public testing::TestWithParam<Replacement> {};

TEST_P(ReplacementRows, GiveTheTextAfterwards) {
    Text text = GetParam().Before;
    ReplacePattern(text, GetParam().Pattern, GetParam().By, GetParam().Global, false);
    EXPECT_EQ(text, GetParam().After);
}

INSTANTIATE_TEST_SUITE_P(
    ReplacePattern, ReplacementRows,
    testing::Values(
        Replacement{u"aXbXc", u"X", u"", true, u"abc"}, Replacement{u"aXbXc", u"X", u"yy", true, u"ayybyyc"},
        Replacement{u"aXbXc", u"X", u"y", false, u"aybXc"}, Replacement{u"abc", u"b", u"bb", true, u"abbc"},
        Replacement{u"abc", u"x", u"y", true, u"abc"}, Replacement{u"", u"x", u"y", true, u""},
        Replacement{u"abc", u"", u"y", true, u"abc"}, Replacement{u"a\r\n\r\nb\n", u"\r\n", u"\r", true, u"a\r\rb\n"},
        Replacement{u"\n\na\n", u"\n", u"\r", true, u"\r\ra\r"},
        Replacement{u"12|Alpha|34|x", u"\\d+|", u"", false, u"Alpha|34|x"},
        Replacement{u"Alpha\" \"x1\" \"y", u"\" \"", u"|", true, u"Alpha|x1|y"},
        Replacement{u"Site=1", u"=.+$", u"", false, u"Site"}, Replacement{u"Site=", u"=.+$", u"", false, u"Site="},
        Replacement{u"aaab", u"^a", u"", true, u"b"}, Replacement{u"aaab", u"^a", u"x", true, u"xaab"},
        Replacement{u"baab", u"^a", u"", true, u"baab"}, Replacement{u"abab", u"b$", u"", true, u"aba"},
        Replacement{u"a1b22c", u"\\d+", u"#", true, u"a#b#c"}, Replacement{u"aaa", u".", u"", true, u""}));

/// Patterns that name a variable come over the link: none may block the program. A matcher that tried every way through
/// the text would not end on these.
class HostilePatterns : public testing::TestWithParam<Text> {
protected:
    /// Returns the shortest of five measurements, because other processes can make any of them longer.
    static double SecondsFor(int repetitions) {
        Text text;
        for (int i = 0; i < repetitions; ++i)
            text += u"abcab=";
        double least = 1e9;
        for (int each = 0; each < 5; ++each) {
            const auto start = std::chrono::steady_clock::now();
            Matches(text, 1, GetParam());
            least = std::min(least, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
        return least;
    }
};

/// The time grows at most with the square of the length of the text.
TEST_P(HostilePatterns, AreAnswered) {
    EXPECT_LT(SecondsFor(1000) / SecondsFor(500), 6);
}

INSTANTIATE_TEST_SUITE_P(OfManyRepetitions, HostilePatterns,
                         testing::Values(u".+.+.+.+.+.+.+.+.+.+.+.+.+.+.+.+.+.+.+.+x=", u"a+++++++++++++++++++++bb=",
                                         u"+++++++++++++++++++++bcc=", u".+b+.+b+.+b+.+b+.+b+.+b+x$"));

TEST(MatchPattern, EndsOnAHundredDoubledRepetitions) {
    Text pattern;
    for (int i = 0; i < 100; ++i)
        pattern += u"a++";
    Text text;
    for (int i = 0; i < 1000; ++i)
        text += u"abcab=";
    EXPECT_FALSE(Matches(text, 1, pattern + u"bcc="));
}

TEST(MatchPattern, EndsOnAPatternLongerThanAnyContract) {
    Text pattern;
    for (int i = 0; i < 20000; ++i)
        pattern += u"a+";
    EXPECT_TRUE(Matches(u"aaaaaaaaaa", 1, pattern));
    EXPECT_FALSE(Matches(u"bbbbbbbbbb", 1, pattern));
    EXPECT_FALSE(Matches(u"aaaaaaaaaa", 1, Text(100000, u'a')));
}

} // namespace
} // namespace modStringTools
