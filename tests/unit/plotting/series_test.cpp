// SPDX-License-Identifier: MIT
#include "plotting/series.h"

#include "tests/unit/plotting/plotted.h"

namespace plotting {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Returns the points as "x:y", with "|" before one that comes after a gap.
std::string Points(const Series& series) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    for (const Point& point : series.Points)
        text << (point.IsAfterGap ? "| " : "") << point.X << ":" << point.Y << " ";
    return text.str();
}

std::string FirstPoints(const std::string& table, const Request& request = {}) {
    const Read read = ReadTable(table, request);
    EXPECT_EQ(read.Why, "");
    return read.Data.Series.empty() ? "" : Points(read.Data.Series.front());
}

TEST(ASeries, HasAGapWhereAValueIsMissingOrNoNumber) {
    const Read read = ReadTable("Moisture\n1 %\n2 %\n\n3 %\ndry\n4,5 %\n5 %\n");
    EXPECT_EQ(Points(read.Data.Series.at(0)), "1:1 2:2 | 4:3 | 6:4.5 7:5 ");
    EXPECT_THAT(read.Data.Notes,
                ElementsAre("moisture: 1 value is no number: a gap", "moisture: 1 record has no value: a gap"));
}

TEST(ASeries, HasOneUnit) {
    const Read read = ReadTable("Moisture\n1 %\n2 g\n3 %\n4 g\n");
    ASSERT_EQ(read.Data.Series.size(), 2U);
    EXPECT_EQ(read.Data.Series[0].Unit, "%");
    EXPECT_EQ(Points(read.Data.Series[0]), "1:1 | 3:3 ");
    EXPECT_EQ(read.Data.Series[1].Unit, "g");
    EXPECT_EQ(Points(read.Data.Series[1]), "2:2 | 4:4 ");
}

TEST(ASeries, IsMadeForEachGroup) {
    const Read read = ReadTable("Site|Moisture\na|1 %\nb|2 %\na|\na|3 %\n|4 %\nb|5 %\n", {.By = "SITE"});
    ASSERT_EQ(read.Data.Series.size(), 3U);
    EXPECT_EQ(Points(read.Data.Series[0]), "1:1 | 4:3 ");
    EXPECT_EQ(Points(read.Data.Series[1]), "2:2 6:5 ") << "what another group lacks is no gap";
    EXPECT_EQ(read.Data.Series[2].Group, "(empty)");
}

TEST(ASeries, LiesAgainstTimeOfItsDriver) {
    const std::string table = "Moisture|Day|Hour\n1 %|21/11/2026|23:59\n2 %|22/11/2026|0:01\n3 %|soon|0:02\n";
    const Read read = ReadTable(table, {.Against = "time"});
    const auto& points = read.Data.Series.at(0).Points;
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1].X - points[0].X, 120);
    EXPECT_EQ(read.Data.XTitle, "Day, Hour");
    EXPECT_THAT(read.Data.Notes, ElementsAre("1 record has no value of Day, Hour: left out"));
}

TEST(ASeries, RunsOnAcrossMidnightWithoutADate) {
    EXPECT_EQ(FirstPoints("Moisture|Hour\n1|23:59\n2|00:01\n3|00:02\n", {.Against = "Hour"}),
              "86340:1 86460:2 86520:3 ");
}

TEST(ASeries, IsShownInTheOrderOfTimeAndSaysSo) {
    const std::string table = "Moisture|Day\n1|3/1/2026\n2|1/1/2026\n3|2/1/2026\n";
    const Read read = ReadTable(table, {.Against = "time"});
    std::vector<double> values;
    for (const Point& point : read.Data.Series.at(0).Points)
        values.push_back(point.Y);
    EXPECT_THAT(values, ElementsAre(2, 3, 1));
    EXPECT_THAT(read.Data.Notes, ElementsAre("1 value is earlier than the one before: shown in the order of time"));
}

