// SPDX-License-Identifier: MIT
#include "plotting/text_picture.h"

#include "plotting/readable.h"
#include "tests/unit/plotting/plotted.h"

namespace plotting {
namespace {

using testing::HasSubstr;

std::string TextChart(const std::string& table, Letters letters, Kind kind = Kind::Line, const Request& request = {}) {
    const Read read = ReadTable(table, request);
    EXPECT_EQ(read.Why, "");
    return TextOf(Draw(read.Data, kind, CellLook(40, 12)), letters);
}

TEST(ATextChart, IsDrawnInDotsAndFrames) {
    EXPECT_EQ(TextChart("Moisture\n1 %\n5 %\n3 %\n", Letters::Unicode), R"(Loft
moisture [%]
  │               ⢀⡠●⠒⠤⢄⣀
 4┤             ⡠⠔⠁      ⠉⠑⠢⠤⣀⡀
  │          ⣀⠔⠉              ⠈⠉⠒⠢⢄⣀
  │       ⢀⠔⠊                       ⠉●
 2┤    ⢀⠤⠊⠁
  │ ⢀⡠⠒⠁
  │●⠊
  └┬────────────────┬────────────────┬─
   1                2                3
                  Record
)");
}

TEST(ATextChart, IsAsciiAloneIfThatIsAllThereIs) {
    const std::string text =
        TextChart("Site|Warmth\nä|1 °C\nb|5 °C\nä|3 °C\nb|2 °C\n", Letters::Ascii, Kind::Line, {.By = "Site"});
    for (const char character : text)
        EXPECT_LT(static_cast<unsigned char>(character), 0x80);
    EXPECT_THAT(text, HasSubstr("o ?  # b"));
    EXPECT_THAT(text, HasSubstr("Warmth [?C]"));
}

TEST(ATextChart, HasTheWholeDayAtItsLeftEdge) {
    const std::string table = "Moisture|Day|Hour\n1|1/2/2026|0:00\n9|1/2/2026|3:00\n";
    EXPECT_THAT(TextChart(table, Letters::Unicode, Kind::Line, {.Against = "time"}), HasSubstr("\n2026-02-01\n"));
}

TEST(ATextChart, HasTheSizeThatItIsGivenAndNoControlCharacter) {
    const std::string text =
        TextChart("Site|Moisture\n\x1b[31m日本|1 %\nb|2 %\n", Letters::Unicode, Kind::Points, {.By = "Site"});
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 12);
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(CellsOf(line), 40) << line;
}

} // namespace
} // namespace plotting
