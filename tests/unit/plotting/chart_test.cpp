// SPDX-License-Identifier: MIT
#include "plotting/chart.h"

#include "plotting/palette.h"
#include "tests/unit/plotting/plotted.h"

#include <cmath>
#include <set>

namespace plotting {
namespace {

using testing::Contains;
using testing::HasSubstr;

const companion::ValueLimits Limits(u"COLUMN|WARNLOW|WARNHIGH|FAILHIGH\nMoisture|-900|16|20\n", {u"Moisture"});

TEST(AChart, BreaksTheLineAtAGapAndMarksALonelyPoint) {
    std::string table = "Moisture\n";
    for (int i = 0; i < 100; ++i)
        table += i == 40 || i == 42 ? "\n" : std::to_string(i) + "\n";
    const Scene scene = Drawn(table);
    EXPECT_EQ(PartsOf<Polyline>(scene, Role::Data).size(), 2U);
    const auto markers = PartsOf<Markers>(scene, Role::Data);
    ASSERT_EQ(markers.size(), 1U);
    EXPECT_EQ(markers.front().Spots.size(), 1U);
}

TEST(AChart, DrawsTheLineOnOverGapsIfAsked) {
    const std::string table = "Moisture\n1\n\n3\ndry\n5\n";
    EXPECT_EQ(PartsOf<Polyline>(Drawn(table), Role::Data).size(), 0U);
    const auto joined = PartsOf<Polyline>(Drawn(table, Kind::Line, {.JoinsGaps = true}), Role::Data);
    ASSERT_EQ(joined.size(), 1U);
    EXPECT_EQ(joined.front().Spots.size(), 3U);
    EXPECT_THAT(ReadTable(table, {.JoinsGaps = true}).Data.Notes,
                testing::ElementsAre("moisture: 1 value is no number: left out of the line",
                                     "moisture: 1 record has no value: left out of the line"));
}

TEST(AChart, DoesNotJoinGapsForItsControlLimits) {
    const std::string table = "Moisture\n1\n2\n\n8\n9\n";
    const auto limit = [&](const Request& request) {
        return PartsOf<Line>(Drawn(table, Kind::Control, request), Role::ControlLimit).front().From.Y;
    };
    EXPECT_EQ(limit({}), limit({.JoinsGaps = true}));
}

const ValueRange FromZeroToTen = {.Low = 0, .High = 10, .Written = "0:10"};

TEST(AChart, HasTheRangeThatItIsAskedFor) {
    const Scene scene = Drawn("Moisture\n4\n5\n30\n-20\n6\n", Kind::Line, {.Range = FromZeroToTen});
    const auto lines = PartsOf<Polyline>(scene, Role::Data);
    ASSERT_EQ(lines.size(), 3U) << "up and out, through from the top to the bottom, and in again";
    const auto axis = PartsOf<Line>(scene, Role::Axis).front();
    EXPECT_DOUBLE_EQ(lines[0].Spots.back().Y, axis.From.Y);
    EXPECT_DOUBLE_EQ(lines[2].Spots.front().Y, axis.To.Y);
    EXPECT_EQ(PartsOf<Markers>(scene, Role::Data).front().Spots.size(), 3U) << "none at the edge, where no value is";
    EXPECT_THAT(LabelsOf(scene), Contains("2 values lie beyond the range 0:10: not shown"));
    EXPECT_THAT(LabelsOf(scene), Contains("0"));
    EXPECT_THAT(LabelsOf(scene), Contains("10"));
}

TEST(AChart, HasTheLimitsWithinItsRange) {
    const Scene scene = Drawn("Moisture\n15 %\n15 %\n", Kind::Line, {.Range = {.Low = -1000, .High = 18}}, &Limits);
    EXPECT_EQ(PartsOf<Line>(scene, Role::Warn).size(), 2U) << "one of them is far away";
    EXPECT_EQ(PartsOf<Line>(scene, Role::Fail).size(), 0U);
    EXPECT_THAT(LabelsOf(scene), Contains("beyond the picture: fail 20"));
    EXPECT_THAT(LabelsOf(Drawn("Moisture\n1\n2\n1\n2\n", Kind::Control, {.Range = {.Low = 0}})),
                Contains(HasSubstr("; beyond the picture: −3σ −1.16")));
}

TEST(AChart, MayHaveARangeWithOneEnd) {
    const auto labels = LabelsOf(Drawn("Moisture\n40\n60\n", Kind::Line, {.Range = {.Low = 0}}));
    EXPECT_THAT(labels, Contains("0"));
    EXPECT_THAT(labels, Contains("60"));
    EXPECT_EQ(ReadTable("Moisture\n40\n60\n", {.Range = {.High = 1, .Written = ":1"}}).Why,
              "No value lies in the range \":1\": choose another --range.");
}

TEST(AChart, CountsTheValuesOfItsRangeInAHistogram) {
    const auto bars =
        PartsOf<Rectangle>(Drawn("Moisture\n1\n1\n9\n500\n", Kind::Histogram, {.Range = FromZeroToTen}), Role::Bar);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_NEAR((bars[0].To.Y - bars[0].From.Y) / (bars[1].To.Y - bars[1].From.Y), 2, 0.001);
}

/// One unit has no value in the range; its panel is empty, and whole.
TEST(AChart, HasAnEmptyPanelBesideItsRange) {
    for (const Kind kind : {Kind::Line, Kind::Histogram, Kind::Control})
        for (const ValueRange& range :
             {ValueRange{.Low = 50}, ValueRange{.High = 30}, ValueRange{.Low = 15, .High = 30}}) {
            const Scene scene = Drawn("Moisture|Warmth\n20 %|90 °C\n21 %|91 °C\n22 %|10 °C\n", kind, {.Range = range});
            for (const Line& line : PartsOf<Line>(scene, Role::Tick))
                EXPECT_TRUE(std::isfinite(line.From.Y) && std::isfinite(line.From.X));
            EXPECT_EQ(PartsOf<Line>(scene, Role::Axis).size(), 4U);
        }
}

TEST(AChart, HasTrueMinusSignsInAPictureAlone) {
    const Read read = ReadTable("Moisture|Remark\n-5|-1\n-3|-2\n", {.Against = "Remark"});
    const auto picture = LabelsOf(Draw(read.Data, Kind::Line, PixelLook(960, 540)));
    EXPECT_THAT(picture, Contains("−4.0"));
    EXPECT_THAT(picture, Contains("−1.5"));
    const auto text = LabelsOf(Draw(read.Data, Kind::Line, CellLook(80, 24)));
    EXPECT_THAT(text, testing::Not(Contains(HasSubstr("−"))));
    EXPECT_THAT(text, Contains(HasSubstr("-1.5")));
}

TEST(AChart, KeepsTheHyphensOfDatesAndNames) {
    const Read read =
        ReadTable("Moisture|Day|Hour\n-5 m-1|21/11/2026|9:00\n-4 m-1|23/11/2026|9:00\n", {.Against = "time"});
    const auto labels = LabelsOf(Draw(read.Data, Kind::Control, PixelLook(960, 540)));
    EXPECT_THAT(labels, Contains(HasSubstr("2026-11-22")));
    EXPECT_THAT(labels, Contains("moisture [m-1]"));
    EXPECT_THAT(labels, Contains(HasSubstr("from −5 to −4")));
    EXPECT_THAT(labels, Contains(HasSubstr("−3σ")));
}

TEST(AChart, HasTheLimitsThatLieNearAndNamesTheOthers) {
    const Scene scene = Drawn("Moisture\n15 %\n21 %\n", Kind::Line, {}, &Limits);
    EXPECT_EQ(PartsOf<Line>(scene, Role::Warn).size(), 1U);
    EXPECT_EQ(PartsOf<Line>(scene, Role::Fail).size(), 1U);
    EXPECT_THAT(LabelsOf(scene), Contains("fail 20"));
    EXPECT_THAT(LabelsOf(scene), Contains("warn 16"));
    EXPECT_THAT(LabelsOf(scene), Contains("beyond the picture: warn −900"));
}

TEST(AChart, TellsTheExtremesWithTheDigitsOfTheTable) {
    const auto caption = [](const std::string& values) {
        return LabelsOf(Drawn("Moisture\n" + values, Kind::Histogram)).at(2);
    };
    EXPECT_THAT(caption("12e3\n13e3\n"), HasSubstr("mean 12500, from 12e3 to 13e3, standard deviation 707"));
    EXPECT_THAT(caption("1234567.89\n1234567.10\n"), HasSubstr("mean 1234567.495, from 1234567.10 to 1234567.89"));
    EXPECT_THAT(caption("20.50 %\n20.50 %\n"), HasSubstr("mean 20.50, from 20.50 to 20.50, standard deviation 0"));
    EXPECT_THAT(caption("1e300\n-1e300\n"),
                HasSubstr("mean 0, from −1e300 to 1e300, standard deviation (too large)"));
    EXPECT_THAT(caption("-.5\n+7,25\n"), HasSubstr("from −0.5 to 7.25"));
    EXPECT_THAT(caption("0.00000012\n0.00000034\n"), HasSubstr("from 0.00000012 to 0.00000034"));
    EXPECT_THAT(caption("123456789012345\n123456789012347\n"), HasSubstr("from 123456789012345 to 123456789012347"));
}

TEST(AChart, ShowsALimitWithTheDigitsOfItsFile) {
    const companion::ValueLimits limits(u"COLUMN|WARNHIGH|FAILHIGH\nMoisture|20.123456|20,50\n", {u"Moisture"});
    const auto labels = LabelsOf(Drawn("Moisture\n20\n21\n", Kind::Line, {}, &limits));
    EXPECT_THAT(labels, Contains("warn 20.123456"));
    EXPECT_THAT(labels, Contains("fail 20,50"));
}

TEST(AChart, TellsNarrowControlLimitsApart) {
    const auto labels = LabelsOf(Drawn("Moisture\n10000.01\n10000.02\n10000.01\n10000.04\n", Kind::Control));
    EXPECT_THAT(labels, Contains("+3σ 10000.064"));
    EXPECT_THAT(labels, Contains("mean 10000.02"));
    EXPECT_THAT(labels, Contains("−3σ 9999.976"));
}

TEST(AChart, NamesColumnAndUnitOnItsAxis) {
    EXPECT_THAT(LabelsOf(Drawn("Moisture\n15 %\n")), Contains("moisture [%]"));
    EXPECT_THAT(LabelsOf(Drawn("Moisture\n15\n")), Contains("moisture"));
}

TEST(AChart, HasAPanelForEachUnit) {
    const auto axes = [](const Scene& scene) { return PartsOf<Line>(scene, Role::Axis).size() / 2; };
    EXPECT_EQ(axes(Drawn("Moisture|Warmth\n15 %|20 °C\n16 %|21 °C\n")), 2U);
    EXPECT_EQ(axes(Drawn("Moisture|Warmth\n15 %|20 %\n")), 1U);
}

TEST(AChart, MarksWhatIsOutsideOfControlByItsShape) {
    std::string table = "Moisture\n";
    for (int i = 0; i < 20; ++i)
        table += i == 10 ? "30\n" : i % 2 == 0 ? "10\n" : "11\n";
    const Scene scene = Drawn(table, Kind::Control);
    const auto outside = PartsOf<Markers>(scene, Role::Outside);
    ASSERT_EQ(outside.size(), 1U);
    EXPECT_EQ(outside.front().Spots.size(), 1U);
    EXPECT_NE(AppearanceOf({Role::Outside}).Shape, AppearanceOf({Role::Data}).Shape);
    EXPECT_THAT(LabelsOf(scene), Contains(HasSubstr("20 values: mean 11.5, from 10 to 30")));
    EXPECT_THAT(LabelsOf(scene), Contains(HasSubstr("1 outside of mean ± 3σ")));
    EXPECT_EQ(PartsOf<Line>(scene, Role::ControlLimit).size(), 2U);
}

TEST(AChart, HasBarsAsHighAsTheirCounts) {
    const auto bars = PartsOf<Rectangle>(Drawn("Moisture\n1\n1\n1\n1\n9\n9\n", Kind::Histogram), Role::Bar);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_NEAR((bars[0].To.Y - bars[0].From.Y) / (bars[1].To.Y - bars[1].From.Y), 2, 0.001);
}

/// A number as the browser must be able to read it: no "nan", no "inf".
TEST(AChart, IsDrawnOfAnyNumbersWithinItsSize) {
    for (const char* values : {"5\n", "5\n5\n5\n", "1e300\n-1e300\n", "1e-300\n2e-300\n", "-1.7e308\n1.7e308\n",
                               "-3\n-2\n-1\n", "0\n", "123456789012345\n123456789012346\n"})
        for (const Kind kind : {Kind::Line, Kind::Points, Kind::Histogram, Kind::Control}) {
            const Scene scene = Drawn(std::string("Moisture\n") + values, kind);
            for (const Markers& markers : PartsOf<Markers>(scene, Role::Data))
                for (const Spot& spot : markers.Spots) {
                    EXPECT_TRUE(spot.X >= 0 && spot.X <= scene.Width) << values;
                    EXPECT_TRUE(spot.Y >= 0 && spot.Y <= scene.Height) << values;
                }
            for (const Item& item : scene.Items)
                if (const auto* label = std::get_if<Label>(&item)) {
                    EXPECT_TRUE(std::isfinite(label->At.X) && std::isfinite(label->At.Y)) << values;
                }
        }
}

/// The texts that begin or end beyond the edges of a picture.
std::vector<std::string> Beyond(const Scene& scene, const Look& look) {
    std::vector<std::string> texts;
    for (const Item& item : scene.Items)
        if (const auto* label = std::get_if<Label>(&item)) {
            const double width = look.WidthOf(label->Text, label->Role);
            const double before = label->Anchor == Anchor::Start ? 0 : label->Anchor == Anchor::End ? width : width / 2;
            if (label->At.X - before < -0.5 || label->At.X - before + width > look.Width + 0.5)
                texts.push_back(label->Text);
        }
    return texts;
}

TEST(AChart, HasNoTextBeyondItsEdge) {
    const std::string table = "Site|Moisture|Warmth|Day|Hour\n" + std::string(300, 'W') +
                              "|-1234567.125 %|1 %|1/2/2026|0:00\nb|7 %|2 %|1/2/2026|3:00\n";
    const companion::ValueLimits near(u"COLUMN|WARNHIGH\nMoisture|-123456.5\n", {u"Moisture"});
    for (const char* by : {"Site", ""})
        for (const char* against : {"time", "record"})
            for (const double width : {960.0, 205.0}) {
                const Read read = ReadTable(table, {.By = by, .Against = against}, &near);
                const Look look = PixelLook(width, 540);
                EXPECT_EQ(WhyNotDrawn(read.Data, Kind::Line, look), "");
                EXPECT_THAT(Beyond(Draw(read.Data, Kind::Line, look), look), testing::IsEmpty()) << by << width;
            }
}

TEST(AChart, OfTooManyPanelsOrTooLittleRoomIsRefused) {
    std::string table = "Site|Moisture\n";
    for (int i = 0; i < 13; ++i)
        table += "site " + std::to_string(i) + "|1\n";
    const Read read = ReadTable(table, {.By = "Site"});
    EXPECT_THAT(WhyNotDrawn(read.Data, Kind::Control, PixelLook(960, 5000)), HasSubstr("13 panels would be needed"));
    EXPECT_THAT(WhyNotDrawn(read.Data, Kind::Line, PixelLook(960, 100)), HasSubstr("too small"));
    EXPECT_EQ(WhyNotDrawn(read.Data, Kind::Line, PixelLook(960, 540)), "");
}

TEST(Appearances, OfAllSeriesOfAChartDiffer) {
    std::set<std::pair<std::string_view, int>> seen;
    for (int i = 0; i < static_cast<int>(MostSeries); ++i) {
        const Appearance look = AppearanceOf({Role::Data, i});
        EXPECT_TRUE(seen.insert({look.Colour, static_cast<int>(look.Shape)}).second) << i;
    }
}

} // namespace
} // namespace plotting
