// SPDX-License-Identifier: MIT
#include "backends/headless/font_server.h"
#include "tests/support/printed_rows.h"

#include <gtest/gtest.h>

#include <set>

namespace backends::headless {
namespace {

using support::PrintTo;

struct Metrics {
    std::int32_t Size, CharacterWidth, LineHeight;
};

class MetricsOf : public testing::TestWithParam<Metrics> {};

TEST_P(MetricsOf, FollowFromTheSizeAlone) {
    HeadlessFonts fonts;
    for (const char16_t* name : {u"Tahoma", u"AFPalm", u"a font that nobody has"}) {
        const FontHandle font = fonts.GetFont(name, GetParam().Size, 0);
        EXPECT_EQ(fonts.FontHeight(font), GetParam().LineHeight);
        const TextSize size = fonts.MeasureLine(font, u"abc", 0, 3);
        EXPECT_EQ(size.Width, 3 * GetParam().CharacterWidth);
        EXPECT_EQ(size.Height, GetParam().LineHeight);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, MetricsOf,
                         testing::Values(Metrics{5, 4, 9}, Metrics{8, 6, 15}, Metrics{11, 8, 21}, Metrics{14, 11, 26},
                                         Metrics{20, 15, 38}, Metrics{26, 20, 49}, Metrics{30, 23, 56},
                                         Metrics{1, 1, 2}));

struct LineRow {
    Text Words;
    std::int32_t Start, Length;
    std::int32_t Width; ///< at size 8, where a character is 6 pixels wide
};

class WidthOfALine : public testing::TestWithParam<LineRow> {};

TEST_P(WidthOfALine, CountsTheCharactersAskedForButNoLineEnds) {
    HeadlessFonts fonts;
    const auto& [words, start, length, width] = GetParam();
    const TextSize size = fonts.MeasureLine(fonts.GetFont(u"Tahoma", 8, 0), words, start, length);
    EXPECT_EQ(size.Width, width);
    EXPECT_EQ(size.Height, 15);
}

INSTANTIATE_TEST_SUITE_P(Rows, WidthOfALine,
                         testing::Values(LineRow{u"", 0, 0, 0}, LineRow{u"abcd", 0, 4, 24}, LineRow{u"abcd", 1, 2, 12},
                                         LineRow{u"abcd", 2, 99, 12}, LineRow{u"abcd", 9, 1, 0},
                                         LineRow{u"abcd", 0, 0, 0}, LineRow{u"abcd", -1, 2, 12},
                                         LineRow{u"abcd", 0, -1, 0}, LineRow{u"ab\r\ncd", 0, 6, 24}));

struct WrappedRow {
    Text Words;
    std::int32_t Width;   ///< available, in pixels
    std::int32_t Lines;   ///< number of lines, each 15 pixels high
    std::int32_t Longest; ///< length of the longest line, in characters of 6 pixels
};

class WrappedText : public testing::TestWithParam<WrappedRow> {};

TEST_P(WrappedText, IsAsWideAsItsLongestLineAndAsHighAsAllOfThem) {
    HeadlessFonts fonts;
    const TextSize size = fonts.MeasureWrapped(fonts.GetFont(u"Tahoma", 8, 0), GetParam().Words, GetParam().Width);
    EXPECT_EQ(size.Height, GetParam().Lines * 15);
    EXPECT_EQ(size.Width, GetParam().Longest * 6);
}

// clang-format off: a row a text; 60 pixels hold 10 characters
INSTANTIATE_TEST_SUITE_P(
    Rows, WrappedText,
    testing::Values(WrappedRow{u"", 60, 1, 0}, WrappedRow{u"ten letter", 60, 1, 10},
                    WrappedRow{u"ten letter", 65, 1, 10}, WrappedRow{u"ten letter", 59, 2, 6}, // "ten" and "letter"
                    WrappedRow{u"eleven chars", 60, 2, 6},                                     // "eleven" and "chars"
                    WrappedRow{u"one two three four", 60, 2, 10}, // "one two" and "three four"
                    WrappedRow{u"abcdefghij klm", 60, 2, 10},     // the blank comes right after a full line
                    WrappedRow{u"abcdefghijk", 60, 2, 10},        // cut after the tenth character
                    WrappedRow{u"abcdefghijklmnopqrstuvwxyz", 60, 3, 10},
                    WrappedRow{u"a bcdefghijklmnop", 60, 3, 10}, // "a", "bcdefghijk", "lmnop"
                    WrappedRow{u"ab   cdefghijk", 60, 2, 9},     // the blanks at a break belong to no line
                    WrappedRow{u"abcdefghij     ", 60, 1, 10}, WrappedRow{u"a\r\nb", 60, 2, 1},
                    WrappedRow{u"a\nb\rc", 60, 3, 1}, WrappedRow{u"a\r\n\r\nb", 60, 3, 1},
                    WrappedRow{u"a\n\rb", 60, 3, 1}, WrappedRow{u"\r\na", 60, 2, 1},
                    WrappedRow{u"Velmor \r\nTallybook", 60, 2, 9}, WrappedRow{u"one two\r\nthree four five", 60, 3, 10},
                    WrappedRow{u"abc", 6, 3, 1}, WrappedRow{u"abc", 5, 3, 1}, // a line holds at least one character
                    WrappedRow{u"abc", 0, 3, 1}, WrappedRow{u"abc", -60, 3, 1}));
// clang-format on

TEST(FontNames, AreWalkedFromTheFirstWithoutEqualOnes) {
    HeadlessFonts fonts;
    std::set<Text> names;
    for (Text name = fonts.FirstFontName(); !name.empty(); name = fonts.NextFontName())
        EXPECT_TRUE(names.insert(name).second);
    for (const char16_t* needed :
         {u"Tahoma", u"AFPalm", u"AFPalmHR", u"Nokia Sans S60", u"AFSE UIQ Standard", u"Microsoft Sans Serif CMF"})
        EXPECT_EQ(names.count(needed), 1U);
    EXPECT_EQ(fonts.NextFontName(), u"");
    EXPECT_EQ(fonts.FirstFontName(), *names.begin());
}

TEST(FontOfNoSize, IsTheSmallest) {
    HeadlessFonts fonts;
    EXPECT_EQ(fonts.FontHeight(fonts.GetFont(u"Tahoma", 0, 0)), 2);
    EXPECT_EQ(fonts.FontHeight(fonts.GetFont(u"Tahoma", -8, 0)), 2);
}

} // namespace
} // namespace backends::headless
