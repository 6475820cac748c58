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

TEST(AChart, HasTheLimitsThatLieNearAndNamesTheOthers) {
    const Scene scene = Drawn("Moisture\n15 %\n21 %\n", Kind::Line, {}, &Limits);
    EXPECT_EQ(PartsOf<Line>(scene, Role::Warn).size(), 1U);
    EXPECT_EQ(PartsOf<Line>(scene, Role::Fail).size(), 1U);
    EXPECT_THAT(LabelsOf(scene), Contains("fail 20"));
    EXPECT_THAT(LabelsOf(scene), Contains("warn 16"));
    EXPECT_THAT(LabelsOf(scene), Contains("beyond the picture: warn -900"));
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
