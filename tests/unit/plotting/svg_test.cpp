// SPDX-License-Identifier: MIT
#include "plotting/svg.h"

#include "tests/unit/plotting/plotted.h"

namespace plotting {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string Nasty = "Site|Moisture\n<&\"'>|1 %\n\x01\x1b[2J|2 %\n\xff\xfe\xed\xa0\x80|3 %\n]]>\xef\xbf\xbf|4 %\n";

/// Returns what is left of a text when each U+FFFD, tag and entity of XML is taken out.
std::string TextsOf(const std::string& svg) {
    std::string texts;
    bool isTag = false;
    for (const char character : svg) {
        isTag = isTag || character == '<';
        if (!isTag)
            texts += character;
        isTag = isTag && character != '>';
    }
    return texts;
}

TEST(Svg, EscapesTextsAndHasNoByteThatXmlForbids) {
    const std::string svg = SvgOf(Drawn(Nasty, Kind::Line, {.By = "Site"}));
    EXPECT_THAT(svg, HasSubstr("&lt;&amp;&quot;'&gt;"));
    EXPECT_THAT(TextsOf(svg), HasSubstr("\xEF\xBF\xBD\xEF\xBF\xBD[2J"));
    EXPECT_THAT(TextsOf(svg), HasSubstr("]]&gt;\xEF\xBF\xBD")) << "U+FFFF is no character of XML";
    for (const char character : svg)
        EXPECT_TRUE(character == '\n' || static_cast<unsigned char>(character) >= ' ');
    EXPECT_THAT(svg, Not(HasSubstr("\xff")));
    EXPECT_THAT(svg, Not(HasSubstr("\xed\xa0\x80"))) << "half of a pair";
}

TEST(Svg, IsTheSameBytesTwice) {
    EXPECT_EQ(SvgOf(Drawn(Nasty, Kind::Line, {.By = "Site"})), SvgOf(Drawn(Nasty, Kind::Line, {.By = "Site"})));
}

TEST(Svg, TellsWhatIsToBeSeenToWhoDoesNotSeeIt) {
    const std::string svg = SvgOf(Drawn("Moisture\n1 %\n3 %\n"));
    EXPECT_THAT(svg, HasSubstr("<title id=\"title\">Loft</title>"));
    EXPECT_THAT(
        svg, HasSubstr("Lines against Record. moisture [%]: 2 values: mean 2, from 1 to 3, standard deviation 1.41."));
}

TEST(Svg, TellsLinesApartWithoutColour) {
    const std::string svg = SvgOf(Drawn("Site|Moisture\na|1\nb|2\na|3\nb|4\n", Kind::Line, {.By = "Site"}));
    EXPECT_THAT(svg, HasSubstr("stroke-dasharray=\"7 4\""));
    EXPECT_THAT(svg, HasSubstr("a3.2,3.2")) << "discs";
    EXPECT_THAT(svg, HasSubstr("Z\" fill=\"#D55E00\"")) << "squares";
}

} // namespace
} // namespace plotting
