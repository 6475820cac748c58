// SPDX-License-Identifier: MIT
#include "src/text/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace modStringTools {
namespace {

struct CaseRow {
    const char* Name;
    char16_t Upper;
    char16_t Lower;
};

void PrintTo(const CaseRow& row, std::ostream* out) {
    *out << row.Name;
}

class CasePairs : public testing::TestWithParam<CaseRow> {};

TEST_P(CasePairs, MapToEachOtherAndToThemselves) {
    const auto [name, upper, lower] = GetParam();
    EXPECT_EQ(LowerChar(upper), lower);
    EXPECT_EQ(LowerChar(lower), lower);
    EXPECT_EQ(UpperChar(lower), upper);
    EXPECT_EQ(UpperChar(upper), upper);
}

INSTANTIATE_TEST_SUITE_P(
    CaseMapping, CasePairs,
    testing::Values(CaseRow{"A", u'A', u'a'}, CaseRow{"Z", u'Z', u'z'}, CaseRow{"A umlaut", u'\u00C4', u'\u00E4'},
                    CaseRow{"thorn", u'\u00DE', u'\u00FE'}, CaseRow{"A macron", u'\u0100', u'\u0101'},
                    CaseRow{"Z caron", u'\u017D', u'\u017E'}, CaseRow{"Y diaeresis", u'\u0178', u'\u00FF'},
                    CaseRow{"Greek sigma", u'\u03A3', u'\u03C3'}, CaseRow{"Cyrillic zhe", u'\u0416', u'\u0436'},
                    CaseRow{"Cyrillic io", u'\u0401', u'\u0451'}, CaseRow{"Armenian ayb", u'\u0531', u'\u0561'},
                    CaseRow{"Georgian an", u'\u1C90', u'\u10D0'}, CaseRow{"Cherokee a", u'\u13A0', u'\uAB70'},
                    CaseRow{"fullwidth A", u'\uFF21', u'\uFF41'}));

class CharactersOfOneCase : public testing::TestWithParam<char16_t> {};

TEST_P(CharactersOfOneCase, ComeBackAsTheyAre) {
    EXPECT_EQ(LowerChar(GetParam()), GetParam());
    EXPECT_EQ(UpperChar(GetParam()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(CaseMapping, CharactersOfOneCase,
                         testing::Values(u'\0', u'@', u'[', u'`', u'{', u'1', u'\u007F', u'\u00D7', u'\u00F7',
                                         u'\u05D0', u'\u4E2D', char16_t{0xD801}, char16_t{0xDC28}, u'\uFFFF'));

TEST(CaseMapping, KeepsASharpSInBothCases) {
    EXPECT_EQ(UpperCase(u"stra\u00DFe"), u"STRA\u00DFE");
    EXPECT_EQ(LowerChar(u'\u1E9E'), u'\u00DF'); // the capital letter has a small one, but not the reverse
}

TEST(CaseMapping, KnowsTheTurkishLettersWithoutTurningAnI) {
    EXPECT_EQ(LowerChar(u'\u0130'), u'i');
    EXPECT_EQ(UpperChar(u'\u0131'), u'I');
    EXPECT_EQ(LowerChar(u'I'), u'i');
    EXPECT_EQ(UpperChar(u'i'), u'I');
}

TEST(CaseMapping, KeepsAFinalSigmaSmallAndRaisesItToTheOneCapital) {
    EXPECT_EQ(LowerCase(u"\u039F\u0394\u039F\u03A3"), u"\u03BF\u03B4\u03BF\u03C3");
    EXPECT_EQ(UpperChar(u'\u03C2'), u'\u03A3');
    EXPECT_EQ(LowerChar(u'\u03C2'), u'\u03C2');
}

TEST(CaseMapping, SendsBothHalvesOfADoubleLetterToItsOtherForms) {
    EXPECT_EQ(UpperChar(u'\u01C6'), u'\u01C4');
    EXPECT_EQ(UpperChar(u'\u01C5'), u'\u01C4');
    EXPECT_EQ(LowerChar(u'\u01C5'), u'\u01C6');
}

// A search compares ASCII digits and punctuation directly. This is correct as long as no other character has one of
// them as its other case.
TEST(CaseMapping, LeadsIntoAsciiOnlyToLetters) {
    for (std::uint32_t code = 0x80; code <= 0xFFFF; ++code) {
        const char16_t lower = LowerChar(static_cast<char16_t>(code));
        if (lower < 0x80) {
            EXPECT_TRUE(lower >= u'a' && lower <= u'z') << std::hex << code;
        }
    }
}

TEST(CaseMapping, LowersNothingTwice) {
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        const char16_t lower = LowerChar(static_cast<char16_t>(code));
        EXPECT_EQ(LowerChar(lower), lower) << std::hex << code;
    }
}

TEST(SameIgnoringCase, ComparesInLowerCase) {
    EXPECT_TRUE(SameIgnoringCase(u"Drivers.TXT", u"dRIVERS.txt"));
    EXPECT_TRUE(SameIgnoringCase(u"", u""));
    EXPECT_FALSE(SameIgnoringCase(u"ab", u"abc"));
    EXPECT_FALSE(SameIgnoringCase(u"ab", u"ac"));
    EXPECT_FALSE(SameIgnoringCase(u"\u03C3", u"\u03C2")); // one capital, two small letters
}

TEST(FindChar, FindsTheFirstOneFromAPlaceOn) {
    EXPECT_EQ(FindChar(u"a|b|", u'|'), 1U);
    EXPECT_EQ(FindChar(u"a|b|", u'|', 1), 1U);
    EXPECT_EQ(FindChar(u"a|b|", u'|', 2), 3U);
    EXPECT_EQ(FindChar(u"a|b|", u'|', 4), Text::npos);
    EXPECT_EQ(FindChar(u"a|b|", u'|', 5), Text::npos);
    EXPECT_EQ(FindChar(u"", u'|'), Text::npos);
}

// Each character before the bracket contains the bracket's byte: in its low half, in its high half, or across two
// characters.
TEST(FindChar, TakesNoHalfOfACharacterForAWholeOne) {
    EXPECT_EQ(FindChar(u"\u5B00\u015B\u5B5B[\u5B5B[", u'['), 3U);
    EXPECT_EQ(FindChar(u"\u5B00\u015B\u5B5B", u'['), Text::npos);
    EXPECT_EQ(FindChar(u"[\u5B00\u005B", u'\u5B00'), 1U);
}

TEST(NumberText, WritesEveryNumber) {
    EXPECT_EQ(NumberText(0), u"0");
    EXPECT_EQ(NumberText(-1), u"-1");
    EXPECT_EQ(NumberText(4294967296), u"4294967296");
    EXPECT_EQ(NumberText(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

struct NumberRow {
    Text Written;
    std::optional<std::int32_t> Number;
};

void PrintTo(const NumberRow& row, std::ostream* out) {
    *out << testing::PrintToString(row.Written);
}

class NumberTexts : public testing::TestWithParam<NumberRow> {};

TEST_P(NumberTexts, StandForANumberOrForNone) {
    EXPECT_EQ(NumberFromText(GetParam().Written), GetParam().Number);
}

INSTANTIATE_TEST_SUITE_P(Accepted, NumberTexts,
                         testing::Values(NumberRow{u"0", 0}, NumberRow{u"-1", -1}, NumberRow{u"+7", 7},
                                         NumberRow{u"  42 ", 42}, NumberRow{u" -8", -8}, NumberRow{u"0007", 7},
                                         NumberRow{u"-0", 0}, NumberRow{u"2147483647", 2147483647},
                                         NumberRow{u"-2147483648", std::numeric_limits<std::int32_t>::min()}));

INSTANTIATE_TEST_SUITE_P(Refused, NumberTexts,
                         testing::Values(NumberRow{u"", {}}, NumberRow{u"  ", {}}, NumberRow{u"-", {}},
                                         NumberRow{u"+", {}}, NumberRow{u"+-1", {}}, NumberRow{u"- 1", {}},
                                         NumberRow{u"1 2", {}}, NumberRow{u"1.5", {}}, NumberRow{u"12a", {}},
                                         NumberRow{u"0x1", {}}, NumberRow{u"1\t", {}}, NumberRow{u"\u0661", {}},
                                         NumberRow{u"2147483648", {}}, NumberRow{u"-2147483649", {}},
                                         NumberRow{u"99999999999999999999999999", {}}));

struct BytesRow {
    const char* Name;
    std::string Bytes;
    Text Written;
};

void PrintTo(const BytesRow& row, std::ostream* out) {
    *out << row.Name;
}

/// Returns the character that represents a raw byte.
Text Raw(std::initializer_list<int> bytes) {
    Text text;
    for (const int byte : bytes)
        text += static_cast<char16_t>(0xDC00 + byte);
    return text;
}

class BytesAndTexts : public testing::TestWithParam<BytesRow> {};

TEST_P(BytesAndTexts, TurnIntoEachOther) {
    EXPECT_EQ(FromBytes(GetParam().Bytes), GetParam().Written);
    EXPECT_EQ(ToBytes(GetParam().Written), GetParam().Bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Utf8, BytesAndTexts,
    testing::Values(BytesRow{"nothing", "", u""}, BytesRow{"ASCII", "a\r\n~\x7F", u"a\r\n~\x7F"},
                    BytesRow{"a zero", std::string(1, '\0'), Text(1, u'\0')},
                    BytesRow{"more ASCII than a block", "0123456789abcdefghi", u"0123456789abcdefghi"},
                    BytesRow{"two bytes", "\xC2\x80\xDF\xBF", u"\u0080\u07FF"},
                    BytesRow{"three bytes", "\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF", u"\u0800\u20AC\uFFFF"},
                    BytesRow{"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
                    BytesRow{"four bytes", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
                    BytesRow{"a letter deep in ASCII", "0123456789\xC3\xA4zyxwvutsrq", u"0123456789\u00E4zyxwvutsrq"}));

INSTANTIATE_TEST_SUITE_P(
    NoUtf8, BytesAndTexts,
    testing::Values(BytesRow{"a tail alone", "a\x80z", u"a" + Raw({0x80}) + u"z"},
                    BytesRow{"never a byte", "\xFE\xFF", Raw({0xFE, 0xFF})},
                    BytesRow{"overlong in two", "\xC0\x80\xC1\xBF", Raw({0xC0, 0x80, 0xC1, 0xBF})},
                    BytesRow{"overlong in three", "\xE0\x9F\xBF", Raw({0xE0, 0x9F, 0xBF})},
                    BytesRow{"overlong in four", "\xF0\x8F\xBF\xBF", Raw({0xF0, 0x8F, 0xBF, 0xBF})},
                    BytesRow{"a surrogate", "\xED\xA0\x80", Raw({0xED, 0xA0, 0x80})},
                    BytesRow{"a pair of surrogates", "\xED\xA0\xBD\xED\xB8\x80",
                             Raw({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80})},
                    BytesRow{"above the last code", "\xF4\x90\x80\x80", Raw({0xF4, 0x90, 0x80, 0x80})},
                    BytesRow{"far above it", "\xF5\x80\x80\x80", Raw({0xF5, 0x80, 0x80, 0x80})},
                    BytesRow{"cut off at the end", "a\xE2\x82", u"a" + Raw({0xE2, 0x82})},
                    BytesRow{"cut off by a letter", "\xE2\x82z", Raw({0xE2, 0x82}) + u"z"},
                    BytesRow{"cut off by a character", "\xE2\xC3\xA4", Raw({0xE2}) + u"\u00E4"},
                    BytesRow{"Windows' umlaut", "gr\xFCn", u"gr" + Raw({0xFC}) + u"n"}));

TEST(Bytes, WriteALoneHalfOfAPairInThree) {
    EXPECT_EQ(ToBytes(Text{u'a', char16_t{0xD83D}, u'b'}), "a\xED\xA0\xBD"
                                                           "b");
    EXPECT_EQ(ToBytes(Text{char16_t{0xD83D}}), "\xED\xA0\xBD");
    EXPECT_EQ(ToBytes(Text{char16_t{0xDE00}}), "\xED\xB8\x80");
    EXPECT_EQ(ToBytes(Text{char16_t{0xDC7F}}), "\xED\xB1\xBF");
}

TEST(Bytes, WriteAPairAlsoWhenItsSecondHalfCouldBeARawByte) {
    EXPECT_EQ(ToBytes(Text{char16_t{0xD800}, char16_t{0xDC80}}), "\xF0\x90\x82\x80");
}

/// Returns random bytes. Most are bytes of UTF-8 sequences, so that complete and broken sequences are frequent.
std::string AnyBytes(std::mt19937& random) {
    static const std::string lively = "ab\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xC3\xE0\xE2\xED\xEF\xF0\xF4\xF5\xFF";
    std::string bytes;
    for (auto left = random() % 24; left > 0; --left)
        bytes += random() % 4 != 0 ? lively[random() % lively.size()] : static_cast<char>(random() % 256);
    return bytes;
}

TEST(Bytes, SurviveTheWayToTextAndBackWhateverTheyAre) {
    std::mt19937 random(20);
    for (int i = 0; i < 200000; ++i) {
        const std::string bytes = AnyBytes(random);
        ASSERT_EQ(ToBytes(FromBytes(bytes)), bytes) << "case " << i;
    }
}

} // namespace
} // namespace modStringTools