TEST(ASeries, LiesAgainstAnotherColumnOfOneUnit) {
    const Read read =
        ReadTable("Moisture|Warmth\n1|20 °C\n2|21 °C\n3|70 °F\n", {.Columns = {"moisture"}, .Against = "Warmth"});
    EXPECT_EQ(Points(read.Data.Series.at(0)), "20:1 21:2 ");
    EXPECT_EQ(read.Data.XTitle, "Warmth [°C]");
    EXPECT_THAT(read.Data.Notes, ElementsAre("1 record has no value of Warmth in °C: left out"));
}

TEST(ASeries, IsOfColumnsByTheirNumbers) {
    const Read read =
        ReadTable("Caf\xE9|Moisture|x\na|1|10\nb|2|20\n", {.Columns = {"|2"}, .By = "|1", .Against = "|3"});
    EXPECT_EQ(read.Why, "");
    ASSERT_EQ(read.Data.Series.size(), 2U);
    EXPECT_EQ(read.Data.Series[1].Group, "b");
    EXPECT_EQ(read.Data.Series[1].Points.front().X, 20);
    EXPECT_EQ(read.Data.Series[1].Points.front().Y, 2);
    EXPECT_EQ(ReadTable("Moisture\n1\n", {.By = "|2"}).Why, "Loft has no column |2; it has moisture.");
}

TEST(ASeries, HasTheLimitsOfItsColumn) {
    const companion::ValueLimits limits(u"COLUMN|WARNHIGH|FAILLOW\nMoisture|16|2\n", {u"Moisture"});
    const companion::Bounds bounds = ReadTable("Moisture\n1\n", {}, &limits).Data.Series.at(0).Limits;
    EXPECT_EQ(bounds.WarnHigh, (companion::Limit{16, u"16"}));
    EXPECT_EQ(bounds.FailLow, (companion::Limit{2, u"2"}));
    EXPECT_FALSE(bounds.WarnLow || bounds.FailHigh);
}

TEST(ASeries, TellsWhatItCantShow) {
    EXPECT_EQ(ReadTable("Moisture|Remark\n1|x\n", {.Columns = {"Dew"}}).Why,
              "Loft has no column Dew; it has moisture, Remark.");
    EXPECT_EQ(ReadTable("Moisture|Remark\n1|x\n", {.By = "Dew"}).Why,
              "Loft has no column Dew; it has moisture, Remark.");
    EXPECT_EQ(ReadTable("Moisture|Warmth|Remark\n1|2|x\n", {.Columns = {"Remark"}}).Why,
              "Loft: Remark has no number; columns with numbers: moisture, Warmth.");
    EXPECT_EQ(ReadTable("Remark|Q\nx|3\n").Why, "Loft: no column is known to have readings. --plot names one of those "
                                                "that have numbers: Q.");
    EXPECT_EQ(ReadTable("Moisture\n1\n", {.Against = "time"}).Why, "Loft: no column is known to have dates or times.");
    EXPECT_EQ(ReadTable("").Why, "Loft is empty: it has no columns.");
    EXPECT_EQ(ReadTable("Moisture\n").Why, "Loft: moisture has no number; columns with numbers: none.");
}

TEST(ASeries, IsNotOneOfMoreThanCanBeToldApart) {
    std::string table = "Site|Moisture\n";
    for (int i = 0; i < 25; ++i)
        table += "site " + std::to_string(i) + "|1\n";
    EXPECT_THAT(ReadTable(table, {.By = "Site"}).Why, HasSubstr("--by site would make more than 24 lines"));
}

TEST(ASeries, NamesRowsOfAnotherLengthThanTheHeader) {
    const Read read = ReadTable("Site|Moisture\na|1\nb\nc|2|3\n");
    EXPECT_THAT(read.Odd,
                ElementsAre("Loft, line 3: 1 fields under 2 columns", "Loft, line 4: 3 fields under 2 columns"));
    EXPECT_THAT(ReadTable("Moisture\n1\n").Odd, IsEmpty());
}

} // namespace
} // namespace plotting
