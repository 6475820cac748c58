// SPDX-License-Identifier: MIT
#include "src/text/characters.h"

#include "src/text/text.h"
#include "tests/support/printed_rows.h"

#include <gtest/gtest.h>

namespace modStringTools {
namespace {

using support::PrintTo;

struct CharacterRow {
    const char* Name;
    Text Head;
    char32_t Code;
    std::size_t Length;
};

class FirstCharacterOf : public testing::TestWithParam<CharacterRow> {};

TEST_P(FirstCharacterOf, IsOneUnitOrTwo) {
    const Character character = FirstCharacter(GetParam().Head);
    EXPECT_EQ(character.Code, GetParam().Code);
    EXPECT_EQ(character.Length, GetParam().Length);
}

INSTANTIATE_TEST_SUITE_P(Texts, FirstCharacterOf,
                         testing::Values(CharacterRow{"Letter", u"ab", u'a', 1},
                                         CharacterRow{"Pair", u"\xD83D\xDE00x", 0x1F600, 2},
                                         CharacterRow{"FirstPair", u"\xD800\xDC00", 0x10000, 2},
                                         CharacterRow{"LastPair", u"\xDBFF\xDFFF", 0x10FFFF, 2},
                                         CharacterRow{"HighHalfAlone", u"\xD83D", 0xD83D, 1},
                                         CharacterRow{"HighHalfInFrontOfALetter", u"\xD83Dx", 0xD83D, 1},
                                         CharacterRow{"TwoHighHalves", u"\xD83D\xD83D", 0xD83D, 1},
                                         CharacterRow{"LowHalfInFront", u"\xDE00\xD83D", 0xDE00, 1},
                                         CharacterRow{"BehindTheHalves", u"\xD83D\xE000", 0xD83D, 1}),
                         [](const auto& each) { return each.param.Name; });

TEST(AppendedCharacter, IsReadBackAsItWas) {
    for (const char32_t code : {0x41U, 0xFFFFU, 0x10000U, 0x1F600U, 0x10FFFFU}) {
        Text text;
        AppendCharacter(text, code);
        EXPECT_EQ(FirstCharacter(text).Code, code);
        EXPECT_EQ(FirstCharacter(text).Length, text.size());
    }
}

} // namespace
} // namespace modStringTools
