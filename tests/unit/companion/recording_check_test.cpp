// SPDX-License-Identifier: MIT
#include "companion/recording_check.h"

#include "companion/driver_check.h"
#include "companion/file_lines.h"
#include "companion/first_package.h"
#include "src/drivers/inf_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace companion {
namespace {

using testing::ElementsAre;

const Text MeterPackage = u"Meter|meter.txt\n" + modQuorin::InfHeader +
                          u"\nSite|1|1|dv: Site||||\nRemark|1||||||\nMoisture|1||Moisture||||\nDepth|1||Depth||||\n"
                          u"Meter|0||dv: ORIGIN||||\n";

Text Blob(const Text& lines, const Text& end = u"[/BLob]") {
    return u"[BLob]\r\n" + lines + end + u"\r\n";
}

Text Result(const Text& types, const Text& value = u"14.1") {
    return u"[RESULT_TYPE " + types + u"]\r\n[RESULT_VALUE \"" + value + u"\"]\r\n[RESULT_UNIT \"%\"]\r\n";
}

const Text Connect = Blob(u"[CONNECT \"QI-1\"]\r\n");

std::string Destinations(const Text& recording) {
    std::string all;
    for (const FilledKind& kind : DestinationsOf(ReadPackage(LinesOf(MeterPackage)), ResultsOf(recording)))
        all += modStringTools::ToBytes(WordsOf(kind)) + "\n";
    return all;
}

std::string Findings(const Text& recording, const Text& package = MeterPackage) {
    std::string all;
    for (const Finding& finding : CheckRecording(ReadPackage(LinesOf(package)), ResultsOf(recording)))
        all += std::to_string(finding.Line) + ":" + std::to_string(finding.Column) + " " +
               modStringTools::ToBytes(NameOf(finding.Grade) + u": " + finding.Words) + "\n";
    return all;
}

TEST(RecordingCheck, SaysWhichFieldEachKindOfResultFills) {
    const Text site = u"[DESCRIPTIVE_VAR \"Site=Loft\"]\r\n";
    EXPECT_EQ(Destinations(Connect + Blob(u"[ORIGIN \"QI-1\"]\r\n" + site + Result(u"\"Moisture\" \"M1\"")) +
                           Blob(site + Result(u"\"Moisture\" \"M1\"", u"15")) + Blob(Result(u"\"X\""))),
              "Moisture, M1: 2 results such as 14.1 % → Moisture; ORIGIN → Meter; Site → Site\n"
              "X: 1 result such as 14.1 % → no row asks for it\n");
}

TEST(RecordingCheck, TakesTheLastTypeThatHasARow) {
    EXPECT_EQ(Destinations(Blob(Result(u"\"Depth\" \"moisture\""))),
              "Depth, moisture: 1 result such as 14.1 % → Moisture; ORIGIN → Meter\n");
}

TEST(RecordingCheck, SaysWhyAResultIsLost) {
    EXPECT_EQ(
        Destinations(Blob(u"[ORIGIN \"QI-1\"]\r\n" + Result(u"\"Depth\"")) +
                     Blob(u"[CONNECT \"QI-1\"]\r\n" + Result(u"\"B\"")) + Blob(Result(u"\"C\""), u"[/BLob 2]") +
                     Blob(Result(u"\"Moisture\""))),
        "Depth: 1 result such as 14.1 % → refused: it names another origin than the instrument that has connected\n"
        "B: 1 result such as 14.1 % → dropped: it is in the record by which the instrument connects\n"
        "C: 1 result such as 14.1 % → refused: its record has no exact end tag [/BLob]\n"
        "Moisture: 1 result such as 14.1 % → Moisture; ORIGIN → Meter\n");
}

TEST(RecordingCheck, FindsTypesThatNoRowAsksFor) {
    EXPECT_EQ(Findings(Connect +
                       Blob(u"[DESCRIPTIVE_VAR \"Site=Loft\"]\r\n" + Result(u"\"Moisture\"") + Result(u"\"Depth\"")) +
                       Blob(Result(u"\"Bogus\" \"B1\"")) + Blob(Result(u"\"Bogus\" \"B1\""))),
              "0:0 warning: 2 results of the recording with \"Bogus, B1\": no row asks for it\n");
}

TEST(RecordingCheck, FindsResultsWithoutAType) {
    EXPECT_EQ(Findings(Connect +
                       Blob(u"[DESCRIPTIVE_VAR \"Site=Loft\"]\r\n" + Result(u"\"Moisture\"") + Result(u"\"Depth\"")) +
                       Blob(u"[RESULT_VALUE \"3\"]\r\n[RESULT_UNIT \"m\"]\r\n")),
              "4:1 warning: 1 result of the recording with no type: they go into this field, the first that asks for "
              "none\n");
}

TEST(RecordingCheck, NotesRowsThatNothingFills) {
    EXPECT_EQ(Findings(Blob(Result(u"\"Moisture\""))), "3:10 note: nothing in the recording fills this field\n"
                                                       "6:10 note: nothing in the recording fills this field\n");
    EXPECT_EQ(Findings(u"noise\r\n", u"Meter|meter.txt\n" + modQuorin::InfHeader + u"\nSite|1||||||\n"),
              "0:0 warning: the recording has no result\n");
}

TEST(FirstPackage, HasARowForEachVariableAndType) {
    const Text vars = u"[DESCRIPTIVE_VAR \"Site=Loft\"]\r\n[DESCRIPTIVE_VAR \"Operator=Ada\"]\r\n";
    const auto lines =
        FirstPackage(ResultsOf(Connect + Blob(u"[ORIGIN \"QI-1\"]\r\n" + vars + Result(u"\"Moisture\" \"M1\"")) +
                               Blob(vars + Result(u"\"moisture\"")) + Blob(Result(u"\"Depth\"", u"3"))));
    EXPECT_THAT(std::vector<Text>(lines.begin() + 2, lines.end()),
                ElementsAre(u"# Moisture, M1: such as 14.1 %", u"# Depth: such as 3 %", u"QI-1|driver_qi_1.txt",
                            modQuorin::InfHeader, u"Site|1|1|dv: Site||site||",
                            u"Operator|1|1|dv: Operator||operator||", u"Moisture|1||Moisture||moisture||",
                            u"Depth|1||Depth||depth||", u"Remark|1||||remark||",
                            u"Start Date|1||||start_date|DATE|startdate", u"Start Time|1||||start_time|TIME|starttime",
                            u"End Date|1||||end_date|DATE|enddate", u"End Time|1||||end_time|TIME|endtime",
                            u"Meter|0||dv: ORIGIN||meter||"));
}

TEST(FirstPackage, HasNothingWrongWithIt) {
    const Text recording = Blob(u"[DESCRIPTIVE_VAR \"#=1\"]\r\n" + Result(u"\"Remark\"") + Result(u"\"#1\""));
    const auto lines = FirstPackage(ResultsOf(recording));
    EXPECT_THAT(CheckPackage(lines, {}), testing::IsEmpty());
    EXPECT_THAT(CheckRecording(ReadPackage(lines), ResultsOf(recording)), testing::IsEmpty());
}

} // namespace
} // namespace companion
