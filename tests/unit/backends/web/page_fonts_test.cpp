// SPDX-License-Identifier: MIT
#include "backends/web/page_fonts.h"

#include "tests/unit/backends/web/page_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends::web {
namespace {

using testing::ElementsAre;

class OnAPage : public testing::Test {
protected:
    PageFonts Fonts{EvenMeasures()};
    FontHandle Font = Fonts.GetFont(u"Nokia Sans S60", 15, 0); // 20 pixels, 10 a character

    std::vector<Text> Lines(TextView text, std::int32_t width) {
        std::vector<Text> lines;
        for (const TextView line : Fonts.LinesOf(Font, text, width))
            lines.emplace_back(line);
        return lines;
    }
};

TEST_F(OnAPage, ALineIsAsWideAsItsCharacters) {
    EXPECT_EQ(Fonts.MeasureLine(Font, u"Site", 0, 4).Width, 40);
    EXPECT_EQ(Fonts.MeasureLine(Font, u"Site", 1, 2).Width, 20);
    EXPECT_EQ(Fonts.FontHeight(Font), 20);
}

TEST_F(OnAPage, ALineEndsBeforeTheWordThatDoesNotFit) {
    EXPECT_THAT(Lines(u"a wet wall", 60), ElementsAre(u"a wet", u"wall"));
    EXPECT_THAT(Lines(u"a wet wall", 50), ElementsAre(u"a wet", u"wall"));
}

TEST_F(OnAPage, AWordLongerThanALineIsCut) {
    EXPECT_THAT(Lines(u"thermometer", 50), ElementsAre(u"therm", u"omete", u"r"));
    EXPECT_THAT(Lines(u"ab", 1), ElementsAre(u"a", u"b"));
    EXPECT_THAT(Lines(u"\U0001F321x", 1), ElementsAre(u"\U0001F321", u"x"));
}

TEST_F(OnAPage, EachLineEndBeginsALineButTheLastOne) {
    EXPECT_THAT(Lines(u"a\r\nb\rc\n", 90), ElementsAre(u"a", u"b", u"c"));
    EXPECT_THAT(Lines(u"", 90), ElementsAre(u""));
    EXPECT_EQ(Fonts.MeasureWrapped(Font, u"a\n\nbcd", 90).Height, 60);
    EXPECT_EQ(Fonts.MeasureWrapped(Font, u"a\n\nbcd", 90).Width, 30);
}

TEST_F(OnAPage, APalmFontIsNarrow) {
    const FontHandle palm = Fonts.GetFont(u"AFPalm", 15, 0);
    EXPECT_EQ(Fonts.MeasureLine(palm, u"Site", 0, 4).Width, 34);
}

TEST(Measures, AreReadOrRefusedAsAWhole) {
    const auto read =
        ReadMeasures(R"({"ascent":0.9,"descent":0.2,"other":1,"ranges":[{"first":65,"widths":[0.5,0.7]}]})");
    ASSERT_TRUE(read);
    ASSERT_EQ(read->Ranges.size(), 1U);
    EXPECT_EQ(read->Ranges[0].First, u'A');
    EXPECT_EQ(read->Ranges[0].Widths[1], 0.7);
    for (const char* const wrong :
         {"", "[]", R"({"ascent":0.9})", R"({"ascent":0.9,"descent":0.2,"other":1,"ranges":[{"first":65}]})",
          R"({"ascent":0.9,"descent":0.2,"other":1,"ranges":[{"first":65,"widths":["a"]}]})"})
        EXPECT_FALSE(ReadMeasures(wrong)) << wrong;
}

} // namespace
} // namespace backends::web
